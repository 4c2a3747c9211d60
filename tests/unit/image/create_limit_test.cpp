#include <gtest/gtest.h>

#include "image/cx_image.h"
#include "tests/unit/image/image_pixels.h"

namespace {

using namespace kelp_test;

struct Size {
    std::uint32_t width, height, bpp;
};

void expectRefused(Size size) {
    CxImage image;
    makeImage(image, 8, {{1}});
    EXPECT_EQ(image.Create(size.width, size.height, size.bpp, 0), nullptr)
        << size.width << " x " << size.height << " x " << size.bpp;
    EXPECT_STREQ(image.GetLastError(), kLimitText);
    EXPECT_FALSE(image.IsValid());
}

TEST(CxImageCreateLimit, RefusesAProductThatWrapsToSomethingElse) {
    // (2^32 - 1) * 8 wraps to 2^32 - 8, an eighth of which is not 2^32 - 1.
    expectRefused({65537, 65535, 8});
    // 2^29 * 8 wraps to 0.
    expectRefused({32768, 16384, 8});
    // 2^30 * 4 wraps to 0.
    expectRefused({32768, 32768, 4});
    // 178956971 * 24 is 2^32 + 8.
    expectRefused({178956971, 1, 24});
}

TEST(CxImageCreateLimit, RefusesASquareOfSixtyFiveThousandWhoseProductsWrapToZero) {
    // 65536 * 65536 is 2^32: 0 on both sides of the comparison.
    expectRefused({65536, 65536, 8});
    expectRefused({65536, 65536, 24});
}

TEST(CxImageCreateLimit, RefusesARowOfSoManyBitsThatTheStrideWraps) {
    // 8 * (2^29 - 1) is 2^32 - 8 and fits; with the 31 of the stride rule it wraps to 23, which
    // makes a row of no bytes.
    expectRefused({(1U << 29) - 1, 1, 8});
    expectRefused({(1U << 30) - 1, 1, 4});
    expectRefused({0xFFFFFFFF, 1, 1});
    // 24 * 178956970 is 2^32 - 16.
    expectRefused({178956970, 1, 24});
}

TEST(CxImageCreateLimit, RefusesNarrowRowsWhosePaddingNoLongerFits) {
    // One pixel a row takes four bytes: 2^30 rows are 2^32 bytes, though only 2^30 bits.
    expectRefused({1, 1U << 30, 1});
    expectRefused({1, 1U << 31, 1});
    expectRefused({1, 0xFFFFFFFF, 1});
    expectRefused({33, 1U << 29, 1});
    // 2^30 - 1 rows are 2^32 - 4 bytes, and header and palette come on top.
    expectRefused({1, (1U << 30) - 1, 1});
}

TEST(CxImageCreateLimit, TestsTheNormalisedDepth) {
    // 40000 * 40000 * 2 would fit 32 bits, the four bits a pixel that come of it do not.
    expectRefused({40000, 40000, 2});
    // 20000 * 20000 * 9 would fit, times 24 it does not.
    expectRefused({20000, 20000, 9});
}

TEST(CxImageCreateLimit, AcceptsAnyLargeDepthForASmallImage) {
    // With 2^32 - 1 bits a pixel as asked the product would wrap; 24 are what is made.
    CxImage image;
    EXPECT_NE(image.Create(2, 2, 0xFFFFFFFF, 0), nullptr);
    EXPECT_EQ(image.GetBpp(), 24U);
}

TEST(CxImageCreateLimit, AcceptsALargePage) {
    // 16384 * 16384 * 8 is 2^31.
    CxImage image;
    ASSERT_NE(image.Create(16384, 16384, 8, 0), nullptr);
    EXPECT_EQ(image.GetEffWidth(), 16384U);
    EXPECT_EQ(image.GetSize(), 40U + 1024 + (1U << 28));
    EXPECT_EQ(image.GetBits(16383), image.GetBits() + std::size_t{16383} * 16384);
}

}  // namespace
