#include <gtest/gtest.h>

#include <limits>
#include <vector>

#include "image/cx_image.h"
#include "tests/unit/image/image_pixels.h"

namespace {

using namespace kelp_test;

constexpr std::int64_t kFar = std::numeric_limits<std::int64_t>::max();

TEST(CxImagePixelIndex, PacksOneBitPixelsMostSignificantFirst) {
    CxImage image;
    makeImage(image, 1, {std::vector<int>(33, 0)});
    EXPECT_EQ(image.GetEffWidth(), 8U);
    image.SetPixelIndex(0, 0, 1);
    EXPECT_EQ(rowBytes(image, 0), (std::vector<int>{0x80, 0, 0, 0, 0, 0, 0, 0}));
    image.SetPixelIndex(8, 0, 1);
    EXPECT_EQ(rowBytes(image, 0), (std::vector<int>{0x80, 0x80, 0, 0, 0, 0, 0, 0}));
    image.SetPixelIndex(15, 0, 1);
    image.SetPixelIndex(32, 0, 1);
    EXPECT_EQ(rowBytes(image, 0), (std::vector<int>{0x80, 0x81, 0, 0, 0x80, 0, 0, 0}));
    image.SetPixelIndex(8, 0, 0);
    EXPECT_EQ(rowBytes(image, 0), (std::vector<int>{0x80, 0x01, 0, 0, 0x80, 0, 0, 0}));
}

TEST(CxImagePixelIndex, KeepsTheLowestBitAtOneBitPerPixel) {
    CxImage image;
    makeImage(image, 1, {{0, 0, 1, 1}});
    image.SetPixelIndex(0, 0, 255);
    image.SetPixelIndex(1, 0, 2);
    image.SetPixelIndex(2, 0, 254);
    image.SetPixelIndex(3, 0, 3);
    EXPECT_EQ(indicesOf(image), (Rows{{1, 0, 0, 1}}));
}

TEST(CxImagePixelIndex, PacksTwoFourBitPixelsAByteHighNibbleFirst) {
    CxImage image;
    makeImage(image, 4, {{0, 0, 0}});
    image.SetPixelIndex(0, 0, 0x1F);
    EXPECT_EQ(rowBytes(image, 0), (std::vector<int>{0xF0, 0, 0, 0}));
    image.SetPixelIndex(1, 0, 0xA5);
    EXPECT_EQ(rowBytes(image, 0), (std::vector<int>{0xF5, 0, 0, 0}));
    image.SetPixelIndex(2, 0, 3);
    EXPECT_EQ(rowBytes(image, 0), (std::vector<int>{0xF5, 0x30, 0, 0}));
    image.SetPixelIndex(0, 0, 2);
    EXPECT_EQ(rowBytes(image, 0), (std::vector<int>{0x25, 0x30, 0, 0}));
}

TEST(CxImagePixelIndex, StoresAByteAtEightBitsPerPixel) {
    CxImage image;
    makeImage(image, 8, {{0, 0}, {0, 0}});
    image.SetPixelIndex(1, 0, 255);
    image.SetPixelIndex(0, 1, 128);
    EXPECT_EQ(pixelBytes(image), (std::vector<int>{0, 255, 0, 0, 128, 0, 0, 0}));
}

TEST(CxImagePixelIndex, ReadsWhatThePackingRulesHold) {
    for (const std::uint32_t bpp : {1U, 4U, 8U}) {
        CxImage image;
        Rows rows(3, std::vector<int>(19));
        for (std::size_t y = 0; y < 3; ++y) {
            for (std::size_t x = 0; x < 19; ++x) {
                rows[y][x] = static_cast<int>(x * 7 + y * 5 + x * x) % (1 << bpp);
            }
        }
        makeImage(image, bpp, rows);
        for (int y = 0; y < 3; ++y) {
            for (int x = 0; x < 19; ++x) {
                const int expected = rows[static_cast<std::size_t>(y)][static_cast<std::size_t>(x)];
                EXPECT_EQ(image.GetPixelIndex(x, y), expected);
                EXPECT_EQ(image.BlindGetPixelIndex(x, y), expected);
            }
        }
    }
}

TEST(CxImagePixelIndex, ReadsTheFirstPixelByteOutsideTheImage) {
    CxImage image;
    makeImage(image, 8, {{77, 1}, {2, 3}});
    for (const auto& [x, y] : std::vector<std::pair<std::int64_t, std::int64_t>>{
             {-1, 0}, {0, -1}, {2, 0}, {0, 2}, {2, 2}, {kFar, 0}, {0, kFar}, {-kFar, -kFar}}) {
        EXPECT_EQ(image.GetPixelIndex(x, y), 77) << x << ", " << y;
    }
}

TEST(CxImagePixelIndex, ReadsTheWholeFirstByteOutsideALowDepthImage) {
    CxImage image;
    makeImage(image, 1, {{1, 0, 1}});
    EXPECT_EQ(image.GetPixelIndex(3, 0), 0xA0);
    makeImage(image, 4, {{0xC, 0x3}});
    EXPECT_EQ(image.GetPixelIndex(-1, 0), 0xC3);
}

TEST(CxImagePixelIndex, IgnoresWritesOutsideTheImage) {
    for (const std::uint32_t bpp : {1U, 4U, 8U}) {
        CxImage image;
        makeImage(image, bpp, {{1, 0, 1}, {0, 1, 0}});
        const std::vector<int> before = pixelBytes(image);
        for (const auto& [x, y] : std::vector<std::pair<std::int64_t, std::int64_t>>{
                 {-1, 0}, {0, -1}, {3, 0}, {0, 2}, {3, 2}, {kFar, 0}, {0, kFar}, {-kFar, 1}}) {
            image.SetPixelIndex(x, y, 9);
            EXPECT_EQ(pixelBytes(image), before) << x << ", " << y;
        }
    }
}

TEST(CxImagePixelIndex, IsZeroWithoutABlock) {
    CxImage image;
    EXPECT_EQ(image.GetPixelIndex(0, 0), 0);
    EXPECT_EQ(image.GetPixelIndex(-1, -1), 0);
    image.SetPixelIndex(0, 0, 5);
    makeImage(image, 8, {{5}});
    image.Destroy();
    EXPECT_EQ(image.GetPixelIndex(0, 0), 0);
    image.SetPixelIndex(0, 0, 6);
    EXPECT_FALSE(image.IsValid());
}

TEST(CxImagePixelIndex, IsZeroWithoutAPaletteInsideAndOutside) {
    CxImage image;
    makeTrueColour(image, 2, 2, 100);
    EXPECT_EQ(image.GetPixelIndex(0, 0), 0);
    EXPECT_EQ(image.GetPixelIndex(-1, 0), 0);
    EXPECT_EQ(image.BlindGetPixelIndex(1, 1), 0);
    const std::vector<int> before = pixelBytes(image);
    image.SetPixelIndex(0, 0, 5);
    image.BlindSetPixelIndex(1, 1, 5);
    EXPECT_EQ(pixelBytes(image), before);
}

TEST(CxImageBlindPixelIndex, WritesByThePackingRules) {
    CxImage image;
    makeImage(image, 1, {{0, 0, 0, 0}, {1, 1, 1, 1}});
    image.BlindSetPixelIndex(2, 0, 7);
    image.BlindSetPixelIndex(1, 1, 4);
    EXPECT_EQ(indicesOf(image), (Rows{{0, 0, 1, 0}, {1, 0, 1, 1}}));
    makeImage(image, 4, {{1, 2, 3}, {4, 5, 6}});
    image.BlindSetPixelIndex(1, 1, 0xFE);
    image.BlindSetPixelIndex(2, 0, 0x10);
    EXPECT_EQ(indicesOf(image), (Rows{{1, 2, 0}, {4, 14, 6}}));
    makeImage(image, 8, {{1, 2}, {3, 4}});
    image.BlindSetPixelIndex(0, 1, 200);
    EXPECT_EQ(indicesOf(image), (Rows{{1, 2}, {200, 4}}));
}

TEST(CxImagePixelIndex, LeavesThePaddingAlone) {
    CxImage image;
    makeImage(image, 8, {{1, 2, 3}});
    image.SetPixelIndex(3, 0, 9);
    EXPECT_EQ(rowBytes(image, 0), (std::vector<int>{1, 2, 3, 0}));
}

}  // namespace
