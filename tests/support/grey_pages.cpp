#include "tests/support/grey_pages.h"

#include <algorithm>

namespace kelp_test {
namespace {

template <typename Level>
std::string page_of(unsigned width, unsigned height, Level level) {
    std::string pixels;
    pixels.reserve(std::size_t{width} * height);
    for (unsigned y = 0; y < height; ++y) {
        for (unsigned x = 0; x < width; ++x) {
            pixels.push_back(static_cast<char>(level(x, y)));
        }
    }
    return pixels;
}

}  // namespace

std::uint64_t Random::next() {
    std::uint64_t z = (state_ += 0x9E3779B97F4A7C15U);
    z = (z ^ (z >> 30U)) * 0xBF58476D1CE4E5B9U;
    z = (z ^ (z >> 27U)) * 0x94D049BB133111EBU;
    return z ^ (z >> 31U);
}

int Random::between(int low, int high) {
    const auto span = static_cast<std::uint64_t>(high - low) + 1;
    return low + static_cast<int>(next() % span);
}

std::string uniform(unsigned width, unsigned height, unsigned char value) {
    return page_of(width, height, [=](unsigned, unsigned) { return value; });
}

std::string gradient(unsigned width, unsigned height) {
    const unsigned last = std::max(1U, width - 1 + height - 1);
    return page_of(width, height, [=](unsigned x, unsigned y) { return (x + y) * 255 / last; });
}

std::string noise(unsigned width, unsigned height, Random& random) {
    return page_of(width, height, [&](unsigned, unsigned) { return random.next() >> 56U; });
}

std::string text_bars(unsigned width, unsigned height, Random& random) {
    std::string pixels =
        uniform(width, height, static_cast<unsigned char>(random.between(225, 255)));
    for (unsigned y = 2; y + 4 < height; y += 7) {
        unsigned x = static_cast<unsigned>(random.between(0, 5));
        while (x < width) {
            const unsigned end = std::min(width, x + static_cast<unsigned>(random.between(1, 9)));
            const auto ink = static_cast<char>(random.between(0, 60));
            for (unsigned row = y; row < y + 4; ++row) {
                for (unsigned column = x; column < end; ++column) {
                    pixels[std::size_t{row} * width + column] = ink;
                }
            }
            x = end + static_cast<unsigned>(random.between(1, 4));
        }
    }
    return pixels;
}

std::string asymmetric(unsigned width, unsigned height) {
    return page_of(width, height, [=](unsigned x, unsigned y) -> unsigned {
        if (x < width / 3 && y < height / 4) {
            return 250;
        }
        if (x * height > y * width + width * height / 2) {
            return 20 + (x * 7 + y * 3) % 90;
        }
        return (x * x + 5 * y) % 256;
    });
}

std::string drawn(std::string_view rows) {
    std::string pixels;
    for (const char mark : rows) {
        if (mark == '#') {
            pixels.push_back(static_cast<char>(255));
        } else if (mark == '.') {
            pixels.push_back('\0');
        }
    }
    return pixels;
}

}  // namespace kelp_test
