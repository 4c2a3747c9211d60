#include "tests/reference/dither.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "tests/reference/check/uniform_image.h"

namespace reference {

namespace {

std::vector<unsigned char> row(long method, std::vector<unsigned char> px) {
    const int width = static_cast<int>(px.size());
    return dither(GrayImage{width, 1, px}, method).px;
}

long whites(const GrayImage& image) {
    return std::count(image.px.begin(), image.px.end(), 1);
}

// Shares of an error of -126, truncated, around the pixel at column 4 of row 0;
// columns 0 .. 8, rows 0 .. 3.
using Shares = int[4][9];

// One pixel of 129 in a black image turns white with the error 129 - 255 = -126;
// black pixels stay black under a negative error, so each other pixel can be
// probed alone: it is white from 129 plus the share on.
void expectShares(long method, const Shares& shares) {
    for (int y = 0; y < 4; y++) {
        for (int x = 0; x < 9; x++) {
            if (y == 0 && x <= 4)
                continue;
            GrayImage image = uniform(9, 4, 0);
            image.set(4, 0, 129);
            image.set(x, y, 129 + shares[y][x]);
            EXPECT_EQ(dither(image, method).at(x, y), 1) << method << ": " << x << ", " << y;
            image.set(x, y, 128 + shares[y][x]);
            EXPECT_EQ(dither(image, method).at(x, y), 0) << method << ": " << x << ", " << y;
        }
    }
}

}  // namespace

TEST(ReferenceDither, ThresholdTurnsBlackUpTo128) {
    EXPECT_EQ(whites(dither(uniform(5, 3, 128), 0)), 0);
    EXPECT_EQ(whites(dither(uniform(5, 3, 129), 0)), 15);
}

TEST(ReferenceDither, OrderedComparesTheMatrixWithSixteenths) {
    EXPECT_EQ(whites(dither(uniform(4, 4, 255), 1)), 16);
    EXPECT_EQ(whites(dither(uniform(4, 4, 254), 1)), 15);  // 254 * 16 / 255 = 15
    EXPECT_EQ(whites(dither(uniform(4, 4, 0), 1)), 0);
    EXPECT_EQ(whites(dither(uniform(4, 4, 15), 1)), 0);  // 240 / 255 = 0
    EXPECT_EQ(whites(dither(uniform(8, 8, 16), 1)), 4);  // only where the matrix is 0
    EXPECT_EQ(dither(uniform(8, 8, 16), 1).at(4, 4), 1);
    // 128: 8 of 16, where the matrix is below 8.
    EXPECT_EQ(dither(uniform(4, 4, 128), 1).px,
              (std::vector<unsigned char>{1, 0, 1, 0, 0, 1, 0, 1, 1, 0, 1, 0, 0, 1, 0, 1}));
}

TEST(ReferenceDither, BayerComparesWithItsComputedTable) {
    // White where the entry is below 100: 0, 48; 64; 32, 16; 96, 80.
    EXPECT_EQ(dither(uniform(4, 4, 100), 7).px,
              (std::vector<unsigned char>{1, 0, 1, 0, 0, 1, 0, 0, 1, 0, 1, 0, 0, 1, 0, 1}));
    EXPECT_EQ(whites(dither(uniform(4, 4, 0), 7)), 0);
    EXPECT_EQ(whites(dither(uniform(4, 4, 1), 7)), 1);
    EXPECT_EQ(whites(dither(uniform(4, 4, 240), 7)), 15);
    EXPECT_EQ(whites(dither(uniform(4, 4, 241), 7)), 16);
}

TEST(ReferenceDither, FloydSteinbergOfOnePixelIsTheThreshold) {
    EXPECT_EQ(row(8, {128})[0], 0);
    EXPECT_EQ(row(8, {129})[0], 1);
}

TEST(ReferenceDither, FloydSteinbergCarriesTheErrorAlongTheRow) {
    // 128 black, e 128, share 56: 156 white, e -99, share -43 (truncated): 171 is 128.
    EXPECT_EQ(row(8, {128, 100, 171}), (std::vector<unsigned char>{0, 1, 0}));
    EXPECT_EQ(row(8, {128, 100, 172}), (std::vector<unsigned char>{0, 1, 1}));
}

TEST(ReferenceDither, SharesAreTruncatedTowardZero) {
    // 254 white, e -1, share -7/16 = 0: 129 stays white.
    EXPECT_EQ(row(8, {254, 129}), (std::vector<unsigned char>{1, 1}));
}

TEST(ReferenceDither, CorrectedValuesAreClampedTo255) {
    // 128 pushes 250 past 255: held at 255 its error is 0 and 129 stays white; an
    // unclamped 306 would leave e 51 and push 107 over.
    EXPECT_EQ(row(8, {128, 250, 129}), (std::vector<unsigned char>{0, 1, 1}));
    EXPECT_EQ(row(8, {128, 250, 107}), (std::vector<unsigned char>{0, 1, 0}));
}

TEST(ReferenceDither, ErrorPastAnEdgeIsLost) {
    // Row 0: black with e 128 each; nothing of it may enter row 1 from beyond the
    // right edge. (0,1) receives 128 * 5 / 16 = 40 from above only.
    GrayImage image{1, 2, {128, 88}};
    EXPECT_EQ(dither(image, 8).px, (std::vector<unsigned char>{0, 0}));
    image.px[1] = 89;
    EXPECT_EQ(dither(image, 8).px, (std::vector<unsigned char>{0, 1}));
}

TEST(ReferenceDither, NegativeAndUnknownMethodsAreFloydSteinberg) {
    GrayImage image{7, 5, {}};
    for (int k = 0; k < 35; k++)
        image.px.push_back(static_cast<unsigned char>(k * 37 % 256));
    const std::vector<unsigned char> expected = dither(image, 8).px;
    EXPECT_EQ(dither(image, -1).px, expected);
    EXPECT_EQ(dither(image, 9).px, expected);
    EXPECT_EQ(dither(image, 1000000).px, expected);
}

TEST(ReferenceDither, EveryKernelGivesEachNeighbourItsShareAndNobodyElse) {
    // 126 w / 16: 7 -> 55, 3 -> 23, 5 -> 39, 1 -> 7
    expectShares(8, {{0, 0, 0, 0, 0, 55, 0, 0, 0},
                     {0, 0, 0, 23, 39, 7, 0, 0, 0},
                     {0, 0, 0, 0, 0, 0, 0, 0, 0},
                     {0, 0, 0, 0, 0, 0, 0, 0, 0}});
    // 126 w / 32: 8 -> 31, 4 -> 15, 2 -> 7
    expectShares(2, {{0, 0, 0, 0, 0, 31, 15, 0, 0},
                     {0, 0, 7, 15, 31, 15, 7, 0, 0},
                     {0, 0, 0, 0, 0, 0, 0, 0, 0},
                     {0, 0, 0, 0, 0, 0, 0, 0, 0}});
    // 126 w / 42 = 3 w
    expectShares(3, {{0, 0, 0, 0, 0, 24, 12, 0, 0},
                     {0, 0, 6, 12, 24, 12, 6, 0, 0},
                     {0, 0, 3, 6, 12, 6, 3, 0, 0},
                     {0, 0, 0, 0, 0, 0, 0, 0, 0}});
    // 126 w / 48: 7 -> 18, 5 -> 13, 3 -> 7, 1 -> 2
    expectShares(4, {{0, 0, 0, 0, 0, 18, 13, 0, 0},
                     {0, 0, 7, 13, 18, 13, 7, 0, 0},
                     {0, 0, 2, 7, 13, 7, 2, 0, 0},
                     {0, 0, 0, 0, 0, 0, 0, 0, 0}});
    // 126 w / 32: 5 -> 19, 4 -> 15, 3 -> 11, 2 -> 7
    expectShares(5, {{0, 0, 0, 0, 0, 19, 11, 0, 0},
                     {0, 0, 7, 15, 19, 15, 7, 0, 0},
                     {0, 0, 0, 7, 11, 7, 0, 0, 0},
                     {0, 0, 0, 0, 0, 0, 0, 0, 0}});
    // 126 w / 200: 32 -> 20, 30 -> 18, 26 -> 16, 16 -> 10, 12 -> 7, 5 -> 3
    expectShares(6, {{0, 0, 0, 0, 0, 0, 20, 0, 0},
                     {0, 7, 0, 16, 0, 18, 0, 10, 0},
                     {0, 0, 7, 0, 16, 0, 7, 0, 0},
                     {0, 3, 0, 7, 0, 7, 0, 3, 0}});
}

}  // namespace reference
