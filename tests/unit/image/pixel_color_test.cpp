#include <gtest/gtest.h>

#include <vector>

#include "image/cx_image.h"
#include "tests/unit/image/image_pixels.h"

namespace {

using namespace kelp_test;

TEST(CxImagePixelColor, IsThePaletteEntryOfTheIndex) {
    for (const std::uint32_t bpp : {1U, 4U, 8U}) {
        CxImage image;
        makeImage(image, bpp, {{0, 1}, {1, 0}});
        image.SetPaletteColor(1, 10, 20, 30, 40);
        EXPECT_EQ(text(image.BlindGetPixelColor(1, 0)), "30,20,10,40");
        EXPECT_EQ(text(image.BlindGetPixelColor(0, 1)), "30,20,10,40");
        EXPECT_EQ(text(image.BlindGetPixelColor(1, 1)), "0,0,0,0");
    }
}

TEST(CxImagePixelColor, IsBlueGreenRedInATrueColourImage) {
    CxImage image;
    // Rows of 9 bytes from 1 on: pixel (2, 1) is at 9 + 6.
    makeTrueColour(image, 3, 2, 1);
    EXPECT_EQ(text(image.BlindGetPixelColor(0, 0)), "1,2,3,0");
    EXPECT_EQ(text(image.BlindGetPixelColor(1, 0)), "4,5,6,0");
    EXPECT_EQ(text(image.BlindGetPixelColor(2, 1)), "16,17,18,0");
    const tagRGBQUAD colour = image.BlindGetPixelColor(0, 0);
    EXPECT_EQ(colour.rgbBlue, 1);
    EXPECT_EQ(colour.rgbGreen, 2);
    EXPECT_EQ(colour.rgbRed, 3);
}

TEST(CxImagePixelColor, IsTheSameWithAndWithoutTheAlphaFlag) {
    CxImage image;
    makeImage(image, 8, {{7}});
    image.SetPaletteColor(7, 1, 2, 3, 4);
    EXPECT_EQ(text(image.BlindGetPixelColor(0, 0, true)), "3,2,1,4");
    EXPECT_EQ(text(image.BlindGetPixelColor(0, 0, false)), "3,2,1,4");
    makeTrueColour(image, 1, 1, 5);
    EXPECT_EQ(text(image.BlindGetPixelColor(0, 0, true)), "5,6,7,0");
}

TEST(CxImageSetPixelColor, WritesThreeBytesOfATrueColourImage) {
    for (const bool flag : {false, true}) {
        CxImage image;
        makeTrueColour(image, 2, 2, 1);
        image.BlindSetPixelColor(1, 1, {90, 91, 92, 93}, flag);
        EXPECT_EQ(rowBytes(image, 0), (std::vector<int>{1, 2, 3, 4, 5, 6, 0, 0}));
        EXPECT_EQ(rowBytes(image, 1), (std::vector<int>{7, 8, 9, 90, 91, 92, 0, 0}));
    }
}

TEST(CxImageSetPixelColor, WritesTheNearestIndexOfAPalette) {
    for (const bool flag : {false, true}) {
        CxImage image;
        makeImage(image, 8, {{0, 0}, {0, 0}});
        image.BlindSetPixelColor(1, 0, rgb(99, 99, 99), flag);
        image.BlindSetPixelColor(0, 1, rgb(10, 11, 12), flag);
        EXPECT_EQ(indicesOf(image), (Rows{{0, 99}, {11, 0}}));
    }
}

TEST(CxImageSetPixelColor, WritesTheNearestIndexAtLowDepths) {
    CxImage image;
    makeImage(image, 1, {{0, 1}});
    image.BlindSetPixelColor(0, 0, rgb(200, 200, 200));
    image.BlindSetPixelColor(1, 0, rgb(20, 20, 20));
    EXPECT_EQ(indicesOf(image), (Rows{{1, 0}}));
    makeImage(image, 4, {{0, 0, 0}});
    // 100 lies nearest to 6 * 17 = 102.
    image.BlindSetPixelColor(1, 0, rgb(100, 100, 100));
    EXPECT_EQ(indicesOf(image), (Rows{{0, 6, 0}}));
}

}  // namespace
