#include <gtest/gtest.h>

#include <array>

#include "image/cx_image.h"
#include "tests/unit/image/image_pixels.h"

namespace {

using namespace kelp_test;

std::array<std::uint8_t, 256> inverted() {
    std::array<std::uint8_t, 256> table{};
    for (std::size_t i = 0; i < table.size(); ++i) {
        table[i] = static_cast<std::uint8_t>(255 - i);
    }
    return table;
}

TEST(CxImageLut, ReplacesEveryIndexByItsEntry) {
    CxImage image;
    makeImage(image, 8, {{0, 1, 2}, {128, 254, 255}});
    EXPECT_TRUE(image.Lut(inverted().data()));
    EXPECT_EQ(indicesOf(image), (Rows{{255, 254, 253}, {127, 1, 0}}));
}

TEST(CxImageLut, LeavesPaletteAndPaddingAlone) {
    CxImage image;
    makeImage(image, 8, {{0, 1, 2}});
    image.GetBits()[3] = 9;
    EXPECT_TRUE(image.Lut(inverted().data()));
    EXPECT_EQ(rowBytes(image, 0), (std::vector<int>{255, 254, 253, 9}));
    EXPECT_EQ(text(image.GetPaletteColor(1)), "1,1,1,0");
}

TEST(CxImageLut, KeepsTheLowNibbleAtFourBits) {
    CxImage image;
    makeImage(image, 4, {{0, 1, 15}});
    std::array<std::uint8_t, 256> table{};
    table[0] = 0x1A;
    table[1] = 0x2B;
    table[15] = 0x3C;
    EXPECT_TRUE(image.Lut(table.data()));
    EXPECT_EQ(indicesOf(image), (Rows{{10, 11, 12}}));
}

TEST(CxImageLut, KeepsTheLowestBitAtOneBit) {
    CxImage image;
    makeImage(image, 1, {{0, 1, 0, 1, 0, 1, 0, 1, 0}});
    std::array<std::uint8_t, 256> table{};
    table[0] = 255;
    table[1] = 254;
    EXPECT_TRUE(image.Lut(table.data()));
    EXPECT_EQ(indicesOf(image), (Rows{{1, 0, 1, 0, 1, 0, 1, 0, 1}}));
    EXPECT_EQ(rowBytes(image, 0), (std::vector<int>{0xAA, 0x80, 0, 0}));
}

TEST(CxImageLut, IsTrueAndChangesNothingInTrueColour) {
    CxImage image;
    makeTrueColour(image, 2, 1, 1);
    EXPECT_TRUE(image.Lut(inverted().data()));
    EXPECT_EQ(pixelBytes(image), (std::vector<int>{1, 2, 3, 4, 5, 6, 0, 0}));
}

TEST(CxImageLut, IsFalseForAnEmptyImage) {
    CxImage image;
    EXPECT_FALSE(image.Lut(inverted().data()));
}

TEST(CxImageLut, IsFalseForANullTable) {
    CxImage image;
    makeImage(image, 8, {{1, 2}});
    EXPECT_FALSE(image.Lut(nullptr));
    EXPECT_EQ(indicesOf(image), (Rows{{1, 2}}));
}

}  // namespace
