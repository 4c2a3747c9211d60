#include <gtest/gtest.h>

#include <array>
#include <limits>
#include <vector>

#include "image/cx_image.h"
#include "tests/unit/image/image_pixels.h"

namespace {

using namespace kelp_test;

/// What Light makes of each grey level.
std::vector<int> levels(int brightness, int contrast) {
    CxImage image;
    std::vector<int> ramp(256);
    for (int i = 0; i < 256; ++i) {
        ramp[static_cast<std::size_t>(i)] = i;
    }
    makeImage(image, 8, {ramp});
    EXPECT_TRUE(image.Light(brightness, contrast));
    return indicesOf(image)[0];
}

TEST(CxImageLight, LeavesEveryLevelForZeroAndZero) {
    const std::vector<int> table = levels(0, 0);
    for (int i = 0; i < 256; ++i) {
        EXPECT_EQ(table[static_cast<std::size_t>(i)], i);
    }
}

TEST(CxImageLight, DoublesTheSlopeForContrastOneHundred) {
    const std::vector<int> table = levels(0, 100);
    // (0 - 128) * 2 + 128.5 is -127.5; (200 - 128) * 2 + 128.5 is 272.5.
    EXPECT_EQ(table[0], 0);
    EXPECT_EQ(table[63], 0);
    EXPECT_EQ(table[64], 0);
    EXPECT_EQ(table[65], 2);
    EXPECT_EQ(table[129], 130);
    EXPECT_EQ(table[191], 254);
    EXPECT_EQ(table[192], 255);
    EXPECT_EQ(table[200], 255);
}

TEST(CxImageLight, AddsTheBrightness) {
    const std::vector<int> brighter = levels(50, 0);
    EXPECT_EQ(brighter[0], 50);
    EXPECT_EQ(brighter[10], 60);
    EXPECT_EQ(brighter[204], 254);
    EXPECT_EQ(brighter[205], 255);
    EXPECT_EQ(brighter[220], 255);
    const std::vector<int> darker = levels(-50, 0);
    EXPECT_EQ(darker[0], 0);
    EXPECT_EQ(darker[50], 0);
    EXPECT_EQ(darker[51], 1);
    EXPECT_EQ(darker[255], 205);
}

TEST(CxImageLight, FlattensEverythingForContrastMinusOneHundred) {
    EXPECT_EQ(levels(0, -100), std::vector<int>(256, 128));
    EXPECT_EQ(levels(20, -100), std::vector<int>(256, 148));
}

TEST(CxImageLight, PivotsOnGrey128WhateverTheContrast) {
    for (int contrast = -100; contrast <= 100; ++contrast) {
        EXPECT_EQ(levels(0, contrast)[128], 128);
    }
}

TEST(CxImageLight, RoundsByTruncatingAfterAddingAHalf) {
    const std::vector<int> half = levels(0, -50);
    // (129 - 128) / 2 + 128.5 is exactly 129; (127 - 128) / 2 + 128.5 is exactly 128.
    EXPECT_EQ(half[129], 129);
    EXPECT_EQ(half[127], 128);
    EXPECT_EQ(half[126], 127);
    const std::vector<int> dark = levels(-128, 0);
    // 0 - 128 + 0 + 0.5 is -127.5 and clamps; 127 - 128 + 0.5 is -0.5, which truncates to 0.
    EXPECT_EQ(dark[0], 0);
    EXPECT_EQ(dark[127], 0);
    EXPECT_EQ(dark[128], 0);
    EXPECT_EQ(dark[129], 1);
}

TEST(CxImageLight, WorksInSinglePrecision) {
    // The single nearest to 0.1 is a little larger than 0.1. Only a product in single precision is
    // exactly (3 - 128) * 0.1 = -12.5 and gives 116; the exact one lies below and gives 115.
    EXPECT_EQ(levels(0, -90)[3], 116);
    EXPECT_EQ(levels(0, -90)[123], 128);
    // (18 - 128) * 0.05 = -5.5 likewise.
    EXPECT_EQ(levels(0, -95)[18], 123);
}

TEST(CxImageLight, ReversesTheTonesBelowContrastMinusOneHundred) {
    // A slope of -1: i goes to 128 - i + 128 + 0.5.
    const std::vector<int> table = levels(0, -200);
    EXPECT_EQ(table[0], 255);
    EXPECT_EQ(table[1], 255);
    EXPECT_EQ(table[2], 254);
    EXPECT_EQ(table[255], 1);
}

TEST(CxImageLight, SaturatesBeyondTheRangeOfAnInt) {
    // A slope of 2e7 takes both ends past 2^31.
    const std::vector<int> steep = levels(0, 2'000'000'000);
    EXPECT_EQ(steep[0], 0);
    EXPECT_EQ(steep[127], 0);
    EXPECT_EQ(steep[128], 128);
    EXPECT_EQ(steep[129], 255);
    EXPECT_EQ(steep[255], 255);
    EXPECT_EQ(levels(2'000'000'000, 0), std::vector<int>(256, 255));
    EXPECT_EQ(levels(-2'000'000'000, 0), std::vector<int>(256, 0));
}

TEST(CxImageLight, ChangesLowDepthsByTheirIndices) {
    // Index 1 is grey level 1 here, not white: with brightness 1 every index goes up by one, and
    // the depth keeps its low bits.
    CxImage image;
    makeImage(image, 4, {{0, 1, 14, 15}});
    EXPECT_TRUE(image.Light(1, 0));
    EXPECT_EQ(indicesOf(image), (Rows{{1, 2, 15, 0}}));
    makeImage(image, 1, {{0, 1, 1}});
    EXPECT_TRUE(image.Light(1, 0));
    EXPECT_EQ(indicesOf(image), (Rows{{1, 0, 0}}));
}

TEST(CxImageLight, IsTrueAndChangesNothingInTrueColour) {
    CxImage image;
    makeTrueColour(image, 2, 1, 1);
    EXPECT_TRUE(image.Light(50, 50));
    EXPECT_EQ(pixelBytes(image), (std::vector<int>{1, 2, 3, 4, 5, 6, 0, 0}));
}

TEST(CxImageLight, IsFalseForAnEmptyImage) {
    CxImage image;
    EXPECT_FALSE(image.Light(0, 0));
}

TEST(CxImageLight, LeavesPaletteAndPaddingAlone) {
    CxImage image;
    makeImage(image, 8, {{1, 2, 3}});
    image.GetBits()[3] = 40;
    EXPECT_TRUE(image.Light(10, 0));
    EXPECT_EQ(rowBytes(image, 0), (std::vector<int>{11, 12, 13, 40}));
    EXPECT_EQ(text(image.GetPaletteColor(1)), "1,1,1,0");
}

}  // namespace
