#include "enhance/error_diffusion.h"

#include <gtest/gtest.h>

#include <limits>

#include "tests/unit/enhance/grey_image.h"

namespace {

using namespace kelp_test;

Rows diffused(const Rows& rows, int threshold) {
    return rowsOf(edf_cus(grey(rows), threshold));
}

TEST(IsWithinBounds, IncludesZeroAndExcludesTheSize) {
    EXPECT_TRUE(isWithinBounds(0, 0, 3, 2));
    EXPECT_TRUE(isWithinBounds(2, 1, 3, 2));
    EXPECT_FALSE(isWithinBounds(3, 0, 3, 2));
    EXPECT_FALSE(isWithinBounds(0, 2, 3, 2));
    EXPECT_FALSE(isWithinBounds(-1, 0, 3, 2));
    EXPECT_FALSE(isWithinBounds(0, -1, 3, 2));
    EXPECT_FALSE(isWithinBounds(0, 0, 0, 0));
    EXPECT_FALSE(isWithinBounds(2, 0, 2, 3));
    EXPECT_TRUE(isWithinBounds(1, 2, 2, 3));
}

TEST(StencilDiffusion, IsWhiteOnlyStrictlyAboveTheThreshold) {
    EXPECT_EQ(diffused({{128}}, 128), (Rows{{0}}));
    EXPECT_EQ(diffused({{129}}, 128), (Rows{{255}}));
    EXPECT_EQ(diffused({{0}}, 0), (Rows{{0}}));
    EXPECT_EQ(diffused({{1}}, 0), (Rows{{255}}));
    EXPECT_EQ(diffused({{255}}, 255), (Rows{{0}}));
    EXPECT_EQ(diffused({{255}}, 254), (Rows{{255}}));
}

TEST(StencilDiffusion, PushesTheSecondPixelOfGrey128Over) {
    // 128 black, error 128: next 64.74, second next -6.77. 192.74 white, error -62.26: next
    // -31.49. 128 - 6.77 - 31.49 = 89.74 black.
    EXPECT_EQ(diffused({{128, 128, 128}}, 128), (Rows{{0, 255, 0}}));
    EXPECT_EQ(rowsOf(edf_cus(uniform(2, 2, 128), 128))[0], (std::vector<int>{0, 255}));
}

TEST(StencilDiffusion, WhitensZeroAtAThresholdOfMinusOneUntilErrorArrives) {
    EXPECT_EQ(diffused({{0}}, -1), (Rows{{255}}));
    // 0 is above -1, error -255: the next has -128.98 and is black with that error, of which
    // -65.23 go on; the third has 13.50 - 65.23 and the fourth 6.83 - 26.17 are black too.
    EXPECT_EQ(diffused({{0, 0, 0, 0}}, -1), (Rows{{255, 0, 0, 0}}));
    // White never gets an error.
    EXPECT_EQ(rowsOf(edf_cus(uniform(5, 1, 255), -1)), (Rows{{255, 255, 255, 255, 255}}));
}

TEST(StencilDiffusion, TakesAnyThreshold) {
    // Above 300 only what has gathered error: 255 + 128.98.
    EXPECT_EQ(diffused({{255, 255}}, 300), (Rows{{0, 255}}));
    // -128.98 is above -500, and so is -128.98 - 255 times 0.505786 and the rest.
    EXPECT_EQ(diffused({{0, 0}}, -500), (Rows{{255, 255}}));
    EXPECT_EQ(diffused({{255, 255, 255}}, std::numeric_limits<int>::max()), (Rows{{0, 0, 0}}));
    EXPECT_EQ(diffused({{0, 0, 0}}, std::numeric_limits<int>::min()), (Rows{{255, 255, 255}}));
}

// One black pixel of 255 (the threshold is 255 too) and the level at which the probed neighbour
// just exceeds the threshold. Pixels of 0 in between pass on what they get.

TEST(StencilDiffusion, GivesTheNextPixelAHalf) {
    // 255 * 0.505786 = 128.98.
    EXPECT_EQ(diffused({{255, 127}}, 255), (Rows{{0, 255}}));
    EXPECT_EQ(diffused({{255, 126}}, 255), (Rows{{0, 0}}));
}

TEST(StencilDiffusion, TakesFromTheSecondNextPixel) {
    // 255 * -0.052926 = -13.496, and by the 128.975 of the next 65.234.
    EXPECT_EQ(diffused({{255, 0, 204}}, 255), (Rows{{0, 0, 255}}));
    EXPECT_EQ(diffused({{255, 0, 203}}, 255), (Rows{{0, 0, 0}}));
}

TEST(StencilDiffusion, GivesThePixelBelowAQuarter) {
    // 255 * 0.243191 = 62.014.
    EXPECT_EQ(diffused({{255}, {193}}, 255), (Rows{{0}, {255}}));
    EXPECT_EQ(diffused({{255}, {192}}, 255), (Rows{{0}, {0}}));
}

TEST(StencilDiffusion, GivesThePixelBelowLeftAnEighth) {
    // 255 * 0.128835 = 32.853.
    EXPECT_EQ(diffused({{0, 255}, {223, 0}}, 255)[1][0], 255);
    EXPECT_EQ(diffused({{0, 255}, {222, 0}}, 255)[1][0], 0);
}

TEST(StencilDiffusion, GivesTheSecondPixelBelowLeftMoreThanTheFirst) {
    // 255 * 0.226194 = 57.679.
    EXPECT_EQ(diffused({{0, 0, 255}, {198, 0, 0}}, 255)[1][0], 255);
    EXPECT_EQ(diffused({{0, 0, 255}, {197, 0, 0}}, 255)[1][0], 0);
}

TEST(StencilDiffusion, TakesFromThePixelBelowRight) {
    // (1, 0) gets 128.975 and gives (0, 1) 16.616 and (1, 1) 31.366. (0, 1) has 62.014 + 16.616 =
    // 78.630 and gives (1, 1) 39.770. With 255 * -0.111078 = -28.325 that makes 42.811.
    EXPECT_EQ(diffused({{255, 0}, {0, 213}}, 255), (Rows{{0, 0}, {0, 255}}));
    EXPECT_EQ(diffused({{255, 0}, {0, 212}}, 255), (Rows{{0, 0}, {0, 0}}));
}

TEST(StencilDiffusion, DropsTheErrorPastAnEdge) {
    // The right pixel's error of 255 has no pixel to its right; below it goes 62.014 straight and
    // 32.853 to the left, where with the left pixel's 0 nothing else arrives but in the row.
    EXPECT_EQ(diffused({{0, 255}, {222, 0}}, 255), (Rows{{0, 0}, {0, 0}}));
    // Nothing wraps to the start of the next row: 0.505786 of 255 would whiten 200 there.
    EXPECT_EQ(diffused({{0, 0, 0, 255}, {200, 0, 0, 0}}, 255)[1][0], 0);
}

TEST(StencilDiffusion, ReachesOnlyTheNextRow) {
    // 255 above and 0 between: the middle passes 62.014 * 0.243191 = 15.081 on.
    EXPECT_EQ(diffused({{255}, {0}, {240}}, 255), (Rows{{0}, {0}, {255}}));
    EXPECT_EQ(diffused({{255}, {0}, {239}}, 255), (Rows{{0}, {0}, {0}}));
}

// The white pixel of 200 in the middle of three by three, at threshold 128, and the level at which
// its right neighbour just exceeds it.

TEST(StencilDiffusion, CountsAWhitePixelBesideTwoBlackOnesAsLessThanWhite) {
    // e = 200 - 255 * (1 - 0.2854) = 17.777, of which 8.991 go right.
    EXPECT_EQ(diffused({{0, 0, 0}, {0, 200, 120}, {0, 0, 0}}, 128)[1],
              (std::vector<int>{0, 255, 255}));
    EXPECT_EQ(diffused({{0, 0, 0}, {0, 200, 119}, {0, 0, 0}}, 128)[1],
              (std::vector<int>{0, 255, 0}));
}

TEST(StencilDiffusion, CountsOneBlackNeighbourOnce) {
    // e = 200 - 255 * (1 - 0.1427) = -18.612, of which -9.414 go right: black only on the left,
    // then only above. The white neighbour of 255 has no error.
    EXPECT_EQ(diffused({{0, 255, 0}, {0, 200, 138}, {0, 0, 0}}, 128)[1],
              (std::vector<int>{0, 255, 255}));
    EXPECT_EQ(diffused({{0, 255, 0}, {0, 200, 137}, {0, 0, 0}}, 128)[1],
              (std::vector<int>{0, 255, 0}));
    EXPECT_EQ(diffused({{0, 0, 0}, {255, 200, 138}, {0, 0, 0}}, 128)[1],
              (std::vector<int>{255, 255, 255}));
    EXPECT_EQ(diffused({{0, 0, 0}, {255, 200, 137}, {0, 0, 0}}, 128)[1],
              (std::vector<int>{255, 255, 0}));
}

TEST(StencilDiffusion, CountsAWhitePixelBesideWhiteOnesAsWhite) {
    // e = -55, of which -27.818 go right.
    EXPECT_EQ(diffused({{0, 255, 0}, {255, 200, 156}, {0, 0, 0}}, 128)[1],
              (std::vector<int>{255, 255, 255}));
    EXPECT_EQ(diffused({{0, 255, 0}, {255, 200, 155}, {0, 0, 0}}, 128)[1],
              (std::vector<int>{255, 255, 0}));
}

TEST(StencilDiffusion, NeverCorrectsTheLastRow) {
    // Black on the left and above, and yet e = -55.
    EXPECT_EQ(diffused({{0, 0, 0}, {0, 200, 156}}, 128)[1], (std::vector<int>{0, 255, 255}));
    EXPECT_EQ(diffused({{0, 0, 0}, {0, 200, 155}}, 128)[1], (std::vector<int>{0, 255, 0}));
}

TEST(StencilDiffusion, NeverCorrectsTheLastColumn) {
    // (1, 1) with e = -55 gives (1, 2) -13.376 and (0, 2) -7.086, which gives (1, 2) -3.584.
    EXPECT_EQ(diffused({{0, 0}, {0, 200}, {0, 145}}, 128)[2][1], 255);
    EXPECT_EQ(diffused({{0, 0}, {0, 200}, {0, 144}}, 128)[2][1], 0);
}

TEST(StencilDiffusion, NeverCorrectsTheFirstColumn) {
    // (0, 1) with e = -55 gives its right neighbour -27.818; black is above it.
    EXPECT_EQ(diffused({{0, 0, 0}, {200, 156, 0}, {0, 0, 0}}, 128)[1][1], 255);
    EXPECT_EQ(diffused({{0, 0, 0}, {200, 155, 0}, {0, 0, 0}}, 128)[1][1], 0);
}

TEST(StencilDiffusion, NeverCorrectsTheFirstRow) {
    EXPECT_EQ(diffused({{0, 200, 156}, {0, 0, 0}, {0, 0, 0}}, 128)[0],
              (std::vector<int>{0, 255, 255}));
    EXPECT_EQ(diffused({{0, 200, 155}, {0, 0, 0}, {0, 0, 0}}, 128)[0],
              (std::vector<int>{0, 255, 0}));
}

TEST(StencilDiffusion, KeepsPureBlackAndWhite) {
    // Black has no error, and beside white there is none to pass on either, as long as no white
    // pixel inside the image touches black.
    EXPECT_EQ(diffused({{255, 255, 0, 0}}, 128), (Rows{{255, 255, 0, 0}}));
    EXPECT_EQ(rowsOf(edf_cus(uniform(9, 7, 0), 128)), rowsOf(uniform(9, 7, 0)));
    EXPECT_EQ(rowsOf(edf_cus(uniform(9, 7, 255), 128)), rowsOf(uniform(9, 7, 255)));
}

TEST(StencilDiffusion, GivesOnlyBlackAndWhiteOfTheSameSizeAndLeavesTheSource) {
    for (const int threshold : {-500, -1, 0, 1, 127, 128, 254, 255, 300}) {
        const TQImage source = scattered(33, 21);
        const Rows before = rowsOf(source);
        const TQImage result = edf_cus(source, threshold);
        EXPECT_EQ(result.width, 33);
        EXPECT_EQ(result.height, 21);
        EXPECT_EQ(result.color, TQ_IMG_GRAY);
        EXPECT_EQ(result.channels, 1);
        for (const int level : bytesOf(result)) {
            EXPECT_TRUE(level == 0 || level == 255) << level;
        }
        EXPECT_EQ(rowsOf(source), before);
        EXPECT_EQ(rowsOf(edf_cus(source, threshold)), rowsOf(result));
    }
}

TEST(StencilDiffusion, GivesAnImageWithoutPixelsForOne) {
    const TQImage result = edf_cus(TQImage(0, 0, TQ_IMG_GRAY), 128);
    EXPECT_EQ(result.width, 0);
    EXPECT_EQ(result.height, 0);
    EXPECT_EQ(edf_cus(TQImage(0, 3, TQ_IMG_GRAY), 128).height, 3);
    EXPECT_EQ(edf_cus(TQImage(3, 0, TQ_IMG_GRAY), 128).width, 3);
}

}  // namespace
