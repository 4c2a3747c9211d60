// Rows and images turned round.

#include <gtest/gtest.h>

#include <cstdint>
#include <memory>
#include <vector>

#include "image/byte_reversal.h"
#include "image/cx_image.h"
#include "tests/property/random_images.h"
#include "tests/reference/strided.h"

namespace {

using namespace kelp_test;

// Both rows end with their blocks, so that a sanitizer sees what is touched behind them.
TEST(ByteReversal, ReversesRowsOfEveryLengthAtEveryMisalignment) {
    constexpr std::size_t longest = 100;
    constexpr std::size_t largest_offset = 16;
    for (std::size_t count = 0; count <= longest; ++count) {
        for (std::size_t offset = 0; offset <= largest_offset; ++offset) {
            const auto from = std::make_unique<std::uint8_t[]>(offset + count);
            const auto to = std::make_unique<std::uint8_t[]>(largest_offset - offset + count);
            for (std::size_t i = 0; i < count; ++i) {
                from[offset + i] = static_cast<std::uint8_t>(7 * i + 3);
            }
            std::uint8_t* const row = to.get() + largest_offset - offset;
            reverseBytes(from.get() + offset, count, row);
            for (std::size_t i = 0; i < count; ++i) {
                ASSERT_EQ(row[count - 1 - i], static_cast<std::uint8_t>(7 * i + 3))
                    << "byte " << i << " of " << count << " at " << offset;
            }
            for (std::size_t i = 0; i < largest_offset - offset; ++i) {
                ASSERT_EQ(to[i], 0) << "before the row, " << count << " at " << offset;
            }
        }
    }
}

TEST(ByteReversal, ImagesOfEverySizeAreMirroredAndTurnedLikeTheReference) {
    forRandomImages(71, [](const reference::GrayImage& grey, Random&) {
        const auto loaded =
            reference::loadStrided(grey.px.data(), grey.width, grey.height, grey.width);
        CxImage mirrored;
        load(mirrored, grey);
        mirrored.Mirror();
        EXPECT_EQ(bytesOf(mirrored).px, reference::mirror(*loaded).px);
        CxImage turned;
        load(turned, grey);
        EXPECT_TRUE(turned.Rotate180());
        EXPECT_EQ(bytesOf(turned).px, reference::rotate180(*loaded).px);
    });
}

}  // namespace
