#include "bench/test_page.h"

#include <algorithm>
#include <cmath>

namespace {

unsigned char textTone(std::uint32_t x, std::uint32_t y) {
    const bool line = y % 40 < 24;
    const bool stroke = (x * 2654435761U >> 24) % 3 == 0 || x % 17 < 4;
    return line && stroke ? 0 : 255;
}

unsigned char toneOf(double level) {
    return static_cast<unsigned char>(std::clamp(level, 0.0, 255.0));
}

/// 0 to 255, from the highest bits.
unsigned nextRandom(std::uint32_t& state) {
    state = state * 1664525U + 1013904223U;
    return state >> 24;
}

unsigned char pictureTone(std::uint32_t x, std::uint32_t y, std::uint32_t& state) {
    const double grain = nextRandom(state) / 16.0;
    const double tone = 128.0 + 70.0 * std::sin(x / 97.0) + 45.0 * std::cos(y / 61.0) + grain - 8.0;
    return toneOf(tone);
}

unsigned char lineArtTone(std::uint32_t x, std::uint32_t y) {
    return (x + y) % 50 < 2 || (x * 3 + 1000000 - y) % 70 < 2 ? 20 : 250;
}

/// How far inside an ellipse about (cx, cy) a point is: 1 in the middle, 0 on its edge.
double inEllipse(double x, double y, double cx, double cy, double rx, double ry) {
    const double dx = (x - cx) / rx;
    const double dy = (y - cy) / ry;
    return 1.0 - std::sqrt(dx * dx + dy * dy);
}

/// What the picture shows at a point; both coordinates go from 0 to 1.
double sceneTone(double u, double v) {
    double tone = 225.0 - 70.0 * v;  // sky
    for (int hill = 0; hill < 4; ++hill) {
        const double crest =
            0.45 + 0.13 * hill + 0.05 * std::sin(u * (5.0 + 4.0 * hill) + 1.7 * hill);
        if (v > crest) {
            tone = 165.0 - 38.0 * hill - 60.0 * (v - crest);
        }
    }
    const double face = inEllipse(u, v, 0.42, 0.52, 0.26, 0.22);
    if (face > 0.0) {
        const double light = std::max(0.0, inEllipse(u, v, 0.36, 0.45, 0.3, 0.26));
        tone = 95.0 + 150.0 * light + 20.0 * std::sqrt(face);
    }
    const double hair = inEllipse(u, v, 0.42, 0.36, 0.3, 0.14);
    if (hair > 0.0 && (face < 0.0 || v < 0.4)) {
        tone = 38.0 + 30.0 * std::sin(u * 900.0 + 40.0 * std::sin(v * 9.0));
    }
    const double fromMiddle = (u - 0.5) * (u - 0.5) + (v - 0.5) * (v - 0.5);
    return tone * (1.0 - 0.35 * fromMiddle);
}

/// A page of tone(x, y), row by row from the top.
template <typename Tone>
TestPage pageOf(std::uint32_t width, std::uint32_t height, Tone tone) {
    TestPage page{width, height, {}};
    page.pixels.reserve(std::size_t{width} * height);
    for (std::uint32_t y = 0; y < height; ++y) {
        for (std::uint32_t x = 0; x < width; ++x) {
            page.pixels.push_back(tone(x, y));
        }
    }
    return page;
}

}  // namespace

TestPage makeTestPage(std::uint32_t width, std::uint32_t height) {
    std::uint32_t state = 1;
    return pageOf(width, height, [&](std::uint32_t x, std::uint32_t y) {
        return y < height / 3       ? textTone(x, y)
               : y < 2 * height / 3 ? pictureTone(x, y, state)
                                    : lineArtTone(x, y);
    });
}

TestPage makePhotograph(std::uint32_t width, std::uint32_t height) {
    std::uint32_t state = 1;
    return pageOf(width, height, [&](std::uint32_t x, std::uint32_t y) {
        // The sum of three: more small deviations than large ones.
        const unsigned sum = nextRandom(state) + nextRandom(state) + nextRandom(state);
        const double grain = (sum - 382.5) / 24.0;
        return toneOf(sceneTone((x + 0.5) / width, (y + 0.5) / height) + grain);
    });
}

TestPage makeDarkPage(std::uint32_t width, std::uint32_t height) {
    TestPage page{width, height, std::vector<unsigned char>(std::size_t{width} * height)};
    for (std::size_t y = 0; y < height; ++y) {
        for (std::size_t x = 0; x < std::min(8U, width); ++x) {
            page.pixels[y * width + x] = static_cast<unsigned char>(200 - 20 * x + y % 20);
        }
    }
    return page;
}
