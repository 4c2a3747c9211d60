#include <gtest/gtest.h>

#include "image/cx_image.h"
#include "tests/unit/image/image_pixels.h"

namespace {

using namespace kelp_test;

TEST(CxImageRotate180, SwapsTheTwoPixelsOfARow) {
    CxImage image;
    makeImage(image, 8, {{10, 20}});
    EXPECT_TRUE(image.Rotate180());
    EXPECT_EQ(indicesOf(image), (Rows{{20, 10}}));
}

TEST(CxImageRotate180, SwapsTheTwoRowsOfAColumn) {
    CxImage image;
    makeImage(image, 8, {{10}, {20}});
    EXPECT_TRUE(image.Rotate180());
    EXPECT_EQ(indicesOf(image), (Rows{{20}, {10}}));
}

TEST(CxImageRotate180, TurnsRowsAndColumnsOfAPage) {
    CxImage image;
    makeImage(image, 8, {{1, 2, 3, 4, 5}, {6, 7, 8, 9, 10}, {11, 12, 13, 14, 15}});
    EXPECT_TRUE(image.Rotate180());
    EXPECT_EQ(indicesOf(image), (Rows{{15, 14, 13, 12, 11}, {10, 9, 8, 7, 6}, {5, 4, 3, 2, 1}}));
    EXPECT_EQ(rowBytes(image, 0), (std::vector<int>{15, 14, 13, 12, 11, 0, 0, 0}));
}

TEST(CxImageRotate180, DoesNotTurnThePaddingIntoTheImage) {
    CxImage image;
    makeImage(image, 8, {{1, 2, 3}});
    image.GetBits()[3] = 99;
    EXPECT_TRUE(image.Rotate180());
    EXPECT_EQ(rowBytes(image, 0), (std::vector<int>{3, 2, 1, 0}));
}

TEST(CxImageRotate180, TwiceRestoresTheImage) {
    CxImage image;
    const Rows rows = {{1, 2, 3}, {4, 5, 6}};
    makeImage(image, 8, rows);
    EXPECT_TRUE(image.Rotate180());
    EXPECT_TRUE(image.Rotate180());
    EXPECT_EQ(indicesOf(image), rows);
}

TEST(CxImageRotate180, KeepsThePalette) {
    CxImage image;
    makeImage(image, 8, {{1, 2}});
    image.SetPaletteColor(2, 11, 12, 13, 14);
    EXPECT_TRUE(image.Rotate180());
    EXPECT_EQ(text(image.GetPaletteColor(2)), "13,12,11,14");
    EXPECT_EQ(text(image.GetPaletteColor(255)), "255,255,255,0");
}

TEST(CxImageRotate180, MakesEightBitsOfOneBitWithTheSameIndices) {
    CxImage image;
    makeImage(image, 1, {{1, 0, 0, 0, 0, 0, 0, 0, 1, 1}, {0, 1, 0, 0, 0, 0, 0, 0, 0, 0}});
    EXPECT_TRUE(image.Rotate180());
    EXPECT_EQ(image.GetBpp(), 8U);
    EXPECT_EQ(image.GetNumColors(), 256U);
    EXPECT_EQ(indicesOf(image),
              (Rows{{0, 0, 0, 0, 0, 0, 0, 0, 1, 0}, {1, 1, 0, 0, 0, 0, 0, 0, 0, 1}}));
    EXPECT_EQ(text(image.GetPaletteColor(1)), "255,255,255,0");
    EXPECT_EQ(text(image.GetPaletteColor(2)), "0,0,0,0");
}

TEST(CxImageRotate180, MakesEightBitsOfFourBitWithTheSameIndices) {
    CxImage image;
    makeImage(image, 4, {{1, 2, 15}, {4, 5, 6}});
    EXPECT_TRUE(image.Rotate180());
    EXPECT_EQ(image.GetBpp(), 8U);
    EXPECT_EQ(indicesOf(image), (Rows{{6, 5, 4}, {15, 2, 1}}));
    EXPECT_EQ(text(image.GetPaletteColor(15)), "255,255,255,0");
    EXPECT_EQ(text(image.GetPaletteColor(16)), "0,0,0,0");
}

TEST(CxImageRotate180, MakesIndexZeroOfTrueColour) {
    // Pixels of 24 bits have no index.
    CxImage image;
    makeTrueColour(image, 2, 2, 1);
    EXPECT_TRUE(image.Rotate180());
    EXPECT_EQ(image.GetBpp(), 8U);
    EXPECT_EQ(indicesOf(image), (Rows{{0, 0}, {0, 0}}));
    EXPECT_EQ(text(image.GetPaletteColor(255)), "0,0,0,0");
}

TEST(CxImageRotate180, LeavesTheSourceWhenItHasADestination) {
    CxImage image;
    makeImage(image, 4, {{1, 2}, {3, 4}});
    CxImage destination;
    makeImage(destination, 8, {{9, 9, 9}});
    EXPECT_TRUE(image.Rotate180(&destination));
    EXPECT_EQ(image.GetBpp(), 4U);
    EXPECT_EQ(indicesOf(image), (Rows{{1, 2}, {3, 4}}));
    EXPECT_EQ(destination.GetBpp(), 8U);
    EXPECT_EQ(indicesOf(destination), (Rows{{4, 3}, {2, 1}}));
}

TEST(CxImageRotate180, TurnsIntoItselfWhenItIsItsOwnDestination) {
    CxImage image;
    makeImage(image, 8, {{1, 2}, {3, 4}});
    EXPECT_TRUE(image.Rotate180(&image));
    EXPECT_EQ(indicesOf(image), (Rows{{4, 3}, {2, 1}}));
}

TEST(CxImageRotate180, IsFalseForAnEmptyImageAndLeavesTheDestination) {
    CxImage image;
    EXPECT_FALSE(image.Rotate180());
    CxImage destination;
    makeImage(destination, 8, {{9}});
    EXPECT_FALSE(image.Rotate180(&destination));
    EXPECT_EQ(indicesOf(destination), (Rows{{9}}));
}

TEST(CxImageRotate180, CarriesTheLastErrorAndTheColourCacheAlong) {
    CxImage image;
    EXPECT_EQ(image.Create(0, 1, 8, 0), nullptr);
    makeImage(image, 8, {{1, 2}});
    EXPECT_EQ(image.GetNearestIndex(rgb(40, 40, 40)), 40);
    EXPECT_TRUE(image.Rotate180());
    EXPECT_STREQ(image.GetLastError(), kSizeText);
    image.SetPaletteColor(40, 0, 0, 0, 0);
    EXPECT_EQ(image.GetNearestIndex(rgb(40, 40, 40)), 40);
}

}  // namespace
