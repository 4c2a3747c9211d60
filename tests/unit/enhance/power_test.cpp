#include <gtest/gtest.h>

#include <cmath>

#include "enhance/numeric.h"
#include "tests/unit/enhance/special_values.h"

namespace {

TEST(MyPow, AnswersABaseOfZeroByTheExponentsSign) {
    EXPECT_EQ(my_pow(0.0F, 0.0F), 1.0F);
    EXPECT_EQ(my_pow(0.0F, -0.0F), 1.0F);
    EXPECT_EQ(my_pow(-0.0F, 0.0F), 1.0F);
    EXPECT_EQ(my_pow(0.0F, 2.0F), 0.0F);
    EXPECT_EQ(my_pow(0.0F, 0.001F), 0.0F);
    EXPECT_EQ(my_pow(0.0F, -1.0F), -1.0F);
    EXPECT_EQ(my_pow(0.0F, kInfinity), 0.0F);
    EXPECT_EQ(my_pow(0.0F, -kInfinity), -1.0F);
    EXPECT_EQ(my_pow(0.0F, kNaN), -1.0F);
}

TEST(MyPow, AnswersANegativeBaseWithAFractionalExponentWithMinusOne) {
    EXPECT_EQ(my_pow(-2.0F, 0.5F), -1.0F);
    EXPECT_EQ(my_pow(-2.0F, -1.5F), -1.0F);
    EXPECT_EQ(my_pow(-2.0F, kNaN), -1.0F);
    EXPECT_EQ(my_pow(-2.0F, kInfinity), -1.0F);
    EXPECT_EQ(my_pow(-2.0F, -kInfinity), -1.0F);
}

TEST(MyPow, TakesTheLogarithmOfANegativeBaseForMinusOne) {
    EXPECT_EQ(my_pow(-2.0F, 2.0F), my_exp(-2.0F));
    EXPECT_EQ(my_pow(-7.0F, 3.0F), my_exp(-3.0F));
    EXPECT_EQ(my_pow(-2.0F, -2.0F), my_exp(2.0F));
    EXPECT_EQ(my_pow(-2.0F, 0.0F), 1.0F);
    EXPECT_EQ(my_pow(-kInfinity, 1.0F), my_exp(-1.0F));
}

TEST(MyPow, LosesTheWholenessOfAnExponentBeyondInt) {
    // 1e10 as an int is 2^31 - 1, which as a float is 2^31.
    EXPECT_EQ(my_pow(-2.0F, 1e10F), -1.0F);
    EXPECT_EQ(my_pow(-2.0F, -1e10F), -1.0F);
    // 2^31 itself comes back whole from its saturation.
    EXPECT_EQ(my_pow(-2.0F, 2147483648.0F), my_exp(-2147483648.0F));
}

TEST(MyPow, IsTheExponentialOfExponentTimesLogarithm) {
    for (const float a : {0.004F, 0.25F, 0.5F, 0.99F, 1.5F, 2.0F, 10.0F}) {
        for (const float b : {-2.0F, -0.5F, 0.5F, 0.7F, 0.85F, 1.0F, 1.5F, 3.0F}) {
            EXPECT_EQ(my_pow(a, b), my_exp(b * my_ln(a))) << a << ", " << b;
        }
    }
}

TEST(MyPow, LiesNearThePowerWhereTheSeriesReaches) {
    for (const float a : {0.25F, 0.5F, 0.99F, 1.5F, 2.0F, 5.0F}) {
        for (const float b : {-2.0F, -0.5F, 0.5F, 0.7F, 0.85F, 1.0F, 1.5F, 3.0F}) {
            EXPECT_NEAR(my_pow(a, b) / std::pow(a, b), 1.0F, 1e-5F) << a << ", " << b;
        }
    }
}

TEST(MyPow, IsExactlyOneForABaseOfOneOrAnExponentOfZero) {
    for (const float b : {-3.5F, -1.0F, 0.0F, 0.7F, 2.0F, 1e30F}) {
        EXPECT_EQ(my_pow(1.0F, b), 1.0F) << b;
    }
    EXPECT_EQ(my_pow(5.0F, 0.0F), 1.0F);
    EXPECT_EQ(my_pow(0.3F, 0.0F), 1.0F);
}

TEST(MyPow, IsNotANumberForABaseThatIsNone) {
    EXPECT_TRUE(std::isnan(my_pow(kNaN, 2.0F)));
    EXPECT_TRUE(std::isnan(my_pow(1.0F, kInfinity)));
}

}  // namespace
