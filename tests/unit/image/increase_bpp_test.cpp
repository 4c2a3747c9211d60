#include <gtest/gtest.h>

#include "image/cx_image.h"
#include "tests/unit/image/image_pixels.h"

namespace {

using namespace kelp_test;

const Rows kRows = {{1, 0, 1}, {0, 1, 1}};

TEST(CxImageIncreaseBpp, KeepsTheIndicesOfOneBitAtFourAndEight) {
    for (const std::uint32_t bpp : {4U, 8U}) {
        CxImage image;
        makeImage(image, 1, kRows);
        EXPECT_TRUE(image.IncreaseBpp(bpp));
        EXPECT_EQ(image.GetBpp(), bpp);
        EXPECT_EQ(image.GetNumColors(), 1U << bpp);
        EXPECT_EQ(indicesOf(image), kRows);
        EXPECT_EQ(text(image.GetPaletteColor(0)), "0,0,0,0");
        EXPECT_EQ(text(image.GetPaletteColor(1)), "255,255,255,0");
        for (std::uint32_t i = 2; i < image.GetNumColors(); ++i) {
            EXPECT_EQ(text(image.GetPaletteColor(static_cast<std::uint8_t>(i))), "0,0,0,0");
        }
    }
}

TEST(CxImageIncreaseBpp, KeepsTheIndicesOfFourBitsAtEight) {
    CxImage image;
    makeImage(image, 4, {{0, 7, 15}, {8, 1, 3}});
    EXPECT_TRUE(image.IncreaseBpp(8));
    EXPECT_EQ(image.GetBpp(), 8U);
    EXPECT_EQ(indicesOf(image), (Rows{{0, 7, 15}, {8, 1, 3}}));
    EXPECT_EQ(text(image.GetPaletteColor(7)), "119,119,119,0");
    EXPECT_EQ(text(image.GetPaletteColor(15)), "255,255,255,0");
    EXPECT_EQ(text(image.GetPaletteColor(16)), "0,0,0,0");
}

TEST(CxImageIncreaseBpp, WritesThePaletteColoursAtTwentyFour) {
    for (const std::uint32_t bpp : {1U, 4U, 8U}) {
        CxImage image;
        makeImage(image, bpp, {{0, 1}, {1, 0}});
        image.SetPaletteColor(0, 1, 2, 3, 9);
        image.SetPaletteColor(1, 10, 20, 30, 9);
        EXPECT_TRUE(image.IncreaseBpp(24));
        EXPECT_EQ(image.GetBpp(), 24U);
        EXPECT_EQ(image.GetNumColors(), 0U);
        EXPECT_EQ(image.GetWidth(), 2U);
        EXPECT_EQ(image.GetHeight(), 2U);
        EXPECT_EQ(pixelBytes(image),
                  (std::vector<int>{3, 2, 1, 30, 20, 10, 0, 0, 30, 20, 10, 3, 2, 1, 0, 0}));
    }
}

TEST(CxImageIncreaseBpp, IsTrueAndChangesNothingAtTheSameDepth) {
    for (const std::uint32_t bpp : {4U, 8U}) {
        CxImage image;
        makeImage(image, bpp, kRows);
        const std::uint8_t* bits = image.GetBits();
        EXPECT_TRUE(image.IncreaseBpp(bpp));
        EXPECT_EQ(image.GetBits(), bits);
        EXPECT_EQ(image.GetBpp(), bpp);
        EXPECT_EQ(indicesOf(image), kRows);
    }
    CxImage image;
    makeTrueColour(image, 1, 1, 5);
    EXPECT_TRUE(image.IncreaseBpp(24));
    EXPECT_EQ(pixelBytes(image), (std::vector<int>{5, 6, 7, 0}));
}

TEST(CxImageIncreaseBpp, NeverReducesTheDepth) {
    CxImage image;
    makeImage(image, 8, kRows);
    EXPECT_FALSE(image.IncreaseBpp(4));
    EXPECT_EQ(image.GetBpp(), 8U);
    EXPECT_EQ(indicesOf(image), kRows);
    makeTrueColour(image, 1, 1, 5);
    EXPECT_FALSE(image.IncreaseBpp(8));
    EXPECT_FALSE(image.IncreaseBpp(4));
    EXPECT_EQ(image.GetBpp(), 24U);
    EXPECT_STREQ(image.GetLastError(), "");
}

TEST(CxImageIncreaseBpp, RefusesEveryOtherDepth) {
    CxImage image;
    makeImage(image, 1, kRows);
    for (const std::uint32_t bpp : {0U, 1U, 2U, 3U, 5U, 7U, 9U, 16U, 23U, 25U, 32U}) {
        EXPECT_FALSE(image.IncreaseBpp(bpp)) << bpp;
    }
    EXPECT_EQ(image.GetBpp(), 1U);
    EXPECT_EQ(indicesOf(image), kRows);
    EXPECT_STREQ(image.GetLastError(), "");
    makeImage(image, 8, kRows);
    EXPECT_FALSE(image.IncreaseBpp(16));
}

TEST(CxImageIncreaseBpp, IsFalseForAnEmptyImage) {
    CxImage image;
    EXPECT_FALSE(image.IncreaseBpp(8));
    makeImage(image, 8, kRows);
    image.Destroy();
    EXPECT_FALSE(image.IncreaseBpp(8));
}

TEST(CxImageIncreaseBpp, LeavesTheRowPaddingZero) {
    CxImage image;
    makeImage(image, 1, {{1, 1, 1}});
    image.Negative();
    EXPECT_TRUE(image.IncreaseBpp(8));
    EXPECT_EQ(rowBytes(image, 0), (std::vector<int>{0, 0, 0, 0}));
    makeImage(image, 8, {{0}});
    image.Negative();
    EXPECT_TRUE(image.IncreaseBpp(24));
    EXPECT_EQ(rowBytes(image, 0), (std::vector<int>{255, 255, 255, 0}));
}

TEST(CxImageIncreaseBpp, ReportsTheTextOfCreateAndLeavesTheImage) {
    // 32768 * 8192 is 2^28 pixels: times 24 is past 32 bits.
    CxImage image;
    ASSERT_NE(image.Create(32768, 8192, 1, 0), nullptr);
    image.SetPixelIndex(5, 5, 1);
    EXPECT_FALSE(image.IncreaseBpp(24));
    EXPECT_STREQ(image.GetLastError(), kLimitText);
    EXPECT_EQ(image.GetBpp(), 1U);
    EXPECT_EQ(image.GetPixelIndex(5, 5), 1);
}

}  // namespace
