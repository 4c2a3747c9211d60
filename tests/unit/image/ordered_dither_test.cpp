#include "image/ordered_dither.h"

#include <gtest/gtest.h>

#include <vector>

#include "image/cx_image.h"
#include "tests/unit/image/image_pixels.h"

namespace {

using namespace kelp_test;

constexpr int kOrdered[4][4] = {{0, 8, 2, 10}, {12, 4, 14, 6}, {3, 11, 1, 9}, {15, 7, 13, 5}};
constexpr int kBayer[4][4] = {
    {0, 192, 48, 240}, {128, 64, 176, 112}, {32, 224, 16, 208}, {160, 96, 144, 80}};

Rows ditheredUniform(long method, int level, std::size_t width, std::size_t height) {
    CxImage image;
    makeImage(image, 8, Rows(height, std::vector<int>(width, level)));
    EXPECT_TRUE(image.Dither(method));
    return indicesOf(image);
}

TEST(ThresholdDither, IsBlackUpTo128AndWhiteFrom129) {
    for (int level = 0; level < 256; ++level) {
        EXPECT_EQ(ditheredUniform(0, level, 3, 2),
                  Rows(2, std::vector<int>(3, level <= 128 ? 0 : 1)))
            << level;
    }
}

TEST(OrderedDither, IsAllWhiteAt255AndAllBlackAtZero) {
    EXPECT_EQ(ditheredUniform(1, 255, 8, 8), Rows(8, std::vector<int>(8, 1)));
    EXPECT_EQ(ditheredUniform(1, 0, 8, 8), Rows(8, std::vector<int>(8, 0)));
}

TEST(OrderedDither, WhitensHalfTheMatrixAt128) {
    // d = 128 * 16 / 255 = 8: white where the matrix is below 8.
    EXPECT_EQ(ditheredUniform(1, 128, 4, 4),
              (Rows{{1, 0, 1, 0}, {0, 1, 0, 1}, {1, 0, 1, 0}, {0, 1, 0, 1}}));
}

TEST(OrderedDither, DividesBy255RoundingDown) {
    // 15 * 16 / 255 is 0 and 16 * 16 / 255 is 1: the first white dot of the matrix is its 0.
    EXPECT_EQ(ditheredUniform(1, 15, 4, 4), Rows(4, std::vector<int>(4, 0)));
    EXPECT_EQ(ditheredUniform(1, 16, 2, 1), (Rows{{1, 0}}));
    // 254 * 16 / 255 is 15: all white but the 15 of the matrix.
    EXPECT_EQ(ditheredUniform(1, 254, 4, 4),
              (Rows{{1, 1, 1, 1}, {1, 1, 1, 1}, {1, 1, 1, 1}, {0, 1, 1, 1}}));
}

TEST(OrderedDither, ComparesEveryLevelWithTheTiledMatrix) {
    for (int level = 0; level < 256; ++level) {
        const int d = level * 16 / 255;
        Rows expected(9, std::vector<int>(11));
        for (std::size_t y = 0; y < 9; ++y) {
            for (std::size_t x = 0; x < 11; ++x) {
                expected[y][x] = d == 16 || kOrdered[y % 4][x % 4] < d ? 1 : 0;
            }
        }
        EXPECT_EQ(ditheredUniform(1, level, 11, 9), expected) << level;
    }
}

TEST(BayerDither, ComputesThePublishedMatrix) {
    const auto matrix = bayerMatrix();
    for (std::size_t y = 0; y < 4; ++y) {
        for (std::size_t x = 0; x < 4; ++x) {
            EXPECT_EQ(matrix[x + 4 * y], kBayer[y][x]) << x << ", " << y;
        }
    }
}

TEST(BayerDither, WhitensSevenOfSixteenAtOneHundred) {
    // Below 100 lie 0, 48, 64, 32, 16, 96 and 80.
    EXPECT_EQ(ditheredUniform(7, 100, 4, 4),
              (Rows{{1, 0, 1, 0}, {0, 1, 0, 0}, {1, 0, 1, 0}, {0, 1, 0, 1}}));
}

TEST(BayerDither, IsBlackWhereLevelAndEntryAreEqual) {
    EXPECT_EQ(ditheredUniform(7, 192, 2, 1), (Rows{{1, 0}}));
    EXPECT_EQ(ditheredUniform(7, 193, 2, 1), (Rows{{1, 1}}));
    EXPECT_EQ(ditheredUniform(7, 0, 1, 1), (Rows{{0}}));
}

TEST(BayerDither, ComparesEveryLevelWithTheTiledMatrix) {
    for (int level = 0; level < 256; ++level) {
        Rows expected(9, std::vector<int>(11));
        for (std::size_t y = 0; y < 9; ++y) {
            for (std::size_t x = 0; x < 11; ++x) {
                expected[y][x] = level <= kBayer[y % 4][x % 4] ? 0 : 1;
            }
        }
        EXPECT_EQ(ditheredUniform(7, level, 11, 9), expected) << level;
    }
}

// --- Single rows ---

/// The packed bytes of a row; the byte behind them must stay as it was.
std::vector<int> packed(void (*halftone)(const std::uint8_t*, std::uint8_t*),
                        const std::vector<std::uint8_t>& grey) {
    std::vector<std::uint8_t> out((grey.size() + 7) / 8 + 1, 0xEE);
    halftone(grey.data(), out.data());
    EXPECT_EQ(out.back(), 0xEE);
    return {out.begin(), out.end() - 1};
}

TEST(HalftoneRow, PacksMostSignificantFirstAndClearsTheUnusedBits) {
    const auto threshold = [](const std::uint8_t* grey, std::uint8_t* out) {
        thresholdRow(grey, 11, out);
    };
    EXPECT_EQ(packed(threshold, {129, 0, 255, 128, 0, 0, 0, 200, 130, 1, 255}),
              (std::vector<int>{0xA1, 0xA0}));
    const auto ordered = [](const std::uint8_t* grey, std::uint8_t* out) {
        orderedRow(grey, 11, 0, out);
    };
    EXPECT_EQ(packed(ordered, std::vector<std::uint8_t>(11, 255)), (std::vector<int>{0xFF, 0xE0}));
    const auto bayer = [](const std::uint8_t* grey, std::uint8_t* out) {
        bayerRow(grey, 11, 0, out);
    };
    EXPECT_EQ(packed(bayer, std::vector<std::uint8_t>(11, 255)), (std::vector<int>{0xFF, 0xE0}));
}

TEST(HalftoneRow, WritesWholeBytesForAWidthOfWholeBytes) {
    std::vector<std::uint8_t> out(3, 0xEE);
    const std::vector<std::uint8_t> grey(16, 255);
    thresholdRow(grey.data(), 16, out.data());
    EXPECT_EQ(out, (std::vector<std::uint8_t>{0xFF, 0xFF, 0xEE}));
    thresholdRow(grey.data(), 1, out.data());
    EXPECT_EQ(out, (std::vector<std::uint8_t>{0x80, 0xFF, 0xEE}));
    thresholdRow(grey.data(), 0, out.data());
    EXPECT_EQ(out, (std::vector<std::uint8_t>{0x80, 0xFF, 0xEE}));
}

TEST(HalftoneRow, TakesTheMatrixRowOfItsNumber) {
    // d = 8 everywhere; row 1 of the matrix is below 8 at the odd columns, row 5 too.
    const std::vector<std::uint8_t> grey(8, 128);
    std::uint8_t out = 0;
    orderedRow(grey.data(), 8, 1, &out);
    EXPECT_EQ(out, 0x55);
    orderedRow(grey.data(), 8, 6, &out);
    EXPECT_EQ(out, 0xAA);
    // Level 128 against 128, 64, 176, 112 and against 32, 224, 16, 208.
    bayerRow(grey.data(), 8, 5, &out);
    EXPECT_EQ(out, 0x55);
    bayerRow(grey.data(), 8, 2, &out);
    EXPECT_EQ(out, 0xAA);
}

}  // namespace
