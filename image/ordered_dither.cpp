#include "image/ordered_dither.h"

#include <algorithm>

namespace {

constexpr int kThreshold = 128;

constexpr std::uint8_t kFixedMatrix[4][4] = {
    {0, 8, 2, 10},
    {12, 4, 14, 6},
    {3, 11, 1, 9},
    {15, 7, 13, 5},
};

template <typename IsWhite>
void packRow(std::size_t width, std::uint8_t* packed, IsWhite isWhite) {
    for (std::size_t first = 0; first < width; first += 8) {
        const std::size_t end = std::min(first + 8, width);
        unsigned byte = 0;
        for (std::size_t x = first; x < end; ++x) {
            byte |= isWhite(x) ? 0x80U >> (x - first) : 0U;
        }
        packed[first / 8] = static_cast<std::uint8_t>(byte);
    }
}

}  // namespace

void thresholdRow(const std::uint8_t* grey, std::size_t width, std::uint8_t* packed) {
    packRow(width, packed, [=](std::size_t x) { return grey[x] > kThreshold; });
}

void orderedRow(const std::uint8_t* grey, std::size_t width, std::size_t y, std::uint8_t* packed) {
    const std::uint8_t* matrixRow = kFixedMatrix[y % 4];
    packRow(width, packed, [=](std::size_t x) {
        // Sixteen steps between the two levels; only 255 reaches the seventeenth, full white.
        const int level = grey[x] * 16 / 255;
        return level == 16 || matrixRow[x % 4] < level;
    });
}

void bayerRow(const std::uint8_t* grey, std::size_t width, std::size_t y, std::uint8_t* packed) {
    static const std::array<std::uint8_t, 16> matrix = bayerMatrix();
    const std::uint8_t* matrixRow = matrix.data() + 4 * (y % 4);
    packRow(width, packed, [=](std::size_t x) { return grey[x] > matrixRow[x % 4]; });
}

std::array<std::uint8_t, 16> bayerMatrix() {
    constexpr unsigned order = 4;
    std::array<std::uint8_t, 16> matrix{};
    for (unsigned i = 0; i < matrix.size(); ++i) {
        // The bits of the two coordinates, interleaved from the lowest up, are the value's bits
        // from the highest down. Bits past the eighth fall off.
        unsigned a = i / order;
        unsigned b = i % order;
        unsigned value = 0;
        for (unsigned bit = 0; bit < order; ++bit) {
            value = ((value * 2) | ((a ^ b) & 1)) * 2 | (b & 1);
            a >>= 1;
            b >>= 1;
        }
        matrix[i] = static_cast<std::uint8_t>(value);
    }
    return matrix;
}
