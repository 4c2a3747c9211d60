#include <gtest/gtest.h>

#include <numeric>
#include <vector>

#include "image/cx_image.h"
#include "tests/unit/image/image_pixels.h"

namespace {

using namespace kelp_test;

/// Bytes 1, 2, 3, ...
std::vector<std::uint8_t> counting(std::size_t count) {
    std::vector<std::uint8_t> bytes(count);
    std::iota(bytes.begin(), bytes.end(), std::uint8_t{1});
    return bytes;
}

TEST(CxImageCreateFromArray, LoadsAGreyPageRowByRow) {
    CxImage image;
    const auto page = counting(12);
    ASSERT_TRUE(image.CreateFromArray(page.data(), 4, 3, 8, 4, false));
    EXPECT_EQ(image.GetWidth(), 4U);
    EXPECT_EQ(image.GetHeight(), 3U);
    EXPECT_EQ(image.GetBpp(), 8U);
    EXPECT_EQ(indicesOf(image), (Rows{{1, 2, 3, 4}, {5, 6, 7, 8}, {9, 10, 11, 12}}));
}

TEST(CxImageCreateFromArray, GivesAGreyPaletteOfEveryIndex) {
    CxImage image;
    const auto page = counting(4);
    ASSERT_TRUE(image.CreateFromArray(page.data(), 4, 1, 8, 4, false));
    for (int i = 0; i < 256; ++i) {
        EXPECT_EQ(text(image.GetPaletteColor(static_cast<std::uint8_t>(i))), text(rgb(i, i, i)));
    }
}

TEST(CxImageCreateFromArray, GivesLowDepthsAGreyPaletteToo) {
    CxImage image;
    const auto page = counting(8);
    ASSERT_TRUE(image.CreateFromArray(page.data(), 8, 1, 1, 4, false));
    EXPECT_EQ(text(image.GetPaletteColor(0)), "0,0,0,0");
    EXPECT_EQ(text(image.GetPaletteColor(1)), "255,255,255,0");
    ASSERT_TRUE(image.CreateFromArray(page.data(), 8, 1, 4, 4, false));
    EXPECT_EQ(text(image.GetPaletteColor(1)), "17,17,17,0");
    EXPECT_EQ(text(image.GetPaletteColor(15)), "255,255,255,0");
}

TEST(CxImageCreateFromArray, PutsTheFirstRowLastWhenFlipped) {
    CxImage image;
    const auto page = counting(12);
    ASSERT_TRUE(image.CreateFromArray(page.data(), 4, 3, 8, 4, true));
    EXPECT_EQ(indicesOf(image), (Rows{{9, 10, 11, 12}, {5, 6, 7, 8}, {1, 2, 3, 4}}));
}

TEST(CxImageCreateFromArray, CopiesOnlyTheStrideOfTheImageFromWiderRows) {
    // Three pixels make rows of four bytes; of each ten source bytes the first four come over.
    CxImage image;
    const auto page = counting(20);
    ASSERT_TRUE(image.CreateFromArray(page.data(), 3, 2, 8, 10, false));
    EXPECT_EQ(image.GetEffWidth(), 4U);
    EXPECT_EQ(pixelBytes(image), (std::vector<int>{1, 2, 3, 4, 11, 12, 13, 14}));
}

TEST(CxImageCreateFromArray, LeavesTheRestOfARowZeroForNarrowerRows) {
    CxImage image;
    const auto page = counting(6);
    ASSERT_TRUE(image.CreateFromArray(page.data(), 5, 2, 8, 3, false));
    EXPECT_EQ(pixelBytes(image),
              (std::vector<int>{1, 2, 3, 0, 0, 0, 0, 0, 4, 5, 6, 0, 0, 0, 0, 0}));
}

TEST(CxImageCreateFromArray, CopiesNothingForAStrideOfZero) {
    CxImage image;
    const auto page = counting(4);
    ASSERT_TRUE(image.CreateFromArray(page.data(), 4, 2, 8, 0, false));
    EXPECT_EQ(pixelBytes(image), (std::vector<int>{0, 0, 0, 0, 0, 0, 0, 0}));
}

TEST(CxImageCreateFromArray, CopiesPackedOneBitRows) {
    CxImage image;
    const std::vector<std::uint8_t> page = {0xA0, 0x80, 0x40, 0x00};
    ASSERT_TRUE(image.CreateFromArray(page.data(), 9, 2, 1, 2, false));
    EXPECT_EQ(indicesOf(image), (Rows{{1, 0, 1, 0, 0, 0, 0, 0, 1}, {0, 1, 0, 0, 0, 0, 0, 0, 0}}));
    EXPECT_EQ(pixelBytes(image), (std::vector<int>{0xA0, 0x80, 0, 0, 0x40, 0, 0, 0}));
}

TEST(CxImageCreateFromArray, CopiesPackedFourBitRows) {
    CxImage image;
    const std::vector<std::uint8_t> page = {0x12, 0x30, 0xAB, 0xC0};
    ASSERT_TRUE(image.CreateFromArray(page.data(), 3, 2, 4, 2, true));
    EXPECT_EQ(indicesOf(image), (Rows{{10, 11, 12}, {1, 2, 3}}));
}

TEST(CxImageCreateFromArray, CopiesTwentyFourBitRowsAndTheirPadding) {
    CxImage image;
    const auto page = counting(16);
    ASSERT_TRUE(image.CreateFromArray(page.data(), 2, 2, 24, 8, false));
    EXPECT_EQ(image.GetPalette(), nullptr);
    EXPECT_EQ(rowBytes(image, 0), (std::vector<int>{1, 2, 3, 4, 5, 6, 7, 8}));
    EXPECT_EQ(rowBytes(image, 1), (std::vector<int>{9, 10, 11, 12, 13, 14, 15, 16}));
}

TEST(CxImageCreateFromArray, CopiesOnlyTheStrideOfTwentyFourBitRows) {
    CxImage image;
    const auto page = counting(6);
    ASSERT_TRUE(image.CreateFromArray(page.data(), 1, 2, 24, 3, false));
    EXPECT_EQ(pixelBytes(image), (std::vector<int>{1, 2, 3, 0, 4, 5, 6, 0}));
}

TEST(CxImageCreateFromArray, DropsTheFourthByteOfThirtyTwoBitPixels) {
    CxImage image;
    const auto page = counting(18);
    // Two pixels of four bytes and one byte to spare per row.
    ASSERT_TRUE(image.CreateFromArray(page.data(), 2, 2, 32, 9, false));
    EXPECT_EQ(image.GetBpp(), 24U);
    EXPECT_EQ(rowBytes(image, 0), (std::vector<int>{1, 2, 3, 5, 6, 7, 0, 0}));
    EXPECT_EQ(rowBytes(image, 1), (std::vector<int>{10, 11, 12, 14, 15, 16, 0, 0}));
}

TEST(CxImageCreateFromArray, FlipsThirtyTwoBitRows) {
    CxImage image;
    const auto page = counting(8);
    ASSERT_TRUE(image.CreateFromArray(page.data(), 1, 2, 32, 4, true));
    EXPECT_EQ(pixelBytes(image), (std::vector<int>{5, 6, 7, 0, 1, 2, 3, 0}));
}

TEST(CxImageCreateFromArray, RefusesOtherDepthsWithoutTouchingTheImage) {
    CxImage image;
    makeImage(image, 8, {{1, 2}, {3, 4}});
    const auto page = counting(64);
    for (const std::uint32_t bpp : {0U, 2U, 3U, 5U, 7U, 9U, 16U, 23U, 25U, 31U, 33U, 64U}) {
        EXPECT_FALSE(image.CreateFromArray(page.data(), 2, 2, bpp, 8, false)) << bpp;
        EXPECT_TRUE(image.IsValid());
        EXPECT_EQ(indicesOf(image), (Rows{{1, 2}, {3, 4}}));
        EXPECT_STREQ(image.GetLastError(), "");
    }
}

TEST(CxImageCreateFromArray, RefusesANullArrayWithoutTouchingTheImage) {
    CxImage image;
    makeImage(image, 8, {{1, 2}});
    EXPECT_FALSE(image.CreateFromArray(nullptr, 2, 1, 8, 2, false));
    EXPECT_EQ(indicesOf(image), (Rows{{1, 2}}));
    EXPECT_STREQ(image.GetLastError(), "");
}

TEST(CxImageCreateFromArray, PassesOnTheFailureOfCreate) {
    CxImage image;
    makeImage(image, 8, {{1, 2}});
    const auto page = counting(4);
    EXPECT_FALSE(image.CreateFromArray(page.data(), 0, 1, 8, 2, false));
    EXPECT_STREQ(image.GetLastError(), kSizeText);
    EXPECT_FALSE(image.IsValid());
    EXPECT_FALSE(image.CreateFromArray(page.data(), 65536, 65536, 8, 2, false));
    EXPECT_STREQ(image.GetLastError(), kLimitText);
}

TEST(CxImageCreateFromArray, LeavesTheArrayToTheCaller) {
    CxImage image;
    const auto page = counting(8);
    ASSERT_TRUE(image.CreateFromArray(page.data(), 4, 2, 8, 4, false));
    image.SetPixelIndex(0, 0, 99);
    EXPECT_EQ(page, counting(8));
}

}  // namespace
