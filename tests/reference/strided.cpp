#include "tests/reference/strided.h"

#include <cstdint>

#include "tests/reference/dither.h"
#include "tests/reference/numeric.h"

namespace reference {

int stridedRowBytes(int width) {
    return (8 * width + 31) / 32 * 4;
}

StridedImage newStrided(int width, int height) {
    StridedImage image;
    image.width = width;
    image.height = height;
    image.stride = stridedRowBytes(width);
    image.px.assign(static_cast<std::size_t>(image.stride) * static_cast<std::size_t>(height), 0);
    return image;
}

std::optional<StridedImage> loadStrided(const unsigned char* pixels, int width, int height,
                                        int bytesPerLine) {
    if (width <= 0 || height <= 0)
        return std::nullopt;
    std::uint64_t bits = static_cast<std::uint64_t>(width) * static_cast<std::uint64_t>(height) * 8;
    if (bits > 0xFFFFFFFFu)
        return std::nullopt;
    StridedImage image = newStrided(width, height);
    for (int y = 0; y < height; y++) {
        const unsigned char* row = pixels + static_cast<std::ptrdiff_t>(y) * bytesPerLine;
        for (int x = 0; x < image.stride && x < bytesPerLine; x++)
            image.set(x, y, row[x]);
    }
    return image;
}

std::array<unsigned char, 256> lightTable(int brightness, int contrast) {
    std::array<unsigned char, 256> table{};
    float c = static_cast<float>(contrast + 100) / 100.0f;
    int b = brightness + 128;
    for (int i = 0; i < 256; i++) {
        float t = static_cast<float>(i - 128) * c;
        t = t + static_cast<float>(b);
        t = t + 0.5f;
        int v = truncateToInt(t);
        if (v < 0)
            v = 0;
        if (v > 255)
            v = 255;
        table[static_cast<std::size_t>(i)] = static_cast<unsigned char>(v);
    }
    return table;
}

StridedImage light(const StridedImage& image, int brightness, int contrast) {
    std::array<unsigned char, 256> table = lightTable(brightness, contrast);
    StridedImage out = image;
    for (int y = 0; y < image.height; y++)
        for (int x = 0; x < image.width; x++)  // the padding keeps its bytes
            out.set(x, y, table[image.at(x, y)]);
    return out;
}

StridedImage rotate180(const StridedImage& image) {
    StridedImage out = newStrided(image.width, image.height);
    for (int y = 0; y < image.height; y++)
        for (int x = 0; x < image.width; x++)
            out.set(image.width - x - 1, image.height - y - 1, image.at(x, y));
    return out;
}

StridedImage mirror(const StridedImage& image) {
    StridedImage out = newStrided(image.width, image.height);
    const int w = image.width - 1;
    for (int y = 0; y < image.height; y++)
        for (int i = 0; i <= w; i++)
            out.set(i, y, image.at(w - i, y));
    return out;
}

StridedImage negative(const StridedImage& image) {
    StridedImage out = image;
    for (unsigned char& byte : out.px)  // the padding too
        byte = static_cast<unsigned char>(~byte & 255);
    return out;
}

StridedImage ditherToIndices(const StridedImage& image, long method) {
    GrayImage gray{image.width, image.height, {}};
    for (int y = 0; y < image.height; y++)
        for (int x = 0; x < image.width; x++)
            gray.px.push_back(image.at(x, y));
    GrayImage indices = dither(gray, method);
    StridedImage out = newStrided(image.width, image.height);
    for (int y = 0; y < image.height; y++)
        for (int x = 0; x < image.width; x++)
            out.set(x, y, indices.at(x, y));
    return out;
}

}  // namespace reference
