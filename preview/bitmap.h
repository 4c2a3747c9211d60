#ifndef KELP_PREVIEW_BITMAP_H
#define KELP_PREVIEW_BITMAP_H

#include <cstddef>
#include <cstdint>
#include <vector>

namespace kelp_preview {

/// Dots, 8 to the byte, the leftmost in the highest bit; set ones print. The bits of a row beyond
/// the width are 0.
struct Bitmap {
    Bitmap() = default;
    /// A white one.
    Bitmap(std::uint64_t dotsWide, std::uint64_t dotsHigh);

    std::size_t rowBytes() const { return static_cast<std::size_t>((width + 7) / 8); }
    const unsigned char* row(std::uint64_t y) const { return bytes.data() + y * rowBytes(); }
    unsigned char* row(std::uint64_t y) { return bytes.data() + y * rowBytes(); }
    bool dot(std::uint64_t x, std::uint64_t y) const {
        return (row(y)[x / 8] >> (7 - x % 8) & 1) != 0;
    }
    void setDot(std::uint64_t x, std::uint64_t y) {
        row(y)[x / 8] |= static_cast<unsigned char>(0x80U >> (x % 8));
    }

    std::uint64_t width = 0;
    std::uint64_t height = 0;
    std::vector<unsigned char> bytes;  ///< height * rowBytes()
};

std::uint64_t blackDots(const Bitmap& bitmap);

/// Adds the dots of a picture to those of a larger one.
/// @param x, y where its upper left corner lies; it must lie within the target
void lay(const Bitmap& picture, std::uint64_t x, std::uint64_t y, Bitmap& target);

/// Turned by 180 degrees.
Bitmap turned(const Bitmap& bitmap);

}  // namespace kelp_preview

#endif
