#include "preview/bitmap.h"

#include <bit>

namespace kelp_preview {
namespace {

unsigned char mirrored(unsigned char byte) {
    unsigned char result = 0;
    for (int bit = 0; bit < 8; ++bit) {
        result = static_cast<unsigned char>(result << 1 | (byte >> bit & 1));
    }
    return result;
}

/// The row back to front. The unused bits that come first then are shifted out.
void turnRow(const unsigned char* row, std::size_t bytes, unsigned unusedBits, unsigned char* out) {
    for (std::size_t i = 0; i < bytes; ++i) {
        const unsigned here = mirrored(row[bytes - 1 - i]);
        const unsigned next = i + 1 < bytes ? mirrored(row[bytes - 2 - i]) : 0U;
        out[i] = static_cast<unsigned char>((here << 8 | next) >> (8 - unusedBits));
    }
}

}  // namespace

Bitmap::Bitmap(std::uint64_t dotsWide, std::uint64_t dotsHigh)
    : width(dotsWide),
      height(dotsHigh),
      bytes(static_cast<std::size_t>((dotsWide + 7) / 8 * dotsHigh)) {}

std::uint64_t blackDots(const Bitmap& bitmap) {
    std::uint64_t count = 0;
    for (const unsigned char byte : bitmap.bytes) {
        count += static_cast<std::uint64_t>(std::popcount(byte));
    }
    return count;
}

void lay(const Bitmap& picture, std::uint64_t x, std::uint64_t y, Bitmap& target) {
    const auto shift = static_cast<unsigned>(x % 8);
    for (std::uint64_t i = 0; i < picture.height; ++i) {
        const unsigned char* source = picture.row(i);
        unsigned char* dots = target.row(y + i) + x / 8;
        for (std::size_t b = 0; b < picture.rowBytes(); ++b) {
            const unsigned shifted = static_cast<unsigned>(source[b]) << 8 >> shift;
            dots[b] |= static_cast<unsigned char>(shifted >> 8);
            if (static_cast<unsigned char>(shifted) != 0) {  // else there may be no such byte
                dots[b + 1] |= static_cast<unsigned char>(shifted);
            }
        }
    }
}

Bitmap turned(const Bitmap& bitmap) {
    Bitmap result(bitmap.width, bitmap.height);
    const auto unusedBits = static_cast<unsigned>(bitmap.rowBytes() * 8 - bitmap.width);
    for (std::uint64_t y = 0; y < bitmap.height; ++y) {
        turnRow(bitmap.row(y), bitmap.rowBytes(), unusedBits, result.row(bitmap.height - 1 - y));
    }
    return result;
}

}  // namespace kelp_preview
