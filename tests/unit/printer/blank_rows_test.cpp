#include "printer/blank_rows.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <vector>

namespace kelp_test {
namespace {

// A page of 4-byte rows, blank but for the rows named. Its last byte is the last of the allocation,
// so that a sanitizer sees every read past the page.
std::vector<unsigned char> page(unsigned long height, const std::vector<unsigned long>& inked,
                                std::size_t column = 1) {
    std::vector<unsigned char> pixels(height * 4);
    pixels.shrink_to_fit();
    for (const unsigned long row : inked) {
        pixels[row * 4 + column] = 1;
    }
    return pixels;
}

unsigned long from_front(const std::vector<unsigned char>& pixels, unsigned long skip = 0) {
    return kelpImageCountBlankLinesFromFront(pixels.data(), 4, pixels.size() / 4, skip, 4);
}

unsigned long from_back(const std::vector<unsigned char>& pixels, unsigned long skip = 0) {
    return kelpImageCountBlankLinesFromBack(pixels.data(), 4, pixels.size() / 4, skip, 4);
}

TEST(BlankRowsFromFront, CountsFromTheSecondRow) {
    EXPECT_EQ(from_front(page(20, {10})), 9UL);
    EXPECT_EQ(from_front(page(20, {1})), 0UL);
    EXPECT_EQ(from_front(page(20, {2})), 1UL);
    EXPECT_EQ(from_front(page(20, {19})), 18UL);
}

TEST(BlankRowsFromFront, NeverLooksAtTheFirstRow) {
    EXPECT_EQ(from_front(page(20, {0})), 20UL);
    EXPECT_EQ(from_front(page(20, {0, 5})), 4UL);
    EXPECT_EQ(from_front(page(1, {0})), 1UL);
}

TEST(BlankRowsFromFront, ABlankPageIsBlankToItsEnd) {
    EXPECT_EQ(from_front(page(1, {})), 1UL);
    EXPECT_EQ(from_front(page(7, {})), 7UL);
}

TEST(BlankRowsFromFront, APageWithoutRowsHasNone) {
    const unsigned char nothing = 1;
    EXPECT_EQ(kelpImageCountBlankLinesFromFront(&nothing, 1, 0, 0, 1), 0UL);
    EXPECT_EQ(kelpImageCountBlankLinesFromBack(&nothing, 1, 0, 0, 1), 0UL);
}

TEST(BlankRowsFromFront, TheFirstInkedRowDecides) {
    EXPECT_EQ(from_front(page(20, {4, 5, 12})), 3UL);
}

TEST(BlankRowsFromBack, IsTheEndOfTheContent) {
    EXPECT_EQ(from_back(page(20, {10})), 11UL);
    EXPECT_EQ(from_back(page(20, {0})), 1UL);
    EXPECT_EQ(from_back(page(20, {19})), 20UL);
    EXPECT_EQ(from_back(page(20, {3, 4, 12})), 13UL);
    EXPECT_EQ(from_back(page(1, {0})), 1UL);
}

TEST(BlankRowsFromBack, ABlankPageHasNoContent) {
    EXPECT_EQ(from_back(page(1, {})), 0UL);
    EXPECT_EQ(from_back(page(7, {})), 0UL);
}

TEST(BlankRows, AnyByteButZeroIsInk) {
    for (const int value : {1, 2, 127, 128, 255}) {
        std::vector<unsigned char> pixels(5 * 4);
        pixels[2 * 4 + 3] = static_cast<unsigned char>(value);
        EXPECT_EQ(from_front(pixels), 1UL) << value;
        EXPECT_EQ(from_back(pixels), 3UL) << value;
    }
}

TEST(BlankRows, EveryColumnIsExamined) {
    for (std::size_t column = 0; column < 4; ++column) {
        EXPECT_EQ(from_front(page(6, {3}, column)), 2UL) << column;
        EXPECT_EQ(from_back(page(6, {3}, column)), 4UL) << column;
    }
}

TEST(BlankRows, SkippedPixelsAtTheRightAreNotExamined) {
    const auto last_column = page(6, {3}, 3);
    EXPECT_EQ(from_front(last_column, 1), 6UL);
    EXPECT_EQ(from_back(last_column, 1), 0UL);
    const auto third_column = page(6, {3}, 2);
    EXPECT_EQ(from_front(third_column, 1), 2UL);
    EXPECT_EQ(from_back(third_column, 1), 4UL);
    const auto first_column = page(6, {3}, 0);
    EXPECT_EQ(from_front(first_column, 3), 2UL);
    EXPECT_EQ(from_back(first_column, 3), 4UL);
}

TEST(BlankRows, SkippingAWholeRowMakesEveryRowBlank) {
    const auto pixels = page(6, {0, 1, 2, 3, 4, 5});
    EXPECT_EQ(from_front(pixels, 4), 6UL);
    EXPECT_EQ(from_back(pixels, 4), 0UL);
}

TEST(BlankRows, SkippingMoreThanARowSkipsNothing) {
    const auto pixels = page(6, {3}, 3);
    for (const unsigned long skip : {5UL, 1UL << 40, ~0UL}) {
        EXPECT_EQ(from_front(pixels, skip), 2UL);
        EXPECT_EQ(from_back(pixels, skip), 4UL);
    }
}

TEST(BlankRows, RowsStandAStrideApart) {
    // Rows of 3 examined bytes, 5 bytes apart; the 2 bytes between them are always inked.
    std::vector<unsigned char> pixels(4 * 5);
    for (std::size_t row = 0; row < 4; ++row) {
        pixels[row * 5 + 3] = pixels[row * 5 + 4] = 9;
    }
    EXPECT_EQ(kelpImageCountBlankLinesFromFront(pixels.data(), 3, 4, 0, 5), 4UL);
    EXPECT_EQ(kelpImageCountBlankLinesFromBack(pixels.data(), 3, 4, 0, 5), 0UL);
    pixels[2 * 5] = 1;
    EXPECT_EQ(kelpImageCountBlankLinesFromFront(pixels.data(), 3, 4, 0, 5), 1UL);
    EXPECT_EQ(kelpImageCountBlankLinesFromBack(pixels.data(), 3, 4, 0, 5), 3UL);
}

TEST(BlankRows, RowsMayOverlapWhereTheirLengthExceedsTheStride) {
    // 4 bytes examined, 2 apart, so row 1 reaches into row 2's bytes. 3 rows need 2 * 2 + 4 bytes.
    const std::vector<unsigned char> pixels{0, 0, 0, 0, 7, 0, 0, 0};
    EXPECT_EQ(kelpImageCountBlankLinesFromFront(pixels.data(), 4, 3, 0, 2), 0UL);
    EXPECT_EQ(kelpImageCountBlankLinesFromBack(pixels.data(), 4, 3, 0, 2), 3UL);
}

}  // namespace
}  // namespace kelp_test
