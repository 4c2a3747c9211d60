#include <gtest/gtest.h>

#include <cfloat>
#include <cmath>
#include <limits>

#include "enhance/numeric.h"
#include "tests/unit/enhance/special_values.h"

namespace {

/// 1 and the next `terms` terms of the series, each divided before it is multiplied.
float series(float x, int terms) {
    float sum = 1.0F;
    float term = 1.0F;
    for (int k = 1; k <= terms; ++k) {
        term = (x / static_cast<float>(k)) * term;
        sum = sum + term;
    }
    return sum;
}

TEST(MyExp, IsOneAtZero) {
    EXPECT_EQ(my_exp(0.0F), 1.0F);
    EXPECT_EQ(my_exp(-0.0F), 1.0F);
}

TEST(MyExp, AddsTheTermThatFallsBelowTheTolerance) {
    // 1e-7 is below 1e-6 at once and still counts: 1 + 1e-7 rounds to the next number after 1.
    EXPECT_EQ(my_exp(1e-7F), std::nextafter(1.0F, 2.0F));
    // 1/9! is 2.8e-6 and 1/10! is 2.8e-7: ten terms.
    EXPECT_EQ(my_exp(1.0F), series(1.0F, 10));
    EXPECT_NE(my_exp(1.0F), series(1.0F, 9));
}

TEST(MyExp, StopsAtTheFirstTermBelowTheTolerance) {
    // 2^13/13! is 1.3e-6, 2^14/14! is 1.9e-7; 0.5^7/7! is 1.6e-6, 0.5^8/8! is 9.7e-8.
    EXPECT_EQ(my_exp(2.0F), series(2.0F, 14));
    EXPECT_EQ(my_exp(0.5F), series(0.5F, 8));
}

TEST(MyExp, AddsNoMoreThanTwentyTerms) {
    // At 20 the terms are still growing: the sum is that of twenty, little more than half of e^20.
    EXPECT_EQ(my_exp(20.0F), series(20.0F, 20));
    EXPECT_LT(my_exp(20.0F), 0.6F * std::exp(20.0F));
    EXPECT_GT(my_exp(20.0F), 0.5F * std::exp(20.0F));
    EXPECT_NE(series(20.0F, 19), series(20.0F, 20));
}

TEST(MyExp, DividesByTheCounterBeforeItMultiplies) {
    // Multiplied first, these come out one unit in the last place apart.
    for (const float x : {1.17F, 1.61F, 1.83F, 1.95F, 2.03F}) {
        EXPECT_EQ(my_exp(x), series(x, 20)) << x;
    }
}

TEST(MyExp, LiesNearTheExponentialForSmallArguments) {
    for (float x = -6.0F; x <= 6.0F; x += 0.0625F) {
        EXPECT_NEAR(my_exp(x) / std::exp(x), 1.0F, 3e-6F) << x;
    }
}

TEST(MyExp, IsTheReciprocalInDoublePrecisionForNegativeArguments) {
    for (const float x : {1e-7F, 0.1F, 0.5F, 1.0F, 2.0F, 7.25F, 20.0F, 88.0F, 500.0F}) {
        EXPECT_EQ(my_exp(-x), static_cast<float>(1.0 / static_cast<double>(my_exp(x)))) << x;
    }
}

TEST(MyExp, EndsForEveryArgument) {
    EXPECT_EQ(my_exp(kInfinity), kInfinity);
    EXPECT_EQ(my_exp(-kInfinity), 0.0F);
    EXPECT_EQ(my_exp(FLT_MAX), kInfinity);
    EXPECT_EQ(my_exp(-FLT_MAX), 0.0F);
    EXPECT_EQ(my_exp(FLT_MIN), 1.0F);
    EXPECT_EQ(my_exp(std::numeric_limits<float>::denorm_min()), 1.0F);
    EXPECT_TRUE(std::isnan(my_exp(std::numeric_limits<float>::quiet_NaN())));
}

}  // namespace
