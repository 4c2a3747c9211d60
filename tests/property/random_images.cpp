#include "tests/property/random_images.h"

#include <cmath>
#include <cstddef>

namespace kelp_test {

reference::GrayImage randomImage(int width, int height, Random& random) {
    reference::GrayImage image{width, height, {}};
    const int kind = random.between(0, 6);
    const int low = random.between(0, 255);
    const int high = random.between(0, 255);
    const int rare = random.between(2, 50);
    const double slope = random.between(1, 90) / 10.0;
    for (int y = 0; y < height; ++y) {
        for (int x = 0; x < width; ++x) {
            int tone = 0;
            switch (kind) {
                case 0:
                    tone = random.between(0, 255);
                    break;
                case 1:  // slow tones with a little grain
                    tone = static_cast<int>(128 + 120 * std::sin((x + 2 * y) / (10 * slope))) +
                           random.between(-6, 6);
                    break;
                case 2:
                    tone = random.one_in(rare) ? low : high;
                    break;
                case 3:  // nearly one tone
                    tone = random.one_in(width * height) ? low : high;
                    break;
                case 4:
                    tone = random.one_in(2) ? 0 : 255;
                    break;
                case 5:  // strokes
                    tone = (x / 3 + y / 5) % 2 == 0 ? 0 : 255;
                    break;
                default:  // around the threshold
                    tone = random.between(126, 131);
                    break;
            }
            image.px.push_back(static_cast<unsigned char>(tone < 0 ? 0 : tone > 255 ? 255 : tone));
        }
    }
    return image;
}

TQImage toTq(const reference::GrayImage& image) {
    return TQImage(image.width, image.height, TQ_IMG_GRAY, image.px.data());
}

reference::GrayImage fromTq(const TQImage& image) {
    return {image.width, image.height, {image.data, image.data + image.byteCount()}};
}

void load(CxImage& target, const reference::GrayImage& image) {
    const auto width = static_cast<std::uint32_t>(image.width);
    ASSERT_TRUE(target.CreateFromArray(image.px.data(), width,
                                       static_cast<std::uint32_t>(image.height), 8, width, false));
}

reference::GrayImage indicesOf(const CxImage& image) {
    reference::GrayImage indices{
        static_cast<int>(image.GetWidth()), static_cast<int>(image.GetHeight()), {}};
    for (int y = 0; y < indices.height; ++y) {
        for (int x = 0; x < indices.width; ++x) {
            indices.px.push_back(image.GetPixelIndex(x, y));
        }
    }
    return indices;
}

reference::StridedImage bytesOf(const CxImage& image) {
    const unsigned char* bits = image.GetBits(0);
    return {static_cast<int>(image.GetWidth()),
            static_cast<int>(image.GetHeight()),
            static_cast<int>(image.GetEffWidth()),
            {bits, bits + std::size_t{image.GetEffWidth()} * image.GetHeight()}};
}

}  // namespace kelp_test
