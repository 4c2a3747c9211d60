#include "fitter/safe_width.h"

#include <gtest/gtest.h>

namespace kelp_test {
namespace {

TEST(SafeWidth, IsTheLargestThatIsFourMoreThanAMultipleOfEight) {
    for (unsigned page = 0; page <= 4096; ++page) {
        unsigned expected = 0;
        for (unsigned width = 0; width <= page; ++width) {
            if (width % 8 == 4) {
                expected = width;
            }
        }
        EXPECT_EQ(safeWidth(page), expected) << page;
    }
}

TEST(SafeWidth, IsAMultipleOfFourAndNotOfEight) {
    for (unsigned page = 4; page <= 4096; ++page) {
        EXPECT_EQ(safeWidth(page) % 4, 0U) << page;
        EXPECT_NE(safeWidth(page) % 8, 0U) << page;
        EXPECT_LT(page - safeWidth(page), 8U) << page;
    }
}

TEST(SafeWidth, OfTheWidestPageDoesNotOverflow) {
    // 2^32 - 1 is 7 more than a multiple of 8.
    EXPECT_EQ(safeWidth(4294967295U), 4294967292U);
    EXPECT_EQ(safeWidth(4294967288U), 4294967284U);
}

TEST(SafeWidth, IsKnownToTheCompiler) {
    static_assert(safeWidth(812) == 812);
    static_assert(safeWidth(808) == 804);
    static_assert(safeWidth(3) == 0);
}

}  // namespace
}  // namespace kelp_test
