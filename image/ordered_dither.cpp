#include "image/ordered_dither.h"

#include <algorithm>

#include "image/dot_packing.h"

namespace {

constexpr std::uint8_t kThreshold = 128;

constexpr std::uint8_t kFixedMatrix[4][4] = {
    {0, 8, 2, 10},
    {12, 4, 14, 6},
    {3, 11, 1, 9},
    {15, 7, 13, 5},
};

/// The highest grey that a value of the fixed matrix leaves black. Sixteen steps lie between the
/// two levels; only 255 reaches the seventeenth, which is white everywhere.
constexpr std::uint8_t lastBlack(int matrixValue) {
    int grey = 0;
    while (grey < 254 && (grey + 1) * 16 / 255 <= matrixValue) {
        ++grey;
    }
    return static_cast<std::uint8_t>(grey);
}

constexpr std::array<DotLimits, 4> orderedLimits() {
    std::array<DotLimits, 4> limits{};
    for (std::size_t i = 0; i < 16; ++i) {
        limits[i / 4][i % 4] = lastBlack(kFixedMatrix[i / 4][i % 4]);
    }
    return limits;
}

}  // namespace

void thresholdRow(const std::uint8_t* grey, std::size_t width, std::uint8_t* packed) {
    packDots(grey, width, {kThreshold, kThreshold, kThreshold, kThreshold}, packed);
}

void orderedRow(const std::uint8_t* grey, std::size_t width, std::size_t y, std::uint8_t* packed) {
    static constexpr std::array<DotLimits, 4> limits = orderedLimits();
    packDots(grey, width, limits[y % 4], packed);
}

void bayerRow(const std::uint8_t* grey, std::size_t width, std::size_t y, std::uint8_t* packed) {
    static const std::array<std::uint8_t, 16> matrix = bayerMatrix();
    DotLimits limits;
    std::copy_n(matrix.data() + 4 * (y % 4), limits.size(), limits.data());
    packDots(grey, width, limits, packed);
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
