#include <gtest/gtest.h>

#include <vector>

#include "image/cx_image.h"
#include "simd/forms.h"
#include "tests/unit/image/image_pixels.h"

namespace {

using namespace kelp_test;

constexpr long kDiffusions[] = {2, 3, 4, 5, 6, 8, -1};

/// The same in every form.
Rows dithered(long method, const Rows& grey) {
    Rows plain;
    for (const simd::Form& form : simd::forms()) {
        const simd::ForcedForm forced(form);
        CxImage image;
        makeImage(image, 8, grey);
        EXPECT_TRUE(image.Dither(method));
        if (form.target == 0) {
            plain = indicesOf(image);
        }
        EXPECT_EQ(indicesOf(image), plain) << form.name;
    }
    return plain;
}

TEST(ErrorDiffusionDither, OnlyThresholdsAOneByOneImage) {
    for (const long method : kDiffusions) {
        EXPECT_EQ(dithered(method, {{0}}), (Rows{{0}}));
        EXPECT_EQ(dithered(method, {{128}}), (Rows{{0}}));
        EXPECT_EQ(dithered(method, {{129}}), (Rows{{1}}));
        EXPECT_EQ(dithered(method, {{255}}), (Rows{{1}}));
    }
}

TEST(FloydSteinberg, DiffusesARowOf128) {
    // 128 black, error 128: 128 * 7/16 = 56. 184 white, error -71: -497/16 = -31. 97 black, error
    // 97: 679/16 = 42. 170 white, error -85: -595/16 = -37. 91 black.
    EXPECT_EQ(dithered(8, {{128, 128, 128, 128, 128}}), (Rows{{0, 1, 0, 1, 0}}));
}

TEST(FloydSteinberg, DiffusesToTheNextRow) {
    // (0, 0) 100 black, error 100: right 43, below 31, below right 6.
    // (1, 0) 60 + 43 = 103 black, error 103: below left 19, below 32.
    // (0, 1) 79 + 31 + 19 = 129 white, error -126: right -55.
    // (1, 1) 146 + 6 + 32 - 55 = 129 white.
    EXPECT_EQ(dithered(8, {{100, 60}, {79, 146}}), (Rows{{0, 0}, {1, 1}}));
    // One grey less at the end of either sum, and it is black.
    EXPECT_EQ(dithered(8, {{100, 60}, {79, 145}}), (Rows{{0, 0}, {1, 0}}));
    // 128 black, error 128: right 56, and 145 + 38 + 56 is white all the more.
    EXPECT_EQ(dithered(8, {{100, 60}, {78, 145}}), (Rows{{0, 0}, {0, 1}}));
}

TEST(FloydSteinberg, TruncatesANegativeTermTowardZero) {
    // 254 white, error -1: -7/16 is 0, so 129 stays white; rounded down it would be 128.
    EXPECT_EQ(dithered(8, {{254, 129}}), (Rows{{1, 1}}));
    // 253 white, error -2: -14/16 is 0 too. 252, error -3: -21/16 is -1.
    EXPECT_EQ(dithered(8, {{253, 129}}), (Rows{{1, 1}}));
    EXPECT_EQ(dithered(8, {{252, 129}}), (Rows{{1, 0}}));
}

TEST(FloydSteinberg, TruncatesEachTermByItself) {
    // Below goes 3 * 5/16 = 0, and what is lost there is not added elsewhere.
    EXPECT_EQ(dithered(8, {{3}, {128}}), (Rows{{0}, {0}}));
    // 4 * 5/16 = 1.
    EXPECT_EQ(dithered(8, {{4}, {128}}), (Rows{{0}, {1}}));
}

TEST(ErrorDiffusionDither, ClampsEachCorrectedValueAtOnce) {
    // (0, 0) 129 white, e -126: right -55, below -39, below right -7.
    // (1, 0) 184 - 55 = 129 white, e -126: right -55, below left -23, below -39, below right -7.
    // (2, 0) 183 - 55 = 128 black, e 128: below left 24, below 40.
    // (1, 1) 0 - 7 -> 0, - 39 -> 0, + 24 -> 24; without the clamps in between it would be -22.
    // (0, 1) 192 - 39 - 23 = 130 white, e -125: right -54. (1, 1) 24 - 54 -> 0 black, error 0.
    // (2, 1) 96 - 7 + 40 = 129 white.
    EXPECT_EQ(dithered(8, {{129, 184, 183}, {192, 0, 96}}), (Rows{{1, 1, 0}, {1, 0, 1}}));
    // With (0, 1) 0 and black the 24 survive: (1, 1) has error 24 and gives 24 * 7/16 = 10 on.
    // (2, 1) 86 - 7 + 40 + 10 = 129 white, 85 black.
    EXPECT_EQ(dithered(8, {{129, 184, 183}, {0, 0, 86}}), (Rows{{1, 1, 0}, {0, 0, 1}}));
    EXPECT_EQ(dithered(8, {{129, 184, 183}, {0, 0, 85}}), (Rows{{1, 1, 0}, {0, 0, 0}}));
}

TEST(ErrorDiffusionDither, ClampsAtWhite) {
    // 250 + 56 is held to 255: no error is left for the third pixel.
    EXPECT_EQ(dithered(8, {{128, 250, 129}}), (Rows{{0, 1, 1}}));
    // With the 51 too many it would take 51 * 7/16 = 22 along.
    EXPECT_EQ(dithered(8, {{128, 250, 128}}), (Rows{{0, 1, 0}}));
}

TEST(Burkes, DiffusesARow) {
    // 100 black: right 100 * 8/32 = 25, second 100 * 4/32 = 12.
    // 103 + 25 = 128 black: right 128 * 8/32 = 32, second 16.
    // 85 + 12 + 32 = 129 white, error -126: right -31.
    // 144 + 16 - 31 = 129 white.
    EXPECT_EQ(dithered(2, {{100, 103, 85, 144}}), (Rows{{0, 0, 1, 1}}));
    EXPECT_EQ(dithered(2, {{100, 103, 85, 143}}), (Rows{{0, 0, 1, 0}}));
}

TEST(StevensonArce, GivesTheNextPixelNothing) {
    EXPECT_EQ(dithered(6, {{128, 128}}), (Rows{{0, 0}}));
    EXPECT_EQ(dithered(6, {{129, 129}}), (Rows{{1, 1}}));
    // The one after it takes 128 * 32/200 = 20.
    EXPECT_EQ(dithered(6, {{128, 0, 109}}), (Rows{{0, 0, 1}}));
    EXPECT_EQ(dithered(6, {{128, 0, 108}}), (Rows{{0, 0, 0}}));
}

TEST(ErrorDiffusionDither, ScansEveryRowFromLeftToRight) {
    // From the left 100 is black and 90 + 43 white; from the right 90 is black and 100 + 39 white.
    EXPECT_EQ(dithered(8, {{100, 90}, {0, 0}}).at(0), (std::vector<int>{0, 1}));
    EXPECT_EQ(dithered(8, {{0, 0}, {100, 90}}).at(1), (std::vector<int>{0, 1}));
}

}  // namespace
