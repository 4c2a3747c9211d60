#include "enhance/moments_threshold.h"

#include <gtest/gtest.h>

#include <utility>
#include <vector>

#include "tests/unit/enhance/grey_image.h"

namespace {

using namespace kelp_test;

/// A one-row page of so many pixels of each level.
TQImage page(const std::vector<std::pair<int, int>>& counts) {
    std::vector<int> row;
    for (const auto& [level, count] : counts) {
        row.insert(row.end(), static_cast<std::size_t>(count), level);
    }
    return grey({row});
}

TEST(MomentsThreshold, Is128ForEveryUniformPage) {
    for (int level = 0; level < 256; ++level) {
        EXPECT_EQ(thresh_global_moments(uniform(4, 4, level)), 128) << level;
    }
    EXPECT_EQ(thresh_global_moments(uniform(1, 1, 255)), 128);
}

TEST(MomentsThreshold, Is128ForASingle254OnALargePageOf255) {
    // p[254] is 2^-20. m1 and m2 round to 255 and 65025, so cd is 0.
    TQImage image = uniform(1024, 1024, 255);
    image.data[512 * 1024 + 77] = 254;
    EXPECT_EQ(thresh_global_moments(image), 128);
    TQImage label = uniform(812, 1218, 255);
    label.data[0] = 254;
    EXPECT_EQ(thresh_global_moments(label), 128);
}

TEST(MomentsThreshold, TakesTheBrighterOfTwoExactLevels) {
    // Halves at 0 and 255: m1 127.5, m2 32512.5, m3 8290687.5, cd 16256.25, c0 0, c1 -255,
    // disc 65025, z0 0, z1 255, p0 0.5. At 0 the sum is 0.5, which is not above p0.
    EXPECT_EQ(thresh_global_moments(page({{0, 1}, {255, 1}})), 255);
    // Three quarters at 0: m1 63.75, m2 16256.25, m3 4145343.75, and p0 is exactly 0.75.
    EXPECT_EQ(thresh_global_moments(page({{0, 3}, {255, 1}})), 255);
}

TEST(MomentsThreshold, NeverLiesBetweenTwoDistantLevels) {
    for (int dark = 0; dark <= 128; dark += 16) {
        for (int bright = dark + 64; bright < 256; bright += 13) {
            for (int share = 1; share < 16; ++share) {
                const int t = thresh_global_moments(page({{dark, share}, {bright, 16 - share}}));
                EXPECT_TRUE(t == dark || t == bright)
                    << dark << ", " << bright << ", " << share << ": " << t;
            }
        }
    }
}

TEST(MomentsThreshold, PreservesTheMomentsOfThreeLevels) {
    // 0, 100, 100, 200: m1 100, m2 15000, m3 2500000, cd 5000, c0 5000, c1 -200, disc 20000,
    // z0 29.3, z1 170.7, p0 0.5. The sum is 0.25 at 0 and 0.75 at 100.
    EXPECT_EQ(thresh_global_moments(page({{0, 1}, {100, 2}, {200, 1}})), 100);
    // 0, 0, 40, 200: m1 60, m2 10400, m3 2016000, cd 6800, c0 1882.35, c1 -204.706,
    // disc 34375, z0 9.65, z1 195.06, p0 0.728. The sum is 0.5 at 0 and 0.75 at 40.
    EXPECT_EQ(thresh_global_moments(page({{0, 2}, {40, 1}, {200, 1}})), 40);
    // Five of 0, two of 100, one of 200: m1 50, m2 7500, m3 1250000, cd 5000, c0 1250, c1 -175,
    // disc 25625, z0 7.46, z1 167.5, p0 0.734. The sum is 0.625 at 0 and 0.875 at 100.
    EXPECT_EQ(thresh_global_moments(page({{0, 5}, {100, 2}, {200, 1}})), 100);
}

TEST(MomentsThreshold, Is128WhereRoundingMakesTheDiscriminantNegative) {
    // 45 and 46: m1 45.5, m2 2070.5, m3 94230.5, cd 0.25. m2 * m2 = 4286970.25 rounds to
    // 4286970 and m1 * m3 = 4287487.75 to 4287488 (halves are the unit there), so c0 is 518 / 0.25
    // = 2072, where 45 * 46 is 2070. c1 is -91, disc 8281 - 8288.
    EXPECT_EQ(thresh_global_moments(page({{45, 1}, {46, 1}})), 128);
}

TEST(MomentsThreshold, IsMinusOneWhereBothLevelsFallTogether) {
    // 63 and 65: m1 64, m2 4097, m3 262336, cd 1. m2 * m2 = 16785409 rounds to 16785408, m1 * m3
    // is 16789504: c0 is 4096 instead of 4095. c1 is -128, disc 0, z0 = z1 = 64, and p0 = 0 / 0
    // is passed by no sum.
    EXPECT_EQ(thresh_global_moments(page({{63, 1}, {65, 1}})), -1);
}

TEST(MomentsThreshold, IsMinusOneWhereTheShareReachesTheWholePage) {
    // 127, 128, 128: m1 rounds to 127.66667, m2 to 16299 and m3 to 2080895.75, cd is 0.2207,
    // c0 16456.496, c1 -256.56638, disc 0.32, z0 128.0002, z1 128.566: p0 = 1.589, and the sum
    // ends at 1.
    EXPECT_EQ(thresh_global_moments(page({{127, 1}, {128, 2}})), -1);
}

TEST(MomentsThreshold, IsZeroWhereTheShareIsNegative) {
    // 224 and 225: m1 224.5, m2 50400.5, m3 rounds to 11315024. m2 * m2 rounds to 2540210432 and
    // m1 * m3 to 2540222976 (256 is the unit there), c0 is 12544 / 0.25 = 50176 = 224 * 224, c1 is
    // -448, disc 0, z0 = z1 = 224, p0 = (224 - 224.5) / 0: minus infinity, below the sum 0 at 0.
    EXPECT_EQ(thresh_global_moments(page({{224, 1}, {225, 1}})), 0);
}

TEST(MomentsThreshold, IsSolvedWhereRoundingMakesTheVarianceNegative) {
    // 239 and 143 of 240: m1 rounds to 239.99307, m2 to 57596.671875, m3 to 13822805. m1 * m1 =
    // 57596.67485 rounds to 57596.67578 (256ths are the unit), so cd is -1 / 256. m2 * m2 rounds to
    // 3317376512 and m1 * m3 to 3317377536, so c0 is 1024 / cd = -262144; m2 * m1 rounds to
    // 13822802, so c1 is -3 / cd = 768. disc is 589824 + 1048576 = 1280 * 1280, z0 -1024, z1 256,
    // p0 16.00693 / 1280 = 0.0125, above the sum 0.0069 at 239.
    EXPECT_EQ(thresh_global_moments(page({{239, 1}, {240, 143}})), 240);
}

TEST(MomentsThreshold, SquaresInSinglePrecision) {
    // 3 and three of 160: m1 120.75, m2 19202.25, m3 3072006.75, cd 4621.6875. m2 * m2 rounds to
    // 368726400 and m1 * m3 to 370944800, so c0 is 479.99783; m2 * m1 = 2318671.6875 rounds to
    // 2318671.75 (quarters are the unit), so c1 is -162.99998. Its square 26568.99503 rounds to
    // 26568.99414: disc 24649.00195, whose root is nearest to 157; z0 2.99999, z1 160 and p0 is
    // 39.25 / 157 = 0.25, which the sum at 3 only reaches. The square itself would make disc
    // 24649.00391, the root 157.00002 and p0 0.24999997, which the sum at 3 passes.
    EXPECT_EQ(thresh_global_moments(page({{3, 1}, {160, 3}})), 160);
}

TEST(MomentsThreshold, CountsPixelsAndNotTheirPlaces) {
    EXPECT_EQ(thresh_global_moments(grey({{200, 0}, {100, 100}})), 100);
    EXPECT_EQ(thresh_global_moments(grey({{100}, {0}, {200}, {100}})), 100);
}

TEST(MomentsThreshold, ReadsOnlyWidthTimesHeightBytes) {
    TQImage image = grey({{0, 100, 100, 200, 7, 7, 7, 7}});
    image.width = 4;
    EXPECT_EQ(thresh_global_moments(image), 100);
    image.width = 8;
}

}  // namespace
