#include <gtest/gtest.h>

#include "image/cx_image.h"
#include "tests/unit/image/image_pixels.h"

namespace {

using namespace kelp_test;

TEST(CxImageMirror, ReversesEveryRow) {
    CxImage image;
    makeImage(image, 8, {{1, 2, 3, 4, 5}, {6, 7, 8, 9, 10}});
    image.Mirror();
    EXPECT_EQ(rowBytes(image, 0), (std::vector<int>{5, 4, 3, 2, 1, 0, 0, 0}));
    EXPECT_EQ(rowBytes(image, 1), (std::vector<int>{10, 9, 8, 7, 6, 0, 0, 0}));
}

TEST(CxImageMirror, CopiesASingleColumn) {
    CxImage image;
    makeImage(image, 8, {{7}, {8}, {9}});
    image.Mirror();
    EXPECT_EQ(indicesOf(image), (Rows{{7}, {8}, {9}}));
}

TEST(CxImageMirror, SwapsAnEvenWidthAboutItsMiddle) {
    CxImage image;
    makeImage(image, 8, {{1, 2, 3, 4}});
    image.Mirror();
    EXPECT_EQ(indicesOf(image), (Rows{{4, 3, 2, 1}}));
}

TEST(CxImageMirror, LeavesThePaddingOutOfTheImage) {
    CxImage image;
    makeImage(image, 8, {{1, 2, 3}});
    image.GetBits()[3] = 99;
    image.Mirror();
    EXPECT_EQ(rowBytes(image, 0), (std::vector<int>{3, 2, 1, 0}));
}

TEST(CxImageMirror, KeepsThePaletteAndTheDepth) {
    CxImage image;
    makeImage(image, 8, {{1, 2}});
    image.SetPaletteColor(2, 11, 12, 13, 14);
    image.Mirror();
    EXPECT_EQ(image.GetBpp(), 8U);
    EXPECT_EQ(text(image.GetPaletteColor(2)), "13,12,11,14");
    EXPECT_EQ(text(image.GetPaletteColor(200)), "200,200,200,0");
}

TEST(CxImageMirror, TwiceRestoresTheImage) {
    CxImage image;
    const Rows rows = {{1, 2, 3}, {4, 5, 6}};
    makeImage(image, 8, rows);
    image.Mirror();
    image.Mirror();
    EXPECT_EQ(indicesOf(image), rows);
}

TEST(CxImageMirror, DoesNothingToAnEmptyImage) {
    CxImage image;
    image.Mirror();
    EXPECT_FALSE(image.IsValid());
}

TEST(CxImageMirror, LeavesOtherDepthsAsTheyAre) {
    for (const std::uint32_t bpp : {1U, 4U}) {
        CxImage image;
        makeImage(image, bpp, {{1, 0, 0}, {0, 1, 1}});
        image.Mirror();
        EXPECT_EQ(image.GetBpp(), bpp);
        EXPECT_EQ(indicesOf(image), (Rows{{1, 0, 0}, {0, 1, 1}}));
    }
    CxImage image;
    makeTrueColour(image, 2, 1, 1);
    image.Mirror();
    EXPECT_EQ(image.GetBpp(), 24U);
    EXPECT_EQ(pixelBytes(image), (std::vector<int>{1, 2, 3, 4, 5, 6, 0, 0}));
}

}  // namespace
