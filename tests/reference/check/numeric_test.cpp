#include "tests/reference/numeric.h"

#include <gtest/gtest.h>

#include <climits>
#include <cmath>
#include <limits>

#include "tests/reference/gray.h"

namespace reference {

TEST(ReferenceNumeric, RoundsHalvesAwayFromZero) {
    EXPECT_EQ(myRound(2.5f), 3);
    EXPECT_EQ(myRound(-2.5f), -3);
    EXPECT_EQ(myRound(-0.5f), -1);
    EXPECT_EQ(myRound(0.5f), 1);
    EXPECT_EQ(myRound(-0.4f), 0);
}

TEST(ReferenceNumeric, ConversionsSaturateAndANotANumberGivesZero) {
    EXPECT_EQ(truncateToInt(1e20f), INT_MAX);
    EXPECT_EQ(truncateToInt(-1e20), INT_MIN);
    EXPECT_EQ(truncateToInt(std::numeric_limits<float>::quiet_NaN()), 0);
    EXPECT_EQ(truncateToInt(-1.99), -1);
}

TEST(ReferenceNumeric, AbsoluteValueKeepsNegativeZeroAndNotANumber) {
    EXPECT_EQ(myAbs(-3.0f), 3.0f);
    EXPECT_TRUE(std::signbit(myAbs(-0.0f)));
    EXPECT_TRUE(std::isnan(myAbs(std::numeric_limits<float>::quiet_NaN())));
}

TEST(ReferenceNumeric, ClampReturnsTheNearestBound) {
    EXPECT_EQ(myClamp(5, 0, 5), 5);
    EXPECT_EQ(myClamp(-1, 0, 255), 0);
    EXPECT_EQ(myClamp(300, 0, 255), 255);
    EXPECT_EQ(myClamp(17, 0, 255), 17);
}

TEST(ReferenceNumeric, SquareRootOfPerfectSquaresIsExact) {
    EXPECT_EQ(mySqrt(4.0f), 2.0f);
    EXPECT_EQ(mySqrt(65025.0f), 255.0f);
    EXPECT_EQ(mySqrt(0.0f), 0.0f);
    EXPECT_EQ(mySqrt(-1.0f), -1.0f);
}

TEST(ReferenceNumeric, SquareRootReturnsTheValueBeforeTheLastUpdate) {
    // 1e-12: the iterates halve from 1 and reach 2.08e-6, then 1.28e-6. The step
    // between these two is the first below 1e-6, and the earlier one is returned.
    EXPECT_GT(mySqrt(1e-12f), 2.0e-6f);
    EXPECT_LT(mySqrt(1e-12f), 2.2e-6f);
}

TEST(ReferenceNumeric, SquareRootAndLogarithmOfANotANumberEnd) {
    EXPECT_TRUE(std::isnan(mySqrt(std::numeric_limits<float>::quiet_NaN())));
    EXPECT_TRUE(std::isnan(myLn(std::numeric_limits<float>::quiet_NaN())));
}

TEST(ReferenceNumeric, ExponentialStopsAfterTwentyTerms) {
    EXPECT_EQ(myExp(0.0f), 1.0f);
    EXPECT_NEAR(myExp(1.0f), 2.7182818f, 1e-6f);
    EXPECT_EQ(myExp(-1.0f), static_cast<float>(1.0 / static_cast<double>(myExp(1.0f))));
    // e^30 is 1.0686e13; its first 21 terms make up the share 0.0353 of it.
    EXPECT_GT(myExp(30.0f), 3.70e11f);
    EXPECT_LT(myExp(30.0f), 3.84e11f);
}

TEST(ReferenceNumeric, LogarithmOfOneIsExactlyZero) {
    EXPECT_EQ(myLn(1.0f), 0.0f);
    EXPECT_EQ(myLn(0.0f), -1.0f);
    EXPECT_EQ(myLn(-5.0f), -1.0f);
    EXPECT_NEAR(myLn(0.5f), -0.6931472f, 2e-6f);
}

TEST(ReferenceNumeric, LogarithmOfASmallNumberConvergesAfterAThousandSteps) {
    // The first correction throws y to about -e^-0.998 / 0.001 = -369, from where
    // it climbs by 1 a step. The exponential lacks 6.9^21 / 21! and what follows,
    // 1.2e-5 of its value, so the logarithm ends that much lower.
    EXPECT_NEAR(myLn(0.001f), -6.9077553f - 1.2e-5f, 3e-6f);
}

TEST(ReferenceNumeric, PowerHandlesZeroAndNegativeBasesByRule) {
    EXPECT_EQ(myPow(0.0f, 0.0f), 1.0f);
    EXPECT_EQ(myPow(0.0f, 2.0f), 0.0f);
    EXPECT_EQ(myPow(0.0f, -1.0f), -1.0f);
    EXPECT_EQ(myPow(-2.0f, 0.5f), -1.0f);
    EXPECT_EQ(myPow(-2.0f, 2.0f), myExp(-2.0f));
    EXPECT_EQ(myPow(1.0f, 0.7f), 1.0f);
}

TEST(ReferenceGray, WeightsFollowTheChannelOrder) {
    // 100 * 0.114 = 11.4, 100 * 0.299 = 29.9, 100 * 0.587 = 58.7
    const std::vector<unsigned char> first{100, 0, 0, 0, 0, 0, 0, 0};
    const std::vector<unsigned char> second{0, 100, 0, 0, 0, 0, 0, 0};
    EXPECT_EQ(cvtGray({1, 1, 1, first}).px[0], 11);
    EXPECT_EQ(cvtGray({1, 1, 2, first}).px[0], 30);
    EXPECT_EQ(cvtGray({1, 1, 3, first}).px[0], 11);
    EXPECT_EQ(cvtGray({1, 1, 4, first}).px[0], 30);
    EXPECT_EQ(cvtGray({1, 1, 7, first}).px[0], 30);
    EXPECT_EQ(cvtGray({1, 1, 1, second}).px[0], 59);
    EXPECT_EQ(cvtGray({1, 1, 2, second}).px[0], 59);
}

TEST(ReferenceGray, StepsOverAlphaAndCopiesGrey) {
    const std::vector<unsigned char> bgra{255, 255, 255, 9, 0, 0, 100, 9};
    EXPECT_EQ(cvtGray({2, 1, 3, bgra}).px, (std::vector<unsigned char>{255, 30}));
    EXPECT_EQ(cvtGray({2, 1, 0, {7, 200}}).px, (std::vector<unsigned char>{7, 200}));
    EXPECT_EQ(cvtGray({2, 1, 1, {0, 0, 100, 100, 0, 0}}).px, (std::vector<unsigned char>{30, 11}));
}

}  // namespace reference
