#include "bench/test_page.h"

#include <algorithm>
#include <cmath>

namespace {

unsigned char textTone(std::uint32_t x, std::uint32_t y) {
    const bool line = y % 40 < 24;
    const bool stroke = (x * 2654435761U >> 24) % 3 == 0 || x % 17 < 4;
    return line && stroke ? 0 : 255;
}

unsigned char pictureTone(std::uint32_t x, std::uint32_t y, std::uint32_t& state) {
    state = state * 1664525U + 1013904223U;
    const double grain = static_cast<double>(state >> 24) / 16.0;
    const double tone = 128.0 + 70.0 * std::sin(x / 97.0) + 45.0 * std::cos(y / 61.0) + grain - 8.0;
    return static_cast<unsigned char>(std::clamp(tone, 0.0, 255.0));
}

unsigned char lineArtTone(std::uint32_t x, std::uint32_t y) {
    return (x + y) % 50 < 2 || (x * 3 + 1000000 - y) % 70 < 2 ? 20 : 250;
}

}  // namespace

TestPage makeTestPage(std::uint32_t width, std::uint32_t height) {
    TestPage page{width, height, {}};
    page.pixels.reserve(std::size_t{width} * height);
    std::uint32_t state = 1;
    for (std::uint32_t y = 0; y < height; ++y) {
        for (std::uint32_t x = 0; x < width; ++x) {
            page.pixels.push_back(y < height / 3       ? textTone(x, y)
                                  : y < 2 * height / 3 ? pictureTone(x, y, state)
                                                       : lineArtTone(x, y));
        }
    }
    return page;
}
