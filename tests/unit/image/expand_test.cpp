#include <gtest/gtest.h>

#include <array>
#include <limits>
#include <vector>

#include "image/cx_image.h"
#include "tests/unit/image/image_pixels.h"

namespace {

using namespace kelp_test;

TEST(CxImageExpand, AddsTheBottomMarginBeforeTheImageInMemory) {
    CxImage image;
    makeImage(image, 8, {{1, 2, 3, 4}, {5, 6, 7, 8}, {9, 10, 11, 12}, {13, 14, 15, 16}});
    EXPECT_TRUE(image.Expand(2, 0, 0, 3, rgb(200, 200, 200)));
    EXPECT_EQ(image.GetWidth(), 6U);
    EXPECT_EQ(image.GetHeight(), 7U);
    const std::vector<int> margin(6, 200);
    EXPECT_EQ(indicesOf(image), (Rows{margin,
                                      margin,
                                      margin,
                                      {200, 200, 1, 2, 3, 4},
                                      {200, 200, 5, 6, 7, 8},
                                      {200, 200, 9, 10, 11, 12},
                                      {200, 200, 13, 14, 15, 16}}));
}

TEST(CxImageExpand, AddsTheTopMarginAfterTheImageInMemory) {
    CxImage image;
    makeImage(image, 8, {{1, 2}});
    EXPECT_TRUE(image.Expand(0, 2, 1, 0, rgb(50, 50, 50)));
    EXPECT_EQ(indicesOf(image), (Rows{{1, 2, 50}, {50, 50, 50}, {50, 50, 50}}));
}

TEST(CxImageExpand, AddsAllFourMarginsEachWithItsOwnWidth) {
    for (const std::uint32_t bpp : {1U, 4U, 8U}) {
        const int white = (1 << bpp) - 1;
        CxImage image;
        makeImage(image, bpp, {{0, 1}, {1, 0}});
        EXPECT_TRUE(image.Expand(1, 2, 3, 1, rgb(255, 255, 255)));
        EXPECT_EQ(image.GetBpp(), bpp);
        const std::vector<int> margin(6, white);
        EXPECT_EQ(indicesOf(image), (Rows{margin,
                                          {white, 0, 1, white, white, white},
                                          {white, 1, 0, white, white, white},
                                          margin,
                                          margin}))
            << bpp << " bits";
    }
}

TEST(CxImageExpand, CopiesTheImageForFourMarginsOfZero) {
    for (const std::uint32_t bpp : {1U, 4U, 8U}) {
        CxImage image;
        const Rows rows = {{1, 0, 1}, {0, 1, 1}};
        makeImage(image, bpp, rows);
        image.SetPaletteColor(1, 1, 2, 3, 4);
        EXPECT_TRUE(image.Expand(0, 0, 0, 0, rgb(255, 255, 255)));
        EXPECT_EQ(image.GetBpp(), bpp);
        EXPECT_EQ(indicesOf(image), rows);
        EXPECT_EQ(text(image.GetPaletteColor(1)), "3,2,1,4");
    }
}

TEST(CxImageExpand, FillsTheRowPaddingWithTheCanvasAtEightBits) {
    CxImage image;
    makeImage(image, 8, {{1, 2}});
    EXPECT_TRUE(image.Expand(1, 0, 2, 1, rgb(9, 9, 9)));
    EXPECT_EQ(rowBytes(image, 0), (std::vector<int>{9, 9, 9, 9, 9, 9, 9, 9}));
    EXPECT_EQ(rowBytes(image, 1), (std::vector<int>{9, 1, 2, 9, 9, 9, 9, 9}));
}

TEST(CxImageExpand, LeavesTheRowPaddingZeroAtLowDepths) {
    CxImage image;
    makeImage(image, 1, {{0, 0}});
    EXPECT_TRUE(image.Expand(1, 0, 0, 0, rgb(255, 255, 255)));
    EXPECT_EQ(rowBytes(image, 0), (std::vector<int>{0x80, 0, 0, 0}));
    CxImage nibbles;
    makeImage(nibbles, 4, {{1, 2}});
    EXPECT_TRUE(nibbles.Expand(0, 0, 1, 0, rgb(255, 255, 255)));
    EXPECT_EQ(rowBytes(nibbles, 0), (std::vector<int>{0x12, 0xF0, 0, 0}));
}

TEST(CxImageExpand, FillsTrueColourPixelsAndLeavesTheirPaddingZero) {
    CxImage image;
    makeTrueColour(image, 1, 1, 1);
    tagRGBQUAD canvas = rgb(90, 80, 70);
    canvas.rgbReserved = 60;
    EXPECT_TRUE(image.Expand(1, 1, 0, 0, canvas));
    EXPECT_EQ(image.GetBpp(), 24U);
    EXPECT_EQ(rowBytes(image, 0), (std::vector<int>{70, 80, 90, 1, 2, 3, 0, 0}));
    EXPECT_EQ(rowBytes(image, 1), (std::vector<int>{70, 80, 90, 70, 80, 90, 0, 0}));
}

TEST(CxImageExpand, PlacesATrueColourImageByTheBottomAndLeftMargins) {
    CxImage image;
    makeTrueColour(image, 2, 2, 1);
    EXPECT_TRUE(image.Expand(0, 0, 1, 1, rgb(99, 99, 99)));
    EXPECT_EQ(rowBytes(image, 0), (std::vector<int>{99, 99, 99, 99, 99, 99, 99, 99, 99, 0, 0, 0}));
    EXPECT_EQ(rowBytes(image, 1), (std::vector<int>{1, 2, 3, 4, 5, 6, 99, 99, 99, 0, 0, 0}));
    EXPECT_EQ(rowBytes(image, 2), (std::vector<int>{7, 8, 9, 10, 11, 12, 99, 99, 99, 0, 0, 0}));
}

TEST(CxImageExpand, CopiesOnlyThePixelsOfARowAndNotItsPadding) {
    CxImage image;
    makeImage(image, 8, {{1, 2, 3}});
    image.GetBits()[3] = 77;
    EXPECT_TRUE(image.Expand(0, 0, 1, 0, rgb(9, 9, 9)));
    EXPECT_EQ(rowBytes(image, 0), (std::vector<int>{1, 2, 3, 9}));
}

TEST(CxImageExpand, TakesTheNearestPaletteEntryForTheCanvas) {
    CxImage image;
    makeImage(image, 8, {{0}});
    image.SetPaletteColor(3, 200, 0, 0, 0);
    EXPECT_TRUE(image.Expand(1, 0, 0, 0, rgb(199, 1, 1)));
    EXPECT_EQ(indicesOf(image), (Rows{{3, 0}}));
    makeImage(image, 1, {{1}});
    EXPECT_TRUE(image.Expand(1, 0, 1, 0, rgb(127, 127, 127)));
    EXPECT_EQ(indicesOf(image), (Rows{{0, 1, 0}}));
}

TEST(CxImageExpand, AsksTheColourCacheOfTheImage) {
    // The cache moves into the larger image with the rest of the info block.
    CxImage image;
    makeImage(image, 8, {{0}});
    EXPECT_EQ(image.GetNearestIndex(rgb(80, 80, 80)), 80);
    image.SetPaletteColor(80, 0, 0, 0, 0);
    EXPECT_TRUE(image.Expand(1, 0, 0, 0, rgb(80, 80, 80)));
    EXPECT_EQ(indicesOf(image), (Rows{{80, 0}}));
}

TEST(CxImageExpand, RefusesEachNegativeMarginWithoutAText) {
    CxImage image;
    makeImage(image, 8, {{1, 2}});
    const tagRGBQUAD canvas = rgb(0, 0, 0);
    EXPECT_FALSE(image.Expand(-1, 0, 0, 0, canvas));
    EXPECT_FALSE(image.Expand(0, -1, 0, 0, canvas));
    EXPECT_FALSE(image.Expand(0, 0, -1, 0, canvas));
    EXPECT_FALSE(image.Expand(0, 0, 0, -1, canvas));
    EXPECT_FALSE(image.Expand(std::numeric_limits<long>::min(), 5, 5, 5, canvas));
    EXPECT_STREQ(image.GetLastError(), "");
    EXPECT_EQ(indicesOf(image), (Rows{{1, 2}}));
}

TEST(CxImageExpand, IsFalseForAnEmptyImage) {
    CxImage image;
    EXPECT_FALSE(image.Expand(1, 1, 1, 1, rgb(0, 0, 0)));
    EXPECT_FALSE(image.IsValid());
    EXPECT_STREQ(image.GetLastError(), "");
}

TEST(CxImageExpand, ReportsTheTextOfCreateAndLeavesTheImage) {
    // 65536 * 65536 bytes.
    CxImage image;
    makeImage(image, 8, {{1, 0}});
    EXPECT_FALSE(image.Expand(65534, 65535, 0, 0, rgb(0, 0, 0)));
    EXPECT_STREQ(image.GetLastError(), kLimitText);
    EXPECT_EQ(indicesOf(image), (Rows{{1, 0}}));
}

TEST(CxImageExpand, RefusesMarginsThatWouldWrapToASmallSize) {
    const long wrap = 1L << 32;
    const long most = std::numeric_limits<long>::max();
    for (const auto& [left, top, right, bottom] :
         std::vector<std::array<long, 4>>{{wrap, 0, 0, 0},
                                          {0, wrap, 0, 0},
                                          {0, 0, wrap - 1, 0},
                                          {0, 0, 0, wrap + 5},
                                          {wrap / 2, 0, wrap / 2, 0},
                                          {most, most, most, most},
                                          {most, 0, 0, 0}}) {
        CxImage image;
        makeImage(image, 8, {{1, 2}});
        EXPECT_FALSE(image.Expand(left, top, right, bottom, rgb(0, 0, 0)));
        EXPECT_STREQ(image.GetLastError(), kLimitText);
        EXPECT_EQ(indicesOf(image), (Rows{{1, 2}}));
    }
}

}  // namespace
