#include "tests/unit/image/image_pixels.h"

#include <gtest/gtest.h>

#include <cstddef>

namespace kelp_test {

void makeImage(CxImage& image, std::uint32_t bpp, const Rows& indices) {
    const auto height = static_cast<std::uint32_t>(indices.size());
    const auto width = static_cast<std::uint32_t>(indices.at(0).size());
    ASSERT_NE(image.Create(width, height, bpp, 0), nullptr);
    image.SetGrayPalette();
    const std::size_t perByte = 8 / bpp;
    for (std::uint32_t y = 0; y < height; ++y) {
        std::uint8_t* row = image.GetBits(y);
        for (std::size_t x = 0; x < width; ++x) {
            const std::size_t shift = 8 - bpp * (x % perByte + 1);
            row[x / perByte] = static_cast<std::uint8_t>(row[x / perByte] | indices[y][x] << shift);
        }
    }
}

Rows indicesOf(const CxImage& image) {
    const std::uint32_t bpp = image.GetBpp();
    const std::size_t perByte = 8 / bpp;
    Rows rows(image.GetHeight());
    for (std::uint32_t y = 0; y < image.GetHeight(); ++y) {
        const std::uint8_t* row = image.GetBits(y);
        for (std::size_t x = 0; x < image.GetWidth(); ++x) {
            const std::size_t shift = 8 - bpp * (x % perByte + 1);
            rows[y].push_back(row[x / perByte] >> shift & ((1 << bpp) - 1));
        }
    }
    return rows;
}

std::vector<int> rowBytes(const CxImage& image, std::uint32_t row) {
    const std::uint8_t* bytes = image.GetBits(row);
    return {bytes, bytes + image.GetEffWidth()};
}

std::vector<int> pixelBytes(const CxImage& image) {
    std::vector<int> all;
    for (std::uint32_t y = 0; y < image.GetHeight(); ++y) {
        const std::vector<int> row = rowBytes(image, y);
        all.insert(all.end(), row.begin(), row.end());
    }
    return all;
}

std::string text(tagRGBQUAD colour) {
    return std::to_string(colour.rgbBlue) + "," + std::to_string(colour.rgbGreen) + "," +
           std::to_string(colour.rgbRed) + "," + std::to_string(colour.rgbReserved);
}

tagRGBQUAD rgb(int red, int green, int blue) {
    return {static_cast<std::uint8_t>(blue), static_cast<std::uint8_t>(green),
            static_cast<std::uint8_t>(red), 0};
}

void makeTrueColour(CxImage& image, std::uint32_t width, std::uint32_t height, int first) {
    ASSERT_NE(image.Create(width, height, 24, 0), nullptr);
    for (std::uint32_t y = 0; y < height; ++y) {
        for (std::uint32_t i = 0; i < 3 * width; ++i) {
            image.GetBits(y)[i] = static_cast<std::uint8_t>(first++);
        }
    }
}

}  // namespace kelp_test
