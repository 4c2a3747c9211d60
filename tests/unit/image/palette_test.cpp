#include <gtest/gtest.h>

#include <vector>

#include "image/cx_image.h"
#include "tests/unit/image/image_pixels.h"

namespace {

using namespace kelp_test;

TEST(CxImagePalette, IsBlackInANewImage) {
    for (const std::uint32_t bpp : {1U, 4U, 8U}) {
        CxImage image;
        ASSERT_NE(image.Create(1, 1, bpp, 0), nullptr);
        for (std::uint32_t i = 0; i < image.GetNumColors(); ++i) {
            EXPECT_EQ(text(image.GetPaletteColor(static_cast<std::uint8_t>(i))), "0,0,0,0");
        }
    }
}

TEST(CxImagePalette, StoresAnEntryAsBlueGreenRedReserved) {
    CxImage image;
    ASSERT_NE(image.Create(1, 1, 8, 0), nullptr);
    image.SetPaletteColor(200, 1, 2, 3, 4);
    const tagRGBQUAD entry = image.GetPaletteColor(200);
    EXPECT_EQ(entry.rgbRed, 1);
    EXPECT_EQ(entry.rgbGreen, 2);
    EXPECT_EQ(entry.rgbBlue, 3);
    EXPECT_EQ(entry.rgbReserved, 4);
    const auto* bytes = reinterpret_cast<const std::uint8_t*>(image.GetPalette()) + 200 * 4;
    EXPECT_EQ(std::vector<int>(bytes, bytes + 4), (std::vector<int>{3, 2, 1, 4}));
}

TEST(CxImagePalette, IgnoresAnEntryPastItsEnd) {
    CxImage image;
    makeImage(image, 1, {{1, 0, 1}});
    image.SetPaletteColor(2, 9, 9, 9, 9);
    image.SetPaletteColor(255, 9, 9, 9, 9);
    EXPECT_EQ(text(image.GetPaletteColor(2)), "0,0,0,0");
    EXPECT_EQ(text(image.GetPaletteColor(255)), "0,0,0,0");
    EXPECT_EQ(text(image.GetPaletteColor(1)), "255,255,255,0");
    // The bytes after the second entry are the pixels.
    EXPECT_EQ(indicesOf(image), (Rows{{1, 0, 1}}));
}

TEST(CxImagePalette, HasNoColourWithoutABlockOrWithoutEntries) {
    CxImage image;
    EXPECT_EQ(text(image.GetPaletteColor(0)), "0,0,0,0");
    image.SetPaletteColor(0, 1, 2, 3, 4);
    EXPECT_EQ(image.GetPalette(), nullptr);

    makeTrueColour(image, 1, 1, 1);
    EXPECT_EQ(image.GetPalette(), nullptr);
    EXPECT_EQ(image.GetPaletteSize(), 0U);
    image.SetPaletteColor(0, 9, 9, 9, 9);
    EXPECT_EQ(text(image.GetPaletteColor(0)), "0,0,0,0");
    EXPECT_EQ(pixelBytes(image), (std::vector<int>{1, 2, 3, 0}));

    makeImage(image, 8, {{0}});
    image.Destroy();
    EXPECT_EQ(text(image.GetPaletteColor(255)), "0,0,0,0");
}

TEST(CxImageSetPalette, CopiesAsManyEntriesAsItIsGiven) {
    CxImage image;
    makeImage(image, 8, {{0}});
    const std::vector<tagRGBQUAD> colours = {{1, 2, 3, 4}, {5, 6, 7, 8}};
    image.SetPalette(colours.data(), 2);
    EXPECT_EQ(text(image.GetPaletteColor(0)), "1,2,3,4");
    EXPECT_EQ(text(image.GetPaletteColor(1)), "5,6,7,8");
    EXPECT_EQ(text(image.GetPaletteColor(2)), "2,2,2,0");
}

TEST(CxImageSetPalette, CopiesNoMoreEntriesThanItHas) {
    CxImage image;
    makeImage(image, 1, {{1, 0, 1}});
    const std::vector<tagRGBQUAD> colours(256, tagRGBQUAD{1, 2, 3, 4});
    image.SetPalette(colours.data(), 256);
    EXPECT_EQ(text(image.GetPaletteColor(0)), "1,2,3,4");
    EXPECT_EQ(text(image.GetPaletteColor(1)), "1,2,3,4");
    EXPECT_EQ(indicesOf(image), (Rows{{1, 0, 1}}));
}

TEST(CxImageSetPalette, IgnoresANullPaletteAndAnImageWithoutOne) {
    CxImage image;
    const std::vector<tagRGBQUAD> colours = {{1, 2, 3, 4}};
    image.SetPalette(colours.data(), 1);
    EXPECT_FALSE(image.IsValid());

    makeImage(image, 4, {{1}});
    image.SetPalette(nullptr, 16);
    EXPECT_EQ(text(image.GetPaletteColor(15)), "255,255,255,0");
    image.SetPalette(colours.data(), 0);
    EXPECT_EQ(text(image.GetPaletteColor(0)), "0,0,0,0");

    makeTrueColour(image, 1, 1, 50);
    image.SetPalette(colours.data(), 1);
    EXPECT_EQ(pixelBytes(image), (std::vector<int>{50, 51, 52, 0}));
}

TEST(CxImageGrayPalette, GoesFromBlackToWhiteInEqualSteps) {
    struct Steps {
        std::uint32_t bpp;
        int step;
    };
    for (const Steps s : {Steps{1, 255}, Steps{4, 17}, Steps{8, 1}}) {
        CxImage image;
        ASSERT_NE(image.Create(1, 1, s.bpp, 0), nullptr);
        image.SetGrayPalette();
        for (int i = 0; i < 1 << s.bpp; ++i) {
            EXPECT_EQ(text(image.GetPaletteColor(static_cast<std::uint8_t>(i))),
                      text(rgb(i * s.step, i * s.step, i * s.step)))
                << s.bpp << " bits, entry " << i;
        }
    }
}

TEST(CxImageGrayPalette, LeavesTheReservedBytes) {
    CxImage image;
    ASSERT_NE(image.Create(1, 1, 4, 0), nullptr);
    image.SetPaletteColor(3, 200, 100, 50, 77);
    image.SetGrayPalette();
    EXPECT_EQ(text(image.GetPaletteColor(3)), "51,51,51,77");
}

TEST(CxImageGrayPalette, DoesNothingWithoutAPalette) {
    CxImage image;
    image.SetGrayPalette();
    EXPECT_FALSE(image.IsValid());
    makeTrueColour(image, 2, 1, 1);
    image.SetGrayPalette();
    EXPECT_EQ(pixelBytes(image), (std::vector<int>{1, 2, 3, 4, 5, 6, 0, 0}));
}

}  // namespace
