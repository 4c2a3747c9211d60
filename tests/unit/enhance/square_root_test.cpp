#include <gtest/gtest.h>

#include <cfloat>
#include <cmath>
#include <limits>

#include "enhance/numeric.h"

namespace {

TEST(MySqrt, AnswersZeroAndNegativeArgumentsAtOnce) {
    EXPECT_EQ(my_sqrt(0.0F), 0.0F);
    EXPECT_EQ(my_sqrt(-0.0F), 0.0F);
    EXPECT_EQ(my_sqrt(-1.0F), -1.0F);
    EXPECT_EQ(my_sqrt(-FLT_MIN), -1.0F);
    EXPECT_EQ(my_sqrt(-std::numeric_limits<float>::infinity()), -1.0F);
}

TEST(MySqrt, FindsWholeRoots) {
    // 4 starts at 2, and the first step does not move it.
    EXPECT_EQ(my_sqrt(4.0F), 2.0F);
    EXPECT_EQ(my_sqrt(65025.0F), 255.0F);
    EXPECT_EQ(my_sqrt(10000.0F), 100.0F);
    EXPECT_EQ(my_sqrt(1.0F), 1.0F);
}

TEST(MySqrt, ReturnsTheIterateBeforeTheLastStep) {
    // Of 0.01: 0.005, 1.0025, 0.5062, 0.2630, 0.1505, 0.10848, 0.1003311, 0.1000005, 0.1000000.
    // The last step is 5e-7, so the answer is the value before it.
    EXPECT_NEAR(my_sqrt(0.01F), 0.10000055F, 2e-8F);
}

TEST(MySqrt, HalvesDownToTheToleranceForATinyArgument) {
    // Of 2^-80: 2^-81, 1, 1/2, 1/4, ... halving, for x / g is far below the precision. 2^-19 to
    // 2^-20 is the first step below 1e-6 (2^-20 is 9.5e-7), and 2^-19 is returned.
    EXPECT_EQ(my_sqrt(std::ldexp(1.0F, -80)), std::ldexp(1.0F, -19));
    EXPECT_EQ(my_sqrt(FLT_MIN), std::ldexp(1.0F, -19));
}

TEST(MySqrt, TakesNewtonsStepsInSinglePrecision) {
    // Of 2 pi, as the Gaussian kernel asks: three steps until one is below the tolerance.
    const float x = 6.2831855F;
    const float first = x / 2.0F;
    const float second = 0.5F * (first + x / first);
    const float third = 0.5F * (second + x / second);
    const float fourth = 0.5F * (third + x / third);
    const float fifth = 0.5F * (fourth + x / fourth);
    ASSERT_GE(std::fabs(fourth - third), 1e-6F);
    ASSERT_LT(std::fabs(fifth - fourth), 1e-6F);
    EXPECT_EQ(my_sqrt(x), fourth);
}

TEST(MySqrt, StaysWithinItsToleranceOfTheRoot) {
    for (int i = 1; i <= 65025; i += 13) {
        const auto x = static_cast<float>(i);
        EXPECT_NEAR(my_sqrt(x), std::sqrt(x), 1e-6F + std::sqrt(x) * 1e-6F) << i;
    }
}

TEST(MySqrt, EndsForTheLargestArguments) {
    for (const float x : {1e10F, 3e15F, 1e20F, 1e30F, 1e38F, FLT_MAX, FLT_MAX / 3.0F}) {
        EXPECT_NEAR(my_sqrt(x) / std::sqrt(x), 1.0F, 1e-6F) << x;
    }
}

TEST(MySqrt, EndsForTheSmallestArguments) {
    // Half of the smallest number is 0, and x / 0 an infinity.
    EXPECT_GE(my_sqrt(std::numeric_limits<float>::denorm_min()), 0.0F);
    EXPECT_EQ(my_sqrt(1e-40F), std::ldexp(1.0F, -19));
}

TEST(MySqrt, ReturnsInfinityAndNotANumberThemselves) {
    EXPECT_EQ(my_sqrt(std::numeric_limits<float>::infinity()),
              std::numeric_limits<float>::infinity());
    EXPECT_TRUE(std::isnan(my_sqrt(std::numeric_limits<float>::quiet_NaN())));
}

}  // namespace
