#include <gtest/gtest.h>

#include "image/cx_image.h"
#include "tests/unit/image/image_pixels.h"

namespace {

using namespace kelp_test;

TEST(CxImageNegative, MapsAGreyLevelToItsComplement) {
    CxImage image;
    makeImage(image, 8, {{0, 1, 127}, {128, 200, 255}});
    image.Negative();
    EXPECT_EQ(indicesOf(image), (Rows{{255, 254, 128}, {127, 55, 0}}));
}

TEST(CxImageNegative, InvertsThePaddingToo) {
    CxImage image;
    makeImage(image, 8, {{1}, {2}});
    image.Negative();
    EXPECT_EQ(pixelBytes(image), (std::vector<int>{254, 255, 255, 255, 253, 255, 255, 255}));
}

TEST(CxImageNegative, SwapsBlackAndWhiteAtOneBit) {
    CxImage image;
    makeImage(image, 1, {{1, 0, 1, 1}});
    image.Negative();
    EXPECT_EQ(indicesOf(image), (Rows{{0, 1, 0, 0}}));
    EXPECT_EQ(rowBytes(image, 0), (std::vector<int>{0x4F, 0xFF, 0xFF, 0xFF}));
}

TEST(CxImageNegative, InvertsNibblesAndTrueColourBytes) {
    CxImage image;
    makeImage(image, 4, {{0, 5, 15}});
    image.Negative();
    EXPECT_EQ(indicesOf(image), (Rows{{15, 10, 0}}));
    makeTrueColour(image, 1, 1, 1);
    image.Negative();
    EXPECT_EQ(pixelBytes(image), (std::vector<int>{254, 253, 252, 255}));
}

TEST(CxImageNegative, TwiceRestoresTheImageExactly) {
    for (const std::uint32_t bpp : {1U, 4U, 8U}) {
        CxImage image;
        makeImage(image, bpp, {{1, 0, 0}, {0, 1, 1}});
        const std::vector<int> before = pixelBytes(image);
        image.Negative();
        EXPECT_NE(pixelBytes(image), before);
        image.Negative();
        EXPECT_EQ(pixelBytes(image), before);
    }
}

TEST(CxImageNegative, LeavesThePaletteAlone) {
    CxImage image;
    makeImage(image, 8, {{1}});
    image.Negative();
    for (int i = 0; i < 256; ++i) {
        EXPECT_EQ(text(image.GetPaletteColor(static_cast<std::uint8_t>(i))), text(rgb(i, i, i)));
    }
}

TEST(CxImageNegative, DoesNothingToAnEmptyImage) {
    CxImage image;
    image.Negative();
    EXPECT_FALSE(image.IsValid());
    makeImage(image, 8, {{1}});
    image.Destroy();
    image.Negative();
    EXPECT_FALSE(image.IsValid());
}

}  // namespace
