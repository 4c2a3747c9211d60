#include "preview/bitmap.h"

#include <gtest/gtest.h>

#include <random>

namespace {

using kelp_preview::Bitmap;

TEST(PreviewBitmap, TurningMovesEachDotToTheOppositeCornerForEveryWidth) {
    std::mt19937 random(41);
    for (std::uint64_t width = 1; width <= 40; ++width) {
        Bitmap bitmap(width, 3);
        for (std::uint64_t i = 0; i < width * 3; ++i) {
            if (random() % 2 == 0) {
                bitmap.setDot(i % width, i / width);
            }
        }
        const Bitmap result = turned(bitmap);
        ASSERT_EQ(result.width, width);
        ASSERT_EQ(result.height, 3U);
        for (std::uint64_t i = 0; i < width * 3; ++i) {
            const std::uint64_t x = i % width;
            const std::uint64_t y = i / width;
            ASSERT_EQ(result.dot(x, y), bitmap.dot(width - 1 - x, 2 - y))
                << width << " " << x << " " << y;
        }
        // no dot beyond the width either
        ASSERT_EQ(blackDots(result), blackDots(bitmap)) << width;
    }
}

TEST(PreviewBitmap, CountsItsDots) {
    Bitmap bitmap(10, 2);
    EXPECT_EQ(blackDots(bitmap), 0U);
    bitmap.setDot(0, 0);
    bitmap.setDot(9, 1);
    bitmap.setDot(9, 1);
    EXPECT_EQ(blackDots(bitmap), 2U);
    EXPECT_EQ(bitmap.bytes, (std::vector<unsigned char>{0x80, 0, 0, 0x40}));
}

TEST(PreviewBitmap, LayingAddsEachDotAtItsPlaceForEveryOffset) {
    std::mt19937 random(17);
    for (std::uint64_t width = 1; width <= 20; ++width) {
        Bitmap picture(width, 2);
        for (std::uint64_t i = 0; i < width * 2; ++i) {
            if (random() % 2 == 0) {
                picture.setDot(i % width, i / width);
            }
        }
        for (std::uint64_t left = 0; left <= 17; ++left) {
            // As narrow as it may be, with a dot of its own.
            Bitmap target(left + width, 4);
            target.setDot(left, 1);
            lay(picture, left, 1, target);
            for (std::uint64_t y = 0; y < 4; ++y) {
                for (std::uint64_t x = 0; x < target.width; ++x) {
                    const bool within = x >= left && (y == 1 || y == 2);
                    const bool own = x == left && y == 1;
                    ASSERT_EQ(target.dot(x, y), own || (within && picture.dot(x - left, y - 1)))
                        << width << " at " << left << ": " << x << " " << y;
                }
            }
        }
    }
}

}  // namespace
