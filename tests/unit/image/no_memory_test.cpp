#include <gtest/gtest.h>

#include <new>

#include "image/cx_image.h"
#include "tests/unit/image/allocation_failure.h"
#include "tests/unit/image/image_pixels.h"

namespace {

using namespace kelp_test;

const Rows kRows = {{1, 0, 1}, {0, 1, 1}};

TEST(CxImageWithoutMemory, FailsToCreateWithItsTextAndEndsEmpty) {
    CxImage image;
    makeImage(image, 8, kRows);
    {
        const AllocationFailure none(1);
        EXPECT_EQ(image.Create(10, 10, 8, 0), nullptr);
        EXPECT_EQ(none.refused(), 1U);
    }
    EXPECT_STREQ(image.GetLastError(), kMemoryText);
    EXPECT_FALSE(image.IsValid());
    EXPECT_EQ(image.GetBits(), nullptr);
    EXPECT_EQ(image.GetPixelIndex(0, 0), 0);
    EXPECT_FALSE(image.Light(0, 0));
    // There is memory again.
    makeImage(image, 8, kRows);
    EXPECT_EQ(indicesOf(image), kRows);
}

TEST(CxImageWithoutMemory, FailsToCreateFromAnArray) {
    CxImage image;
    const std::uint8_t page[4] = {1, 2, 3, 4};
    {
        const AllocationFailure none(1);
        EXPECT_FALSE(image.CreateFromArray(page, 4, 1, 8, 4, false));
    }
    EXPECT_STREQ(image.GetLastError(), kMemoryText);
    EXPECT_FALSE(image.IsValid());
}

TEST(CxImageWithoutMemory, RotatesIntoAnEmptyImage) {
    CxImage image;
    makeImage(image, 8, kRows);
    CxImage destination;
    makeImage(destination, 8, {{9}});
    {
        const AllocationFailure none(1);
        EXPECT_TRUE(image.Rotate180(&destination));
    }
    EXPECT_EQ(indicesOf(image), kRows);
    EXPECT_FALSE(destination.IsValid());
    EXPECT_STREQ(destination.GetLastError(), kMemoryText);
    {
        const AllocationFailure none(1);
        EXPECT_TRUE(image.Rotate180());
    }
    EXPECT_FALSE(image.IsValid());
    EXPECT_STREQ(image.GetLastError(), kMemoryText);
}

TEST(CxImageWithoutMemory, MirrorsAndCentresIntoAnEmptyImage) {
    CxImage image;
    makeImage(image, 8, kRows);
    {
        const AllocationFailure none(1);
        image.Mirror();
    }
    EXPECT_FALSE(image.IsValid());
    EXPECT_STREQ(image.GetLastError(), kMemoryText);
    CxImage narrow;
    makeImage(narrow, 8, kRows);
    {
        const AllocationFailure none(1);
        narrow.MakeCenter(9);
    }
    EXPECT_FALSE(narrow.IsValid());
    EXPECT_STREQ(narrow.GetLastError(), kMemoryText);
}

TEST(CxImageWithoutMemory, LeavesTheImageWhenItCannotBeExpanded) {
    for (const std::uint32_t bpp : {1U, 4U, 8U}) {
        CxImage image;
        makeImage(image, bpp, kRows);
        {
            const AllocationFailure none(1);
            EXPECT_FALSE(image.Expand(1, 1, 1, 1, rgb(0, 0, 0)));
        }
        EXPECT_STREQ(image.GetLastError(), kMemoryText);
        EXPECT_EQ(image.GetBpp(), bpp);
        EXPECT_EQ(indicesOf(image), kRows);
    }
}

TEST(CxImageWithoutMemory, LeavesTheImageWhenItsDepthCannotBeIncreased) {
    for (const std::uint32_t bpp : {4U, 8U, 24U}) {
        CxImage image;
        makeImage(image, 1, kRows);
        {
            const AllocationFailure none(1);
            EXPECT_FALSE(image.IncreaseBpp(bpp));
        }
        EXPECT_STREQ(image.GetLastError(), kMemoryText);
        EXPECT_EQ(image.GetBpp(), 1U);
        EXPECT_EQ(indicesOf(image), kRows);
    }
}

TEST(CxImageWithoutMemory, LeavesTheImageWhenItCannotBeDithered) {
    for (long method = 0; method <= 8; ++method) {
        CxImage image;
        makeImage(image, 8, {{1, 200, 3}});
        {
            const AllocationFailure none(1);
            EXPECT_FALSE(image.Dither(method)) << method;
        }
        EXPECT_STREQ(image.GetLastError(), kMemoryText);
        EXPECT_EQ(image.GetBpp(), 8U);
        EXPECT_EQ(indicesOf(image), (Rows{{1, 200, 3}}));
        {
            const AllocationFailure none(1);
            EXPECT_FALSE(image.DitherAt8Bits(method)) << method;
        }
        EXPECT_EQ(indicesOf(image), (Rows{{1, 200, 3}}));
        EXPECT_EQ(text(image.GetPaletteColor(200)), "200,200,200,0");
    }
}

TEST(CxImageWithoutMemory, HalftonesAnImageOf8BitsInItsOwnMemory) {
    // 64 rows: the image has 5,160 bytes, that of its dots 560.
    for (long method = 0; method <= 8; ++method) {
        CxImage image;
        makeImage(image, 8, Rows(64, std::vector<int>(64, 255)));
        {
            const AllocationFailure large(4096);
            EXPECT_TRUE(image.DitherAt8Bits(method)) << method;
        }
        EXPECT_EQ(indicesOf(image), Rows(64, std::vector<int>(64, 1)));
    }
}

TEST(CxImageWithoutMemory, ThrowsAndLeavesTheImageWhenARowBufferFindsNoRoom) {
    // 4000 pixels: the one-bit image needs 548 bytes, a row of grey values more.
    for (const std::uint32_t bpp : {4U, 8U}) {
        for (long method = 0; method <= 8; ++method) {
            const bool takesRowsAsTheyAre = bpp == 8 && (method == 0 || method == 1 || method == 7);
            CxImage image;
            makeImage(image, bpp, {std::vector<int>(4000, 10)});
            if (!takesRowsAsTheyAre) {
                const AllocationFailure large(2000);
                EXPECT_THROW(image.Dither(method), std::bad_alloc);
                EXPECT_EQ(large.refused(), 1U);
            }
            EXPECT_EQ(image.GetBpp(), bpp);
            EXPECT_EQ(indicesOf(image), (Rows{std::vector<int>(4000, 10)}));
            const AllocationFailure large(takesRowsAsTheyAre ? 2000 : 1000000);
            EXPECT_TRUE(image.Dither(method));
            EXPECT_EQ(large.refused(), 0U);
            EXPECT_EQ(image.GetBpp(), 1U);
        }
    }
}

}  // namespace
