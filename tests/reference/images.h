#pragma once

#include <cstddef>
#include <vector>

namespace reference {

// One byte per pixel, rows packed: pixel (x, y) is px[y * width + x].
struct GrayImage {
    int width = 0;
    int height = 0;
    std::vector<unsigned char> px;

    std::size_t index(long x, long y) const { return static_cast<std::size_t>(y * width + x); }
    unsigned char at(long x, long y) const { return px[index(x, y)]; }
    void set(long x, long y, int value) { px[index(x, y)] = static_cast<unsigned char>(value); }
};

// Interleaved channels, rows packed. color: 0 grey, 1 BGR, 2 RGB, 3 BGRA, 4 RGBA.
struct ColorImage {
    int width = 0;
    int height = 0;
    int color = 0;
    std::vector<unsigned char> px;
};

// An 8-bit image whose rows are padded to a multiple of four bytes, as the
// palette image keeps them. The padding takes part in what is printed, so it is
// part of the value.
struct StridedImage {
    int width = 0;
    int height = 0;
    int stride = 0;
    std::vector<unsigned char> px;

    std::size_t index(long x, long y) const { return static_cast<std::size_t>(y * stride + x); }
    unsigned char at(long x, long y) const { return px[index(x, y)]; }
    void set(long x, long y, int value) { px[index(x, y)] = static_cast<unsigned char>(value); }
};

}  // namespace reference
