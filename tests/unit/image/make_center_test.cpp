#include <gtest/gtest.h>

#include <limits>

#include "image/cx_image.h"
#include "tests/unit/image/image_pixels.h"

namespace {

using namespace kelp_test;

TEST(CxImageMakeCenter, PutsTheImageInTheMiddle) {
    CxImage image;
    makeImage(image, 8, {{1, 2}, {3, 4}});
    image.MakeCenter(6);
    EXPECT_EQ(indicesOf(image), (Rows{{0, 0, 1, 2, 0, 0}, {0, 0, 3, 4, 0, 0}}));
    EXPECT_EQ(image.GetEffWidth(), 8U);
}

TEST(CxImageMakeCenter, LeavesTheOddColumnOnTheRight) {
    CxImage image;
    makeImage(image, 8, {{1, 2}});
    // (7 - 2) / 2 is 2.
    image.MakeCenter(7);
    EXPECT_EQ(indicesOf(image), (Rows{{0, 0, 1, 2, 0, 0, 0}}));
    CxImage narrow;
    makeImage(narrow, 8, {{1, 2}});
    narrow.MakeCenter(3);
    EXPECT_EQ(indicesOf(narrow), (Rows{{1, 2, 0}}));
}

TEST(CxImageMakeCenter, MakesEightBitsOfOneBit) {
    CxImage image;
    makeImage(image, 1, {{1, 0, 1}, {0, 1, 1}});
    image.MakeCenter(5);
    EXPECT_EQ(image.GetBpp(), 8U);
    EXPECT_EQ(indicesOf(image), (Rows{{0, 1, 0, 1, 0}, {0, 0, 1, 1, 0}}));
    EXPECT_EQ(text(image.GetPaletteColor(1)), "255,255,255,0");
    EXPECT_EQ(text(image.GetPaletteColor(255)), "0,0,0,0");
}

TEST(CxImageMakeCenter, MakesEightBitsOfFourBit) {
    CxImage image;
    makeImage(image, 4, {{14, 2, 3}});
    image.MakeCenter(5);
    EXPECT_EQ(image.GetBpp(), 8U);
    EXPECT_EQ(indicesOf(image), (Rows{{0, 14, 2, 3, 0}}));
    EXPECT_EQ(text(image.GetPaletteColor(14)), "238,238,238,0");
}

TEST(CxImageMakeCenter, MakesIndexZeroOfTrueColour) {
    CxImage image;
    makeTrueColour(image, 2, 1, 1);
    image.MakeCenter(4);
    EXPECT_EQ(image.GetBpp(), 8U);
    EXPECT_EQ(indicesOf(image), (Rows{{0, 0, 0, 0}}));
}

TEST(CxImageMakeCenter, DoesNothingUnlessItIsWider) {
    for (const int width : {3, 2, 0, -1, std::numeric_limits<int>::min()}) {
        CxImage image;
        makeImage(image, 4, {{1, 2, 3}});
        image.MakeCenter(width);
        EXPECT_EQ(image.GetBpp(), 4U) << width;
        EXPECT_EQ(indicesOf(image), (Rows{{1, 2, 3}})) << width;
    }
}

TEST(CxImageMakeCenter, DoesNothingToAnEmptyImage) {
    CxImage image;
    image.MakeCenter(10);
    EXPECT_FALSE(image.IsValid());
    EXPECT_EQ(image.GetWidth(), 0U);
}

TEST(CxImageMakeCenter, EmptiesTheImageWhenTheWiderOneCannotBeMade) {
    // 8 * (2^31 - 1) does not fit 32 bits.
    CxImage image;
    makeImage(image, 8, {{1, 2}});
    image.MakeCenter(std::numeric_limits<int>::max());
    EXPECT_FALSE(image.IsValid());
    EXPECT_STREQ(image.GetLastError(), kLimitText);
}

TEST(CxImageMakeCenter, LeavesAnImageWiderThanAnIntAlone) {
    CxImage image;
    ASSERT_NE(image.Create(0x80000000U, 1, 1, 0), nullptr);
    image.MakeCenter(10);
    EXPECT_EQ(image.GetWidth(), 0x80000000U);
    EXPECT_EQ(image.GetBpp(), 1U);
}

}  // namespace
