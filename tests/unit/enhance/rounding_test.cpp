#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "enhance/numeric.h"
#include "tests/unit/enhance/special_values.h"

namespace {

constexpr int kMost = std::numeric_limits<int>::max();
constexpr int kLeast = std::numeric_limits<int>::min();

TEST(MyAbs, TurnsNegativeValuesRound) {
    EXPECT_EQ(myabs(-2.5F), 2.5F);
    EXPECT_EQ(myabs(2.5F), 2.5F);
    EXPECT_EQ(myabs(-kInfinity), kInfinity);
    EXPECT_EQ(myabs(-std::numeric_limits<float>::denorm_min()),
              std::numeric_limits<float>::denorm_min());
}

TEST(MyAbs, PassesNegativeZeroAndNotANumberThrough) {
    EXPECT_TRUE(std::signbit(myabs(-0.0F)));
    EXPECT_FALSE(std::signbit(myabs(0.0F)));
    EXPECT_TRUE(std::isnan(myabs(kNaN)));
}

TEST(MyRound, RoundsHalvesAwayFromZero) {
    EXPECT_EQ(my_round(0.5F), 1);
    EXPECT_EQ(my_round(-0.5F), -1);
    EXPECT_EQ(my_round(2.5F), 3);
    EXPECT_EQ(my_round(-2.5F), -3);
    EXPECT_EQ(my_round(254.5F), 255);
}

TEST(MyRound, RoundsToTheNearest) {
    EXPECT_EQ(my_round(0.0F), 0);
    EXPECT_EQ(my_round(-0.0F), 0);
    EXPECT_EQ(my_round(-0.4F), 0);
    EXPECT_EQ(my_round(0.4F), 0);
    EXPECT_EQ(my_round(1.6F), 2);
    EXPECT_EQ(my_round(-1.6F), -2);
    EXPECT_EQ(my_round(-2.4F), -2);
}

TEST(MyRound, AddsTheHalfInSinglePrecision) {
    // Just below a half, 0.5 - 2^-25: the sum 1 - 2^-25 rounds up to 1.
    EXPECT_EQ(my_round(0.49999997F), 1);
    EXPECT_EQ(my_round(-0.49999997F), -1);
    // From 2^23 on there are no halves: 8388609.5 rounds to the even 8388610.
    EXPECT_EQ(my_round(8388609.0F), 8388610);
    EXPECT_EQ(my_round(8388610.0F), 8388610);
}

TEST(MyRound, SaturatesAndTakesNotANumberForZero) {
    EXPECT_EQ(my_round(3e9F), kMost);
    EXPECT_EQ(my_round(-3e9F), kLeast);
    EXPECT_EQ(my_round(kInfinity), kMost);
    EXPECT_EQ(my_round(-kInfinity), kLeast);
    EXPECT_EQ(my_round(kNaN), 0);
}

TEST(TruncateToInt, TruncatesTowardZero) {
    EXPECT_EQ(truncateToInt(2.99F), 2);
    EXPECT_EQ(truncateToInt(-2.99F), -2);
    EXPECT_EQ(truncateToInt(-0.99F), 0);
    EXPECT_EQ(truncateToInt(0.0F), 0);
}

TEST(TruncateToInt, SaturatesFromTheEndsOfIntOn) {
    // 2^31 - 128 is the largest single below 2^31.
    EXPECT_EQ(truncateToInt(2147483520.0F), 2147483520);
    EXPECT_EQ(truncateToInt(2147483648.0F), kMost);
    EXPECT_EQ(truncateToInt(-2147483648.0F), kLeast);
    EXPECT_EQ(truncateToInt(-2147483904.0F), kLeast);
    EXPECT_EQ(truncateToInt(1e30F), kMost);
    EXPECT_EQ(truncateToInt(-1e30F), kLeast);
    EXPECT_EQ(truncateToInt(kInfinity), kMost);
    EXPECT_EQ(truncateToInt(-kInfinity), kLeast);
}

TEST(TruncateToInt, TakesNotANumberForZero) {
    EXPECT_EQ(truncateToInt(kNaN), 0);
    EXPECT_EQ(truncateToInt(-kNaN), 0);
}

TEST(MyClamp, HoldsAValueBetweenItsBounds) {
    EXPECT_EQ(myClamp(5, 0, 5), 5);
    EXPECT_EQ(myClamp(-1, 0, 255), 0);
    EXPECT_EQ(myClamp(300, 0, 255), 255);
    EXPECT_EQ(myClamp(0, 0, 255), 0);
    EXPECT_EQ(myClamp(255, 0, 255), 255);
    EXPECT_EQ(myClamp(100, 0, 255), 100);
    EXPECT_EQ(myClamp(kLeast, 0, 255), 0);
    EXPECT_EQ(myClamp(kMost, 0, 255), 255);
}

TEST(MyClamp, AnswersTheLowerBoundFirstWhenTheBoundsAreCrossed) {
    EXPECT_EQ(myClamp(-3, 0, -1), 0);
    EXPECT_EQ(myClamp(3, 0, -1), -1);
}

TEST(LowByte, KeepsTheLowEightBits) {
    EXPECT_EQ(lowByte(255), 255);
    EXPECT_EQ(lowByte(256), 0);
    EXPECT_EQ(lowByte(-1), 255);
    EXPECT_EQ(lowByte(-64), 192);
    EXPECT_EQ(lowByte(kMost), 255);
    EXPECT_EQ(lowByte(kLeast), 0);
}

}  // namespace
