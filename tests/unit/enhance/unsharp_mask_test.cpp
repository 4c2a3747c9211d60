#include <gtest/gtest.h>

#include <algorithm>
#include <stdexcept>
#include <vector>

#include "enhance/gaussian.h"
#include "tests/unit/enhance/grey_image.h"

namespace {

using namespace kelp_test;

TEST(AddWeighted, SubtractsTheWeightedBlurFromTheMagnifiedImage) {
    // 4 * 100 - 3 * 90 = 130; 4 * 90 - 3 * 100 = 60.
    EXPECT_EQ(rowsOf(add_Weighted(grey({{100, 90}}), grey({{90, 100}}), 3.0F)), (Rows{{130, 60}}));
}

TEST(AddWeighted, HoldsTheResultToTheGreyLevels) {
    // 4 * 200 - 3 * 100 = 500; 4 * 10 - 3 * 200 = -560; 4 * 60 - 3 * 80 = 0;
    // 4 * 90 - 3 * 35 = 255.
    EXPECT_EQ(rowsOf(add_Weighted(grey({{200, 10}, {60, 90}}), grey({{100, 200}, {80, 35}}), 3.0F)),
              (Rows{{255, 0}, {0, 255}}));
}

TEST(AddWeighted, RoundsHalvesUp) {
    // 101 * 1.5 - 100 * 0.5 = 101.5; 100 * 1.5 - 101 * 0.5 = 99.5; 0 * 1.5 - 1 * 0.5 = -0.5.
    EXPECT_EQ(rowsOf(add_Weighted(grey({{101, 100, 0}}), grey({{100, 101, 1}}), 0.5F)),
              (Rows{{102, 100, 0}}));
}

TEST(AddWeighted, WorksInSinglePrecision) {
    // 1 + 0.3 is 1.29999995 as a single; 15 times that is 19.5 as a single and less in double.
    EXPECT_EQ(rowsOf(add_Weighted(grey({{15}}), grey({{0}}), 0.3F)), (Rows{{20}}));
}

TEST(AddWeighted, AddsTheBlurForANegativeWeight) {
    // 100 * 0.5 + 50 * 0.5.
    EXPECT_EQ(rowsOf(add_Weighted(grey({{100}}), grey({{50}}), -0.5F)), (Rows{{75}}));
}

TEST(AddWeighted, ReturnsACopyForAWeightOfZero) {
    const TQImage source = scattered(7, 5);
    const TQImage result = add_Weighted(source, uniform(7, 5, 255), 0.0F);
    EXPECT_EQ(rowsOf(result), rowsOf(source));
    EXPECT_NE(result.data, source.data);
}

TEST(AddWeighted, SaturatesAHugeWeight) {
    EXPECT_EQ(rowsOf(add_Weighted(grey({{2, 1}}), grey({{1, 2}}), 1e20F)), (Rows{{255, 0}}));
}

TEST(UnsharpMask, ReturnsAUniformImageUnchanged) {
    for (int level = 0; level < 256; ++level) {
        EXPECT_EQ(rowsOf(enh_unsharp_mask(uniform(12, 4, level), 300.0F, 11)),
                  rowsOf(uniform(12, 4, level)));
    }
}

TEST(UnsharpMask, ReturnsACopyForAnAmountOfZero) {
    const TQImage source = scattered(9, 6);
    EXPECT_EQ(rowsOf(enh_unsharp_mask(source, 0.0F, 11)), rowsOf(source));
}

TEST(UnsharpMask, OvershootsToBothEndsAtAStep) {
    // Next to the step the blur of sigma 3 is about 0.43 of the way up: 50 goes to
    // 4 * 50 - 3 * 115 < 0 and 200 to 4 * 200 - 3 * 135 > 255. Six columns away from it the
    // eleven taps see one level only.
    Rows rows(3, std::vector<int>(20, 50));
    for (auto& row : rows) {
        std::fill(row.begin() + 10, row.end(), 200);
    }
    const Rows sharp = rowsOf(enh_unsharp_mask(grey(rows), 300.0F, 11));
    for (const auto& row : sharp) {
        EXPECT_EQ(row[4], 50);
        EXPECT_LT(row[5], 50);
        EXPECT_EQ(row[9], 0);
        EXPECT_EQ(row[10], 255);
        EXPECT_GT(row[14], 200);
        EXPECT_EQ(row[15], 200);
    }
}

TEST(UnsharpMask, LeavesAStepFromBlackToWhite) {
    const Rows rows = {{0, 0, 0, 255, 255, 255}};
    EXPECT_EQ(rowsOf(enh_unsharp_mask(grey(rows), 300.0F, 11)), rows);
}

TEST(UnsharpMask, TakesTheAmountInPercentOfABlurOfSigmaThree) {
    const TQImage source = scattered(23, 17);
    for (const int size : {1, 3, 5, 11, 15}) {
        const TQImage blurred = enh_gaussian_filter_fast(source, size, 3.0);
        EXPECT_EQ(rowsOf(enh_unsharp_mask(source, 300.0F, size)),
                  rowsOf(add_Weighted(source, blurred, 3.0F)));
        EXPECT_EQ(rowsOf(enh_unsharp_mask(source, 70.0F, size)),
                  rowsOf(add_Weighted(source, blurred, 70.0F / 100.0F)));
        EXPECT_EQ(rowsOf(enh_unsharp_mask(source, -50.0F, size)),
                  rowsOf(add_Weighted(source, blurred, -0.5F)));
    }
}

TEST(UnsharpMask, LeavesTheSource) {
    const TQImage source = scattered(9, 6);
    const Rows before = rowsOf(source);
    const TQImage result = enh_unsharp_mask(source, 300.0F, 11);
    EXPECT_EQ(rowsOf(source), before);
    EXPECT_NE(rowsOf(result), before);
    EXPECT_EQ(result.width, 9);
    EXPECT_EQ(result.height, 6);
}

TEST(UnsharpMask, RefusesEvenAndNonPositiveSizes) {
    const TQImage source = scattered(4, 4);
    for (const int size : {0, 2, 10, -1}) {
        EXPECT_THROW(enh_unsharp_mask(source, 300.0F, size), std::invalid_argument) << size;
    }
}

}  // namespace
