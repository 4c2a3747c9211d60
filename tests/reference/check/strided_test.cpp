#include "tests/reference/strided.h"

#include <gtest/gtest.h>

namespace reference {

namespace {

using Bytes = std::vector<unsigned char>;

// Two pixels a row, four bytes a row.
StridedImage twoByTwo() {
    return StridedImage{2, 2, 4, {10, 20, 1, 2, 30, 40, 3, 4}};
}

}  // namespace

TEST(ReferenceStrided, RowsArePaddedToFourBytes) {
    EXPECT_EQ(stridedRowBytes(1), 4);
    EXPECT_EQ(stridedRowBytes(4), 4);
    EXPECT_EQ(stridedRowBytes(5), 8);
    EXPECT_EQ(stridedRowBytes(812), 812);
}

TEST(ReferenceStrided, LoadingTakesBytesBehindTheWidthIntoThePadding) {
    const Bytes page{1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12};
    EXPECT_EQ(loadStrided(page.data(), 2, 2, 6)->px, (Bytes{1, 2, 3, 4, 7, 8, 9, 10}));
    EXPECT_EQ(loadStrided(page.data(), 2, 2, 3)->px, (Bytes{1, 2, 3, 0, 4, 5, 6, 0}));
    EXPECT_EQ(loadStrided(page.data(), 5, 2, 5)->px,
              (Bytes{1, 2, 3, 4, 5, 0, 0, 0, 6, 7, 8, 9, 10, 0, 0, 0}));
}

TEST(ReferenceStrided, APageWithoutPixelsOrPast32BitsIsNotLoaded) {
    const Bytes page(4, 0);
    EXPECT_FALSE(loadStrided(page.data(), 0, 1, 4).has_value());
    EXPECT_FALSE(loadStrided(page.data(), 1, 0, 4).has_value());
    EXPECT_FALSE(loadStrided(page.data(), 65536, 65536, 4).has_value());
    EXPECT_FALSE(loadStrided(page.data(), 32768, 16384, 4).has_value());  // 2^32 bits
}

TEST(ReferenceStrided, LightFollowsItsTable) {
    for (int i = 0; i < 256; i++) {
        EXPECT_EQ(lightTable(0, 0)[static_cast<std::size_t>(i)], i);
        EXPECT_EQ(lightTable(0, -100)[static_cast<std::size_t>(i)], 128);
    }
    EXPECT_EQ(lightTable(0, 100)[0], 0);
    EXPECT_EQ(lightTable(0, 100)[200], 255);
    EXPECT_EQ(lightTable(0, 100)[129], 130);
    EXPECT_EQ(lightTable(50, 0)[10], 60);
    EXPECT_EQ(lightTable(50, 0)[220], 255);
}

TEST(ReferenceStrided, LightLeavesThePadding) {
    EXPECT_EQ(light(twoByTwo(), 5, 0).px, (Bytes{15, 25, 1, 2, 35, 45, 3, 4}));
}

TEST(ReferenceStrided, NegativeInvertsThePaddingToo) {
    EXPECT_EQ(negative(twoByTwo()).px, (Bytes{245, 235, 254, 253, 225, 215, 252, 251}));
    EXPECT_EQ(negative(negative(twoByTwo())).px, twoByTwo().px);
}

TEST(ReferenceStrided, TurningAndMirroringClearThePadding) {
    EXPECT_EQ(rotate180(twoByTwo()).px, (Bytes{40, 30, 0, 0, 20, 10, 0, 0}));
    EXPECT_EQ(mirror(twoByTwo()).px, (Bytes{20, 10, 0, 0, 40, 30, 0, 0}));
    EXPECT_EQ(mirror(StridedImage{1, 2, 4, {7, 1, 1, 1, 8, 1, 1, 1}}).px,
              (Bytes{7, 0, 0, 0, 8, 0, 0, 0}));
}

TEST(ReferenceStrided, DitheringLeavesIndicesAndClearPadding) {
    const StridedImage image{2, 2, 4, {128, 129, 255, 255, 129, 0, 255, 255}};
    EXPECT_EQ(ditherToIndices(image, 0).px, (Bytes{0, 1, 0, 0, 1, 0, 0, 0}));
}

}  // namespace reference
