#include <gtest/gtest.h>

#include <cfloat>
#include <chrono>
#include <cmath>
#include <limits>

#include "enhance/numeric.h"
#include "tests/unit/enhance/special_values.h"

namespace {

float step(float y, float x) {
    return y - (my_exp(y) - x) / x;
}

TEST(MyLn, IsZeroAtOne) {
    EXPECT_EQ(my_ln(1.0F), 0.0F);
    EXPECT_FALSE(std::signbit(my_ln(1.0F)));
}

TEST(MyLn, AnswersZeroAndNegativeArgumentsWithMinusOne) {
    EXPECT_EQ(my_ln(0.0F), -1.0F);
    EXPECT_EQ(my_ln(-0.0F), -1.0F);
    EXPECT_EQ(my_ln(-2.0F), -1.0F);
    EXPECT_EQ(my_ln(-FLT_MIN), -1.0F);
    EXPECT_EQ(my_ln(-kInfinity), -1.0F);
}

TEST(MyLn, DividesTheCorrectionByTheArgument) {
    // Of 2: 1/3, 0.6355, 0.69152, 0.6931459, 0.6931472, and the next step is below 1e-6. A step
    // divided by exp(y), as Newton's would be, goes from 1/3 to 0.7664.
    const float y0 = 1.0F / 3.0F;
    const float y1 = step(y0, 2.0F);
    EXPECT_NEAR(y1, 0.63553F, 1e-5F);
    const float y2 = step(y1, 2.0F);
    const float y3 = step(y2, 2.0F);
    const float y4 = step(y3, 2.0F);
    ASSERT_GE(std::fabs(y4 - y3), 1e-6F);
    ASSERT_LT(std::fabs(step(y4, 2.0F) - y4), 1e-6F);
    EXPECT_EQ(my_ln(2.0F), y4);
}

TEST(MyLn, ReturnsTheIterateBeforeTheLastStep) {
    // Of 0.25: -0.6, -1.795, -1.460, -1.38892, -1.386298, -1.3862945, and the next step of 1e-7
    // is not taken.
    float y = (0.25F - 1.0F) / (1.0F + 0.25F);
    for (int i = 0; i < 5; ++i) {
        const float next = step(y, 0.25F);
        ASSERT_GE(std::fabs(next - y), 1e-6F) << i;
        y = next;
    }
    const float last = step(y, 0.25F);
    ASSERT_LT(std::fabs(last - y), 1e-6F);
    ASSERT_NE(last, y);
    EXPECT_EQ(my_ln(0.25F), y);
}

TEST(MyLn, StaysWhereATinyArgumentThrowsItsFirstStep) {
    // (x - 1) / (1 + x) is -1, the first step goes to -1 - (exp(-1) - x) / x = -3.7e29, where
    // exp is 0 and the next step of 1 is lost in the precision.
    const float x = 1e-30F;
    const float thrown = -1.0F - (my_exp(-1.0F) - x) / x;
    EXPECT_LT(thrown, -3e29F);
    EXPECT_EQ(my_ln(x), thrown);
}

TEST(MyLn, ClimbsBackByOneAStepFromAFirstStepWithinThePrecision) {
    // 1e-4 throws the first step out to about -3680; no cap may end the way back from there, and
    // from the 3.7 million of 1e-7 neither.
    EXPECT_NEAR(my_ln(1e-4F), -9.21F, 0.01F);
    EXPECT_NEAR(my_ln(1e-7F), -16.28F, 0.01F);
    EXPECT_GT(my_ln(2.5e-8F), -18.0F);
}

TEST(MyLn, LiesNearTheLogarithm) {
    for (int i = 1; i <= 256; ++i) {
        const float x = static_cast<float>(i) / 256.0F;
        EXPECT_NEAR(my_ln(x), std::log(x), 2e-6F) << i;
    }
    EXPECT_NEAR(my_ln(2.7182817F), 1.0F, 1e-6F);
    EXPECT_NEAR(my_ln(100.0F), 4.6051702F, 1e-5F);
}

TEST(MyLn, EndsForEveryArgument) {
    const auto start = std::chrono::steady_clock::now();
    for (const float x : {FLT_MAX, 1e38F, 1e20F, 1e10F, 1e5F, 1e-8F, 1e-10F, FLT_MIN, 1e-44F,
                          std::numeric_limits<float>::denorm_min(), kInfinity}) {
        my_ln(x);
    }
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(60));
}

TEST(MyLn, EndsAtOnceForNotANumber) {
    EXPECT_TRUE(std::isnan(my_ln(std::numeric_limits<float>::quiet_NaN())));
}

TEST(MyLn, GrowsWithALargeArgument) {
    // The series of exp has only 20 terms, so past e^20 the answer lies above the logarithm.
    EXPECT_GT(my_ln(1e20F), std::log(1e20F));
    EXPECT_GT(my_ln(FLT_MAX), my_ln(1e20F));
    // It is where the series reaches the argument.
    EXPECT_NEAR(my_exp(my_ln(1e20F)) / 1e20F, 1.0F, 1e-4F);
}

}  // namespace
