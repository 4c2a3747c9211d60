#include "enhance/tq_image.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <cstring>
#include <limits>
#include <new>
#include <type_traits>
#include <utility>
#include <vector>

#include "tests/unit/enhance/grey_image.h"

namespace {

using namespace kelp_test;

struct Layout {
    int color;
    int channels;
};

constexpr Layout kLayouts[] = {{0, 1}, {1, 3}, {2, 3}, {3, 4}, {4, 4}, {5, 4}, {-1, 4}, {99, 4}};

TEST(TQImage, DerivesTheChannelsFromTheColour) {
    for (const Layout layout : kLayouts) {
        const TQImage image(2, 3, static_cast<TQ_IMG_COLOR>(layout.color));
        EXPECT_EQ(image.width, 2);
        EXPECT_EQ(image.height, 3);
        EXPECT_EQ(image.channels, layout.channels) << layout.color;
        EXPECT_EQ(image.color, layout.color);
        EXPECT_NE(image.data, nullptr);
    }
}

TEST(TQImage, NamesTheFiveColoursByTheirNumbers) {
    EXPECT_EQ(TQ_IMG_GRAY, 0);
    EXPECT_EQ(TQ_IMG_BGR, 1);
    EXPECT_EQ(TQ_IMG_RGB, 2);
    EXPECT_EQ(TQ_IMG_BGRA, 3);
    EXPECT_EQ(TQ_IMG_RGBA, 4);
    EXPECT_EQ(sizeof(TQ_IMG_COLOR), 4U);
}

TEST(TQImage, CopiesTheBytesItIsGiven) {
    for (const Layout layout : kLayouts) {
        std::vector<unsigned char> source;
        for (int i = 0; i < 2 * 3 * layout.channels; ++i) {
            source.push_back(static_cast<unsigned char>(i + 1));
        }
        const TQImage image(2, 3, static_cast<TQ_IMG_COLOR>(layout.color), source.data());
        EXPECT_EQ(bytesOf(image), std::vector<int>(source.begin(), source.end()));
        EXPECT_NE(image.data, source.data());
        image.data[0] = 200;
        EXPECT_EQ(source[0], 1);
    }
}

TEST(TQImage, StartsWithPixelsOfZeroWhereItIsGivenNone) {
    { const TQImage used = uniform(9, 9, 165); }
    const TQImage image(9, 9, TQ_IMG_GRAY);
    EXPECT_EQ(bytesOf(image), std::vector<int>(81, 0));
}

TEST(TQImage, CountsBytesAndPixels) {
    const TQImage image(5, 3, TQ_IMG_BGR);
    EXPECT_EQ(image.byteCount(), 45U);
    EXPECT_EQ(image.pixelCount(), 15);
    const TQImage empty(0, 3, TQ_IMG_BGR);
    EXPECT_EQ(empty.byteCount(), 0U);
    EXPECT_EQ(empty.pixelCount(), 0);
}

TEST(TQImage, StartsWithoutPixelsByDefault) {
    const TQImage image;
    EXPECT_EQ(image.width, 0);
    EXPECT_EQ(image.height, 0);
    EXPECT_EQ(image.channels, 4);
    EXPECT_EQ(image.color, TQ_IMG_BGR);
    EXPECT_EQ(image.data, nullptr);
}

TEST(TQImage, HoldsItsFieldsInOrder) {
    TQImage image;
    const auto offset = [&image](const void* field) {
        return static_cast<const char*>(field) - reinterpret_cast<const char*>(&image);
    };
    EXPECT_EQ(offset(&image.width), 0);
    EXPECT_EQ(offset(&image.height), 4);
    EXPECT_EQ(offset(&image.channels), 8);
    EXPECT_EQ(offset(&image.color), 12);
    EXPECT_EQ(offset(&image.data), 16);
    EXPECT_FALSE(std::is_polymorphic_v<TQImage>);
}

TEST(TQImage, AcceptsASizeOfZero) {
    const std::vector<unsigned char> source = {1, 2, 3};
    const TQImage narrow(0, 3, TQ_IMG_GRAY, source.data());
    EXPECT_EQ(narrow.width, 0);
    EXPECT_EQ(narrow.height, 3);
    const TQImage low(3, 0, TQ_IMG_RGBA);
    EXPECT_EQ(low.height, 0);
    EXPECT_EQ(low.channels, 4);
    const TQImage copy(low);
    EXPECT_EQ(copy.width, 3);
    EXPECT_EQ(copy.height, 0);
}

TEST(TQImage, ThrowsForANegativeSize) {
    const unsigned char source[4] = {};
    EXPECT_THROW(TQImage(-1, 5, TQ_IMG_GRAY), std::bad_alloc);
    EXPECT_THROW(TQImage(5, -1, TQ_IMG_BGR, source), std::bad_alloc);
    // also where the product hides it
    EXPECT_THROW(TQImage(-1, 0, TQ_IMG_GRAY), std::bad_alloc);
    EXPECT_THROW(TQImage(0, -1, TQ_IMG_GRAY), std::bad_alloc);
    EXPECT_THROW(TQImage(-1, -1, TQ_IMG_GRAY), std::bad_alloc);
}

TEST(TQImage, ThrowsForASizeBeyondEveryMemory) {
    constexpr int most = std::numeric_limits<int>::max();
    EXPECT_THROW(TQImage(most, most, TQ_IMG_BGRA), std::bad_alloc);
}

TEST(TQImageCopy, IsDeep) {
    const TQImage image = coloured(2, 1, TQ_IMG_RGB, {1, 2, 3, 4, 5, 6});
    const TQImage copy(image);
    EXPECT_EQ(copy.width, 2);
    EXPECT_EQ(copy.height, 1);
    EXPECT_EQ(copy.channels, 3);
    EXPECT_EQ(copy.color, TQ_IMG_RGB);
    EXPECT_NE(copy.data, image.data);
    image.data[0] = 99;
    EXPECT_EQ(bytesOf(copy), (std::vector<int>{1, 2, 3, 4, 5, 6}));
}

TEST(TQImageCopy, TakesTheChannelsAsStored) {
    TQImage image = coloured(2, 1, TQ_IMG_BGRA, {1, 2, 3, 4, 5, 6, 7, 8});
    image.channels = 2;
    const TQImage copy(image);
    EXPECT_EQ(copy.channels, 2);
    EXPECT_EQ(copy.color, TQ_IMG_BGRA);
    EXPECT_EQ(bytesOf(copy), (std::vector<int>{1, 2, 3, 4}));
    TQImage assigned;
    assigned = image;
    EXPECT_EQ(assigned.channels, 2);
    EXPECT_EQ(bytesOf(assigned), (std::vector<int>{1, 2, 3, 4}));
}

TEST(TQImageAssignment, ReplacesSizeColourAndPixels) {
    const TQImage image = coloured(2, 1, TQ_IMG_RGB, {1, 2, 3, 4, 5, 6});
    TQImage other = uniform(7, 7, 9);
    TQImage& result = other = image;
    EXPECT_EQ(&result, &other);
    EXPECT_EQ(other.width, 2);
    EXPECT_EQ(other.height, 1);
    EXPECT_EQ(other.channels, 3);
    EXPECT_EQ(other.color, TQ_IMG_RGB);
    EXPECT_NE(other.data, image.data);
    EXPECT_EQ(bytesOf(other), (std::vector<int>{1, 2, 3, 4, 5, 6}));
}

TEST(TQImageAssignment, LeavesAnImageAssignedToItself) {
    TQImage image = grey({{1, 2, 3}});
    const TQImage& same = image;
    image = same;
    EXPECT_EQ(rowsOf(image), (Rows{{1, 2, 3}}));
}

TEST(TQImageAssignment, TakesAnImageWithoutPixels) {
    TQImage image = grey({{1, 2, 3}});
    image = TQImage();
    EXPECT_EQ(image.width, 0);
    const TQImage empty;
    TQImage other = grey({{1}});
    other = empty;
    EXPECT_EQ(other.width, 0);
    EXPECT_EQ(other.height, 0);
}

TEST(TQImageMove, HandsThePixelsOnAndLeavesADefaultImage) {
    TQImage image = coloured(2, 1, TQ_IMG_RGBA, {1, 2, 3, 4, 5, 6, 7, 8});
    const unsigned char* data = image.data;
    const TQImage moved(std::move(image));
    EXPECT_EQ(moved.data, data);
    EXPECT_EQ(moved.width, 2);
    EXPECT_EQ(moved.height, 1);
    EXPECT_EQ(moved.channels, 4);
    EXPECT_EQ(moved.color, TQ_IMG_RGBA);
    // NOLINTBEGIN(bugprone-use-after-move): the state after a move is what is asked for here
    EXPECT_EQ(image.width, 0);
    EXPECT_EQ(image.height, 0);
    EXPECT_EQ(image.channels, 4);
    EXPECT_EQ(image.color, TQ_IMG_BGR);
    EXPECT_EQ(image.data, nullptr);
    // NOLINTEND(bugprone-use-after-move)
}

TEST(TQImageMove, AssignsThePixelsAndLeavesADefaultImage) {
    TQImage image = grey({{1, 2, 3}});
    const unsigned char* data = image.data;
    TQImage target = uniform(4, 4, 8);
    TQImage& result = target = std::move(image);
    EXPECT_EQ(&result, &target);
    EXPECT_EQ(target.data, data);
    EXPECT_EQ(rowsOf(target), (Rows{{1, 2, 3}}));
    // NOLINTBEGIN(bugprone-use-after-move)
    EXPECT_EQ(image.width, 0);
    EXPECT_EQ(image.height, 0);
    EXPECT_EQ(image.channels, 4);
    EXPECT_EQ(image.color, TQ_IMG_BGR);
    EXPECT_EQ(image.data, nullptr);
    // NOLINTEND(bugprone-use-after-move)
}

TEST(TQImageMove, NeverThrows) {
    EXPECT_TRUE(std::is_nothrow_move_constructible_v<TQImage>);
    EXPECT_TRUE(std::is_nothrow_move_assignable_v<TQImage>);
}

TEST(TQImageMove, KeepsAnImageMovedToItself) {
    TQImage image = grey({{1, 2, 3}});
    TQImage& same = image;
    image = std::move(same);
    // The pixels may be lost, but the image must stay one that can be used and destroyed.
    image = grey({{4, 5}});
    EXPECT_EQ(rowsOf(image), (Rows{{4, 5}}));
}

TEST(TQImageDestruction, LeavesWidthHeightAndChannelsAtZeroAndKeepsTheColour) {
    alignas(TQImage) unsigned char storage[sizeof(TQImage)];
    const unsigned char source[8] = {1, 2, 3, 4, 5, 6, 7, 8};
    auto* image = new (storage) TQImage(2, 1, TQ_IMG_RGBA, source);
    image->~TQImage();
    std::int32_t fields[4];
    std::memcpy(fields, storage, sizeof fields);
    EXPECT_EQ(fields[0], 0);
    EXPECT_EQ(fields[1], 0);
    EXPECT_EQ(fields[2], 0);
    EXPECT_EQ(fields[3], TQ_IMG_RGBA);
    unsigned char* data = nullptr;
    std::memcpy(&data, storage + 16, sizeof data);
    EXPECT_EQ(data, nullptr);
}

}  // namespace
