#include <gtest/gtest.h>

#include <cstddef>
#include <cstring>

#include "image/cx_image.h"
#include "tests/unit/image/image_pixels.h"

namespace {

using namespace kelp_test;

/// Sets "colours important", which nothing in the interface does. The header is an image's first
/// field.
void setColoursImportant(CxImage& image, std::uint32_t count) {
    std::memcpy(
        reinterpret_cast<unsigned char*>(&image) + offsetof(BITMAPINFOHEADER, biClrImportant),
        &count, sizeof count);
}

TEST(CxImageNearestIndex, IsZeroWithoutABlockOrAPalette) {
    CxImage image;
    EXPECT_EQ(image.GetNearestIndex(rgb(255, 255, 255)), 0);
    makeTrueColour(image, 1, 1, 1);
    EXPECT_EQ(image.GetNearestIndex(rgb(255, 255, 255)), 0);
}

TEST(CxImageNearestIndex, CachesNothingWhereThereIsNoPalette) {
    CxImage image;
    EXPECT_EQ(image.GetNearestIndex(rgb(255, 255, 255)), 0);
    makeImage(image, 1, {{0}});
    EXPECT_EQ(image.GetNearestIndex(rgb(255, 255, 255)), 1);
}

TEST(CxImageNearestIndex, ChoosesBlackOrWhiteByDistance) {
    CxImage image;
    makeImage(image, 1, {{0}});
    EXPECT_EQ(image.GetNearestIndex(rgb(100, 100, 100)), 0);
    // 3 * 127 * 127 to white, 3 * 128 * 128 to black.
    EXPECT_EQ(image.GetNearestIndex(rgb(128, 128, 128)), 1);
    EXPECT_EQ(image.GetNearestIndex(rgb(127, 127, 127)), 0);
}

TEST(CxImageNearestIndex, FindsEveryGreyOfTheGreyPalette) {
    CxImage image;
    makeImage(image, 8, {{0}});
    for (int i = 0; i < 256; ++i) {
        EXPECT_EQ(image.GetNearestIndex(rgb(i, i, i)), i);
    }
    makeImage(image, 4, {{0}});
    for (int i = 0; i < 15; ++i) {
        EXPECT_EQ(image.GetNearestIndex(rgb(i * 17 + 8, i * 17 + 8, i * 17 + 8)), i);
    }
}

TEST(CxImageNearestIndex, SquaresTheDistanceOfEachComponent) {
    // From (100, 100, 100): 3 * 6 * 6 = 108 against 10 * 10 = 100, whichever component it is in.
    for (const tagRGBQUAD one : {rgb(110, 100, 100), rgb(100, 90, 100), rgb(100, 100, 110)}) {
        CxImage image;
        ASSERT_NE(image.Create(1, 1, 4, 0), nullptr);
        image.SetPaletteColor(0, 106, 106, 106, 0);
        image.SetPaletteColor(5, one.rgbRed, one.rgbGreen, one.rgbBlue, 0);
        EXPECT_EQ(image.GetNearestIndex(rgb(100, 100, 100)), 5);
    }
}

TEST(CxImageNearestIndex, TakesTheLowestOfEqualDistances) {
    CxImage image;
    makeImage(image, 4, {{0}});
    image.SetPaletteColor(4, 60, 60, 60, 0);
    image.SetPaletteColor(9, 60, 60, 60, 0);
    image.SetPaletteColor(11, 64, 64, 64, 0);
    EXPECT_EQ(image.GetNearestIndex(rgb(60, 60, 60)), 4);
    // 62 lies between 60 and 64.
    EXPECT_EQ(image.GetNearestIndex(rgb(62, 62, 62)), 4);
}

TEST(CxImageNearestIndex, IgnoresTheReservedByte) {
    CxImage image;
    makeImage(image, 1, {{0}});
    image.SetPaletteColor(1, 255, 255, 255, 200);
    EXPECT_EQ(image.GetNearestIndex(rgb(250, 250, 250)), 1);
}

TEST(CxImageNearestIndex, MeasuresTheLargestDistanceThereIs) {
    // 3 * 255 * 255 = 195075 lies below the 200000 that the search starts with, so no palette of
    // bytes is ever too far off.
    CxImage image;
    ASSERT_NE(image.Create(1, 1, 1, 0), nullptr);
    image.SetPaletteColor(0, 0, 0, 0, 0);
    image.SetPaletteColor(1, 0, 0, 1, 0);
    EXPECT_EQ(image.GetNearestIndex(rgb(255, 255, 255)), 1);
}

TEST(CxImageNearestIndex, AnswersFromItsCacheForTheSameColour) {
    CxImage image;
    makeImage(image, 8, {{0}});
    EXPECT_EQ(image.GetNearestIndex(rgb(50, 50, 50)), 50);
    image.SetPaletteColor(7, 50, 50, 50, 0);
    EXPECT_EQ(image.GetNearestIndex(rgb(50, 50, 50)), 50);
    // Another colour in between, and the palette is searched again.
    EXPECT_EQ(image.GetNearestIndex(rgb(60, 60, 60)), 60);
    EXPECT_EQ(image.GetNearestIndex(rgb(50, 50, 50)), 7);
}

TEST(CxImageNearestIndex, ComparesAllFourBytesWithTheCache) {
    CxImage image;
    makeImage(image, 8, {{0}});
    EXPECT_EQ(image.GetNearestIndex(rgb(50, 50, 50)), 50);
    image.SetPaletteColor(7, 50, 50, 50, 0);
    tagRGBQUAD opaque = rgb(50, 50, 50);
    opaque.rgbReserved = 255;
    EXPECT_EQ(image.GetNearestIndex(opaque), 7);
}

TEST(CxImageNearestIndex, DoesNotTakeANewImagesZeroCacheForBlack) {
    CxImage image;
    ASSERT_NE(image.Create(1, 1, 1, 0), nullptr);
    image.SetPaletteColor(0, 255, 255, 255, 0);
    EXPECT_EQ(image.GetNearestIndex(rgb(0, 0, 0)), 1);
}

TEST(CxImageNearestIndex, KeepsItsCacheThroughCreate) {
    CxImage image;
    makeImage(image, 8, {{0}});
    EXPECT_EQ(image.GetNearestIndex(rgb(255, 255, 255)), 255);
    makeImage(image, 1, {{0}});
    EXPECT_EQ(image.GetNearestIndex(rgb(255, 255, 255)), 255);
    EXPECT_EQ(image.GetNearestIndex(rgb(254, 254, 254)), 1);
}

TEST(CxImageNearestIndex, SearchesOnlyTheImportantColours) {
    CxImage image;
    makeImage(image, 8, {{0}});
    setColoursImportant(image, 10);
    ASSERT_EQ(image.GetNumColors(), 256U);
    EXPECT_EQ(image.GetNearestIndex(rgb(200, 200, 200)), 9);
    EXPECT_EQ(image.GetNearestIndex(rgb(5, 5, 5)), 5);
    setColoursImportant(image, 0);
    EXPECT_EQ(image.GetNearestIndex(rgb(200, 200, 200)), 200);
}

TEST(CxImageNearestIndex, KeepsTheImportantColoursThroughCreate) {
    CxImage image;
    makeImage(image, 8, {{0}});
    setColoursImportant(image, 10);
    makeImage(image, 8, {{0}});
    EXPECT_EQ(image.GetNearestIndex(rgb(200, 200, 200)), 9);
}

}  // namespace
