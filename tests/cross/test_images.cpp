#include "tests/cross/test_images.h"

#include <algorithm>
#include <array>

#include "tests/support/grey_pages.h"

namespace kelp_test {
namespace {

constexpr std::array<const char*, 7> kinds{"noise",     "text",   "picture",       "gradient",
                                           "two-tones", "nearly", "around-the-mid"};

std::string pixels_of(std::size_t kind, unsigned width, unsigned height, Random& random) {
    const auto toned = [&](auto tone) {
        std::string pixels(std::size_t{width} * height, '\0');
        std::generate(pixels.begin(), pixels.end(), [&] { return static_cast<char>(tone()); });
        return pixels;
    };
    const int low = random.between(0, 255);
    const int high = random.between(0, 255);
    switch (kind) {
        case 0:
            return noise(width, height, random);
        case 1:
            return text_bars(width, height, random);
        case 2:
            return asymmetric(width, height);
        case 3:
            return gradient(width, height);
        case 4:
            return toned([&] { return random.one_in(3) ? low : high; });
        case 5:
            return toned([&] { return random.one_in(97) ? low : high; });
        default:
            return toned([&] { return random.between(126, 131); });
    }
}

TestImage image_of(std::size_t kind, unsigned width, unsigned height, Random& random) {
    const std::string pixels = pixels_of(kind, width, height, random);
    return {std::string(kinds[kind]) + "-" + std::to_string(width) + "x" + std::to_string(height),
            {static_cast<int>(width), static_cast<int>(height), {pixels.begin(), pixels.end()}}};
}

}  // namespace

std::vector<TestImage> test_images() {
    Random random(5);
    std::vector<TestImage> images;
    for (unsigned i = 0; i < 70; ++i) {
        // 37 and 70 have no common factor: every height comes once.
        images.push_back(image_of(i % kinds.size(), i + 1, i * 37 % 70 + 1, random));
    }
    for (std::size_t kind = 0; kind < kinds.size(); ++kind) {
        images.push_back(image_of(kind, 1, 1, random));
        images.push_back(image_of(kind, 203, 119, random));
    }
    images.push_back(image_of(0, 700, 1, random));
    images.push_back(image_of(0, 1, 700, random));
    images.push_back(image_of(1, 812, 300, random));
    images.push_back(image_of(2, 412, 309, random));
    return images;
}

}  // namespace kelp_test
