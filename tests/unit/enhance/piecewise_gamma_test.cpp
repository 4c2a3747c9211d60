#include "enhance/piecewise_gamma.h"

#include <gtest/gtest.h>

#include <cmath>
#include <utility>
#include <vector>

#include "enhance/numeric.h"
#include "tests/unit/enhance/grey_image.h"

namespace {

using namespace kelp_test;

TEST(PiecewiseGamma, MapsTheEndsAndTheKneeOntoThemselves) {
    const auto lut = piecewiseGammaTable(64, 0.85F, 0.7F);
    EXPECT_EQ(lut[0], 0);
    EXPECT_EQ(lut[64], 64);
    EXPECT_EQ(lut[255], 255);
    for (int knee = 1; knee < 255; ++knee) {
        for (const auto& [low, high] : {std::pair{0.5F, 1.5F}, std::pair{2.0F, 0.3F}}) {
            const auto table = piecewiseGammaTable(knee, low, high);
            EXPECT_EQ(table[0], 0) << knee;
            EXPECT_EQ(table[static_cast<std::size_t>(knee)], knee);
            EXPECT_EQ(table[255], 255) << knee;
        }
    }
}

TEST(PiecewiseGamma, GivesTheKneeToTheUpperPiece) {
    // Where the upper exponent is 0 its piece is 0 to the 0, which is 1: 191 + 64. Where it is
    // below 0, 0 to it is -1: -191 + 64 = -127, whose low byte is 129. The lower piece would be 64.
    EXPECT_EQ(piecewiseGammaTable(64, 1.0F, 0.0F)[64], 255);
    EXPECT_EQ(piecewiseGammaTable(64, 1.0F, -1.0F)[64], 129);
}

TEST(PiecewiseGamma, FollowsEitherPowerLaw) {
    struct Curve {
        int knee;
        float low, high;
    };
    for (const Curve c : {Curve{64, 0.85F, 0.7F}, Curve{128, 0.5F, 1.5F}, Curve{200, 0.5F, 1.5F},
                          Curve{1, 0.5F, 1.5F}, Curve{254, 2.0F, 0.7F}}) {
        const auto table = piecewiseGammaTable(c.knee, c.low, c.high);
        for (int i = 0; i < 256; ++i) {
            // The true curve; the approximations may fall short of a whole number.
            const double knee = c.knee;
            const double span = 255 - c.knee;
            const double level = i < c.knee ? std::pow(i / knee, c.low) * knee
                                            : std::pow((i - knee) / span, c.high) * span + knee;
            EXPECT_LE(table[static_cast<std::size_t>(i)], level + 1e-3) << c.knee << ", " << i;
            EXPECT_GT(table[static_cast<std::size_t>(i)], level - 1.001) << c.knee << ", " << i;
        }
    }
}

TEST(PiecewiseGamma, LiftsBelowAnExponentOfOneAndLowersAbove) {
    // 16/64 to the 0.85 is 0.3078: 19.7 of 64. (160 - 64)/191 to the 0.7 is 0.618: 118.02 + 64.
    const auto lifted = piecewiseGammaTable(64, 0.85F, 0.7F);
    EXPECT_EQ(lifted[16], 19);
    EXPECT_EQ(lifted[160], 182);
    // (200 - 128)/127 to the 1.5 is 0.4269: 54.2 + 128. 50/128 to the 0.5 is 0.625: 80, or 79
    // where it falls short.
    const auto bent = piecewiseGammaTable(128, 0.5F, 1.5F);
    EXPECT_EQ(bent[200], 182);
    EXPECT_GE(bent[50], 79);
}

TEST(PiecewiseGamma, TruncatesWhatFallsShortOfAWholeNumber) {
    // An exponent of 1 changes a level only by the approximations; whatever lies below a whole
    // number goes down to the one before.
    const auto table = piecewiseGammaTable(64, 1.0F, 1.0F);
    int below = 0;
    for (int i = 1; i < 255; ++i) {
        const float t = 64.0F;
        const auto level = static_cast<float>(i);
        const float exact =
            i < 64 ? my_pow(level / t, 1.0F) * t : my_pow((level - t) / 191.0F, 1.0F) * 191.0F + t;
        EXPECT_EQ(table[static_cast<std::size_t>(i)], static_cast<int>(std::floor(exact))) << i;
        below += exact < level ? 1 : 0;
    }
    EXPECT_GT(below, 10);
}

TEST(PiecewiseGamma, LeavesTheLowerPieceEmptyForAKneeOfZero) {
    const auto table = piecewiseGammaTable(0, 99.0F, 1.5F);
    EXPECT_EQ(table[0], 0);
    EXPECT_EQ(table[255], 255);
    // (64/255) to the 1.5 is 0.12574, times 255 is 32.06.
    EXPECT_EQ(table[64], 32);
}

TEST(PiecewiseGamma, StartsTheUpperPieceAtMinusOneForAKneeOfMinusOne) {
    const auto table = piecewiseGammaTable(-1, 99.0F, 1.5F);
    // (i + 1)/256 to the 1.5, times 256, less 1: 0.0625 - 1 truncates to 0 at 0.
    EXPECT_EQ(table[0], 0);
    // (100/256) to the 1.5 is 0.24414, times 256 is 62.5, less 1.
    EXPECT_EQ(table[99], 61);
    EXPECT_EQ(table[255], 255);
}

TEST(PiecewiseGamma, KeepsTheLowEightBitsOfANegativeLevel) {
    // From a knee of -100: (100/355) to the 1.5 is 0.1495, times 355 is 53.07, less 100 is
    // -46.9, truncated -46, which is 210 of 256.
    EXPECT_EQ(piecewiseGammaTable(-100, 1.0F, 1.5F)[0], 210);
    // 0 to a negative power is -1: -64 is 192.
    EXPECT_EQ(piecewiseGammaTable(64, -1.0F, 1.0F)[0], 192);
}

TEST(PiecewiseGamma, KeepsTheLowEightBitsOfALevelPastWhite) {
    // (60/64) to the -20 is 3.636: 232.7 of 64.
    const auto table = piecewiseGammaTable(64, -20.0F, 1.0F);
    EXPECT_EQ(table[60], 232);
    // (59/64) to the -20 is 5.087: 325.56, less 256.
    EXPECT_EQ(table[59], 69);
}

TEST(PiecewiseGamma, SaturatesBeforeItTakesTheLowEightBits) {
    // (1/64) to the -1e6 is an infinity; 2^31 - 1 ends in 255.
    EXPECT_EQ(piecewiseGammaTable(64, -1e6F, 1.0F)[1], 255);
}

TEST(PiecewiseGamma, KeepsWhiteForAKneeOf255) {
    const auto table = piecewiseGammaTable(255, 0.5F, 1.5F);
    EXPECT_EQ(table[255], 255);
    EXPECT_EQ(table[0], 0);
    // Everything else is the lower piece: (100/255) to the 0.5 is 0.62622: 159.69.
    EXPECT_EQ(table[100], 159);
    EXPECT_EQ(piecewiseGammaTable(255, 0.5F, 0.0F)[255], 255);
    EXPECT_EQ(piecewiseGammaTable(255, 0.5F, -1.0F)[255], 255);
}

TEST(PiecewiseGamma, IsAllLowerPieceForAKneePast255) {
    // (255/300) to the 0.5 is 0.92195: 276.6, less 256.
    EXPECT_EQ(piecewiseGammaTable(300, 0.5F, 1.5F)[255], 20);
    EXPECT_EQ(piecewiseGammaTable(300, 0.5F, 1.5F)[0], 0);
}

TEST(PiecewiseGamma, ReplacesEveryPixelByItsEntry) {
    const auto table = piecewiseGammaTable(64, 0.85F, 0.7F);
    Rows rows(16, std::vector<int>(16));
    Rows expected = rows;
    for (std::size_t y = 0; y < 16; ++y) {
        for (std::size_t x = 0; x < 16; ++x) {
            rows[y][x] = static_cast<int>(16 * y + x);
            expected[y][x] = table[16 * y + x];
        }
    }
    TQImage image = grey(rows);
    enh_piecewise_gamma(image, 64, 0.85F, 0.7F);
    EXPECT_EQ(rowsOf(image), expected);
}

TEST(PiecewiseGamma, ChangesOnlyWidthTimesHeightBytes) {
    TQImage image = grey({{100, 100, 100, 100}});
    image.width = 3;
    enh_piecewise_gamma(image, 64, 0.85F, 0.7F);
    image.width = 4;
    // (100 - 64)/191 to the 0.7 is 0.3108: 59.4 + 64.
    EXPECT_EQ(rowsOf(image), (Rows{{123, 123, 123, 100}}));
}

TEST(PiecewiseGamma, LeavesAnImageWithoutPixels) {
    TQImage image(0, 5, TQ_IMG_GRAY);
    enh_piecewise_gamma(image, 64, 0.85F, 0.7F);
    EXPECT_EQ(image.width, 0);
    EXPECT_EQ(image.height, 5);
}

TEST(PiecewiseGamma, LeavesAnImageOfNegativeWidth) {
    TQImage image = grey({{100, 100}});
    image.width = -2;
    enh_piecewise_gamma(image, 64, 0.85F, 0.7F);
    image.width = 2;
    EXPECT_EQ(rowsOf(image), (Rows{{100, 100}}));
}

}  // namespace
