#include <gtest/gtest.h>

#include <limits>
#include <vector>

#include "image/cx_image.h"
#include "tests/unit/image/image_pixels.h"

namespace {

using namespace kelp_test;

constexpr long kMethods[] = {0, 1, 2, 3, 4, 5, 6, 7, 8, -1};

TEST(CxImageDither, MakesAOneBitImageOfBlackAndWhite) {
    for (const long method : kMethods) {
        CxImage image;
        makeImage(image, 8, {{0, 255, 0, 255, 0, 255, 0, 255, 255}, {255, 0, 0, 0, 0, 0, 0, 0, 0}});
        EXPECT_TRUE(image.Dither(method));
        EXPECT_EQ(image.GetBpp(), 1U);
        EXPECT_EQ(image.GetWidth(), 9U);
        EXPECT_EQ(image.GetHeight(), 2U);
        EXPECT_EQ(image.GetNumColors(), 2U);
        EXPECT_EQ(image.GetEffWidth(), 4U);
        EXPECT_EQ(text(image.GetPaletteColor(0)), "0,0,0,0");
        EXPECT_EQ(text(image.GetPaletteColor(1)), "255,255,255,0");
        // Pure black and white carry no error, and every method keeps them and the row order.
        EXPECT_EQ(indicesOf(image),
                  (Rows{{0, 1, 0, 1, 0, 1, 0, 1, 1}, {1, 0, 0, 0, 0, 0, 0, 0, 0}}))
            << method;
        EXPECT_EQ(rowBytes(image, 0), (std::vector<int>{0x55, 0x80, 0, 0}));
    }
}

TEST(CxImageDither, IsFalseWithoutATextForAnEmptyImage) {
    for (const long method : kMethods) {
        CxImage image;
        EXPECT_FALSE(image.Dither(method));
        EXPECT_STREQ(image.GetLastError(), "");
    }
}

TEST(CxImageDither, PassesAOneBitImageThroughUnchanged) {
    for (const long method : kMethods) {
        CxImage image;
        makeImage(image, 1, {{1, 0, 1}, {0, 0, 1}});
        image.SetPaletteColor(0, 10, 20, 30, 40);
        image.SetPaletteColor(1, 50, 60, 70, 80);
        EXPECT_TRUE(image.Dither(method));
        EXPECT_EQ(indicesOf(image), (Rows{{1, 0, 1}, {0, 0, 1}}));
        EXPECT_EQ(text(image.GetPaletteColor(0)), "30,20,10,40");
        EXPECT_EQ(text(image.GetPaletteColor(1)), "70,60,50,80");
    }
}

TEST(CxImageDither, TakesIndicesAsGreyLevelsWhateverThePaletteHolds) {
    CxImage image;
    makeImage(image, 8, {{128, 129}});
    image.SetPaletteColor(128, 255, 255, 255, 0);
    image.SetPaletteColor(129, 0, 0, 0, 0);
    EXPECT_TRUE(image.Dither(0));
    EXPECT_EQ(indicesOf(image), (Rows{{0, 1}}));
}

TEST(CxImageDither, DoesNotReadTheRowPadding) {
    for (const long method : kMethods) {
        CxImage image;
        makeImage(image, 8, {{0, 0, 0}, {0, 0, 0}});
        image.GetBits(0)[3] = 255;
        image.GetBits(1)[3] = 255;
        EXPECT_TRUE(image.Dither(method));
        EXPECT_EQ(pixelBytes(image), (std::vector<int>{0, 0, 0, 0, 0, 0, 0, 0})) << method;
    }
}

TEST(CxImageDither, CarriesTheLastErrorAndTheColourCacheAlong) {
    CxImage image;
    EXPECT_EQ(image.Create(0, 1, 8, 0), nullptr);
    makeImage(image, 8, {{1, 2}});
    EXPECT_EQ(image.GetNearestIndex(rgb(40, 40, 40)), 40);
    EXPECT_TRUE(image.Dither(0));
    EXPECT_STREQ(image.GetLastError(), kSizeText);
    EXPECT_EQ(image.GetNearestIndex(rgb(40, 40, 40)), 40);
}

TEST(CxImageDither, SelectsFloydSteinbergForEveryOtherNumber) {
    // The error 100 of the first pixel gives the second 43 of its 7/16: 90 + 43 = 133. Of the
    // other kernels none gives that pixel more than 100 * 8/32 = 25.
    for (const long method : {8L, 9L, 100L, -1L, -8L, 1L << 40, std::numeric_limits<long>::max(),
                              std::numeric_limits<long>::min()}) {
        CxImage image;
        makeImage(image, 8, {{100, 90}});
        EXPECT_TRUE(image.Dither(method));
        EXPECT_EQ(indicesOf(image), (Rows{{0, 1}})) << method;
    }
}

TEST(CxImageDither, BlackensAFourBitImageExceptByTheBayerMatrix) {
    // Levels 0 to 15 are all below the thresholds; only the Bayer entry 0 at (0, 0) is exceeded.
    for (const long method : kMethods) {
        CxImage image;
        makeImage(image, 4, {{15, 15, 15, 15, 15}, {15, 15, 15, 15, 15}});
        EXPECT_TRUE(image.Dither(method));
        const int first = method == 7 ? 1 : 0;
        EXPECT_EQ(indicesOf(image), (Rows{{first, 0, 0, 0, first}, {0, 0, 0, 0, 0}})) << method;
    }
}

TEST(CxImageDither, KeepsOnlyFourBitsOfACorrectedValueInAFourBitImage) {
    // Black keeps its whole value as error, so that values would grow by up to 15 a row and pass
    // 128 before row 12; four bits never hold more than 15, and all stays black.
    const Rows page(40, std::vector<int>(40, 15));
    const Rows black(40, std::vector<int>(40, 0));
    for (const long method : {2L, 3L, 4L, 5L, 6L, 8L}) {
        CxImage image;
        makeImage(image, 4, page);
        EXPECT_TRUE(image.Dither(method));
        EXPECT_EQ(indicesOf(image), black) << method;
    }
}

TEST(CxImageDither, BlackensATrueColourImage) {
    // Its pixels have no index: they read 0.
    for (const long method : kMethods) {
        CxImage image;
        makeTrueColour(image, 3, 2, 200);
        EXPECT_TRUE(image.Dither(method));
        EXPECT_EQ(image.GetBpp(), 1U);
        EXPECT_EQ(indicesOf(image), (Rows{{0, 0, 0}, {0, 0, 0}})) << method;
    }
}

TEST(CxImageDither, GivesTheSameDotsForTheSamePage) {
    for (const long method : kMethods) {
        Rows first;
        for (int run = 0; run < 2; ++run) {
            CxImage image;
            Rows rows(17, std::vector<int>(23));
            for (std::size_t y = 0; y < rows.size(); ++y) {
                for (std::size_t x = 0; x < rows[y].size(); ++x) {
                    rows[y][x] = static_cast<int>((x * x * 31 + y * y * 57 + x * y * 7) % 256);
                }
            }
            makeImage(image, 8, rows);
            EXPECT_TRUE(image.Dither(method));
            if (run == 0) {
                first = indicesOf(image);
            }
            EXPECT_EQ(indicesOf(image), first);
        }
    }
}

/// Header, palette and rows.
std::vector<int> blockOf(const CxImage& image) {
    const auto* end = image.GetBits(0) + std::size_t{image.GetEffWidth()} * image.GetHeight();
    return {end - image.GetSize(), end};
}

TEST(CxImageDitherAt8Bits, LeavesWhatTwoStepsLeave) {
    for (const std::uint32_t bpp : {1U, 4U, 8U}) {
        for (const long method : kMethods) {
            CxImage inTwoSteps;
            CxImage atOnce;
            for (CxImage* image : {&inTwoSteps, &atOnce}) {
                Rows rows(5, std::vector<int>(11));
                for (int i = 0; i < 55; ++i) {
                    rows[static_cast<std::size_t>(i / 11)][static_cast<std::size_t>(i % 11)] =
                        i * 37 % (1 << bpp);
                }
                makeImage(*image, bpp, rows);
                image->SetPaletteColor(1, 9, 8, 7, 6);
                image->GetBits(2)[image->GetEffWidth() - 1] = 0xAA;  // padding
            }
            EXPECT_TRUE(inTwoSteps.Dither(method));
            EXPECT_TRUE(inTwoSteps.IncreaseBpp(8));
            EXPECT_TRUE(atOnce.DitherAt8Bits(method));
            EXPECT_EQ(blockOf(atOnce), blockOf(inTwoSteps)) << bpp << " bits, method " << method;
        }
    }
}

TEST(CxImageDitherAt8Bits, IsFalseForAnEmptyImage) {
    CxImage image;
    EXPECT_FALSE(image.DitherAt8Bits(0));
}

}  // namespace
