// The numeric approximations held to the reference, bit by bit.

#include <gtest/gtest.h>

#include <bit>
#include <cmath>
#include <cstdint>
#include <limits>

#include "enhance/numeric.h"
#include "tests/reference/numeric.h"
#include "tests/support/grey_pages.h"

namespace {

std::uint32_t bits(float value) {
    // One not-a-number is as good as another.
    return std::isnan(value) ? 0x7FC00000U : std::bit_cast<std::uint32_t>(value);
}

/// Floats of every exponent and sign, and the special ones.
template <typename Check>
void forFloats(std::uint64_t seed, int lowestExponent, int highestExponent, Check check) {
    kelp_test::Random random(seed);
    for (int exponent = lowestExponent; exponent <= highestExponent; ++exponent) {
        for (int i = 0; i < 200; ++i) {
            const auto mantissa = static_cast<std::uint32_t>(random.next() & 0x007FFFFFU);
            const std::uint32_t sign = i % 4 == 0 ? 0x80000000U : 0;
            check(std::bit_cast<float>(sign | static_cast<std::uint32_t>(exponent) << 23 |
                                       (i == 1 ? 0 : mantissa)));
        }
    }
}

template <typename Check>
void forSpecialFloats(Check check) {
    using Limits = std::numeric_limits<float>;
    for (const float x : {0.0F, -0.0F, 0.5F, -0.5F, 1.0F, -1.0F, 2147483520.0F, 2147483648.0F,
                          -2147483648.0F, Limits::max(), Limits::lowest(), Limits::infinity(),
                          -Limits::infinity(), Limits::quiet_NaN()}) {
        check(x);
    }
}

TEST(Rounding, MatchesTheReference) {
    const auto check = [](float x) {
        ASSERT_EQ(my_round(x), reference::myRound(x)) << x;
        ASSERT_EQ(truncateToInt(x), reference::truncateToInt(x)) << x;
        ASSERT_EQ(bits(myabs(x)), bits(reference::myAbs(x))) << x;
    };
    forFloats(21, 0, 254, check);
    forSpecialFloats(check);
}

TEST(SquareRoot, MatchesTheReference) {
    const auto check = [](float x) {
        ASSERT_EQ(bits(my_sqrt(x)), bits(reference::mySqrt(x))) << x;
    };
    forFloats(22, 0, 254, check);
    forSpecialFloats(check);
}

TEST(Exponential, MatchesTheReference) {
    const auto check = [](float x) { ASSERT_EQ(bits(my_exp(x)), bits(reference::myExp(x))) << x; };
    forFloats(23, 0, 254, check);
    forSpecialFloats(check);
}

TEST(Logarithm, MatchesTheReference) {
    const auto check = [](float x) { ASSERT_EQ(bits(my_ln(x)), bits(reference::myLn(x))) << x; };
    // From 2^-10 up; smaller ones take up to millions of steps each.
    forFloats(24, 117, 140, check);
    for (int i = 1; i <= 255; ++i) {
        check(static_cast<float>(i) / 255.0F);
        check(static_cast<float>(i) / 64.0F);
    }
    for (const float x :
         {0.0F, -0.0F, -3.0F, 1e-4F, 1e-6F, std::numeric_limits<float>::quiet_NaN()}) {
        check(x);
    }
}

TEST(Power, MatchesTheReference) {
    kelp_test::Random random(25);
    for (int i = 0; i < 20000; ++i) {
        const float base = static_cast<float>(random.between(-2000, 4000)) / 997.0F;
        const float exponent = i % 3 == 0
                                   ? static_cast<float>(random.between(-5, 5))
                                   : static_cast<float>(random.between(-3000, 3000)) / 1000.0F;
        if (base > 0.0F && base < 0.01F) {
            continue;  // slow, and covered by the logarithm's own test
        }
        ASSERT_EQ(bits(my_pow(base, exponent)), bits(reference::myPow(base, exponent)))
            << base << " to the " << exponent;
    }
}

}  // namespace
