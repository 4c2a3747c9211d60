#include <gtest/gtest.h>

#include <type_traits>

#include "image/cx_image.h"
#include "tests/unit/image/image_pixels.h"

namespace {

using namespace kelp_test;

static_assert(!std::is_copy_constructible_v<CxImage> && !std::is_copy_assignable_v<CxImage>,
              "two images must never own one block");

TEST(CxImageOwnership, StartsEmpty) {
    const CxImage image;
    EXPECT_FALSE(image.IsValid());
    EXPECT_STREQ(image.GetLastError(), "");
    EXPECT_EQ(image.GetWidth(), 0U);
    EXPECT_EQ(image.GetHeight(), 0U);
    EXPECT_EQ(image.GetEffWidth(), 0U);
    EXPECT_EQ(image.GetNumColors(), 0U);
    EXPECT_EQ(image.GetPaletteSize(), 0U);
    EXPECT_EQ(image.GetBits(), nullptr);
    EXPECT_EQ(image.GetPalette(), nullptr);
}

TEST(CxImageDestroy, FreesTheBlockAndKeepsHeaderAndStride) {
    CxImage image;
    makeImage(image, 8, {{1, 2, 3, 4, 5}});
    EXPECT_TRUE(image.Destroy());
    EXPECT_FALSE(image.IsValid());
    EXPECT_EQ(image.GetBits(), nullptr);
    EXPECT_EQ(image.GetPalette(), nullptr);
    EXPECT_EQ(image.GetWidth(), 5U);
    EXPECT_EQ(image.GetHeight(), 1U);
    EXPECT_EQ(image.GetEffWidth(), 8U);
    EXPECT_EQ(image.GetNumColors(), 256U);
}

TEST(CxImageDestroy, IsTrueForAnEmptyImageToo) {
    CxImage image;
    EXPECT_TRUE(image.Destroy());
    EXPECT_TRUE(image.Destroy());
    EXPECT_FALSE(image.IsValid());
}

TEST(CxImageTransfer, MovesBlockHeaderAndStride) {
    CxImage from;
    makeImage(from, 4, {{1, 2, 3}, {4, 5, 6}});
    const std::uint8_t* bits = from.GetBits();
    CxImage to;
    EXPECT_TRUE(to.Transfer(from));
    EXPECT_EQ(to.GetBits(), bits);
    EXPECT_EQ(to.GetBpp(), 4U);
    EXPECT_EQ(to.GetEffWidth(), 4U);
    EXPECT_EQ(indicesOf(to), (Rows{{1, 2, 3}, {4, 5, 6}}));
    EXPECT_EQ(to.GetPixelIndex(1, 1), 5);
}

TEST(CxImageTransfer, LeavesTheSourceAsIfNew) {
    CxImage from;
    EXPECT_EQ(from.Create(0, 1, 8, 0), nullptr);
    makeImage(from, 8, {{1, 2, 3}});
    CxImage to;
    EXPECT_TRUE(to.Transfer(from));
    EXPECT_FALSE(from.IsValid());
    EXPECT_EQ(from.GetWidth(), 0U);
    EXPECT_EQ(from.GetHeight(), 0U);
    EXPECT_EQ(from.GetBpp(), 0U);
    EXPECT_EQ(from.GetEffWidth(), 0U);
    EXPECT_EQ(from.GetNumColors(), 0U);
    EXPECT_STREQ(from.GetLastError(), "");
}

TEST(CxImageTransfer, CarriesTheLastErrorAlong) {
    CxImage from;
    EXPECT_EQ(from.Create(0, 1, 8, 0), nullptr);
    CxImage to;
    EXPECT_TRUE(to.Transfer(from));
    EXPECT_STREQ(to.GetLastError(), kSizeText);
}

TEST(CxImageTransfer, ReplacesTheOldImage) {
    CxImage to;
    makeImage(to, 8, {{9, 9}, {9, 9}});
    CxImage from;
    makeImage(from, 1, {{1, 0, 1}});
    EXPECT_TRUE(to.Transfer(from));
    EXPECT_EQ(to.GetBpp(), 1U);
    EXPECT_EQ(indicesOf(to), (Rows{{1, 0, 1}}));
}

TEST(CxImageTransfer, EmptiesTheImageWhenTheSourceIsEmpty) {
    CxImage to;
    makeImage(to, 8, {{9, 9}, {9, 9}});
    CxImage from;
    EXPECT_TRUE(to.Transfer(from));
    EXPECT_FALSE(to.IsValid());
    EXPECT_EQ(to.GetWidth(), 0U);
    EXPECT_EQ(to.GetEffWidth(), 0U);
}

TEST(CxImageTransfer, MovesWhateverTheFlagSays) {
    for (const bool flag : {false, true}) {
        CxImage from;
        makeImage(from, 8, {{7, 8}});
        CxImage to;
        EXPECT_TRUE(to.Transfer(from, flag));
        EXPECT_FALSE(from.IsValid());
        EXPECT_EQ(indicesOf(to), (Rows{{7, 8}}));
    }
}

TEST(CxImageTransfer, CarriesTheNearestColourCacheAlong) {
    CxImage from;
    makeImage(from, 8, {{0}});
    EXPECT_EQ(from.GetNearestIndex(rgb(70, 70, 70)), 70);
    CxImage to;
    EXPECT_TRUE(to.Transfer(from));
    to.SetPaletteColor(70, 1, 1, 1, 0);
    EXPECT_EQ(to.GetNearestIndex(rgb(70, 70, 70)), 70);
    // The source's cache is gone: an image made in it searches anew.
    makeImage(from, 1, {{0}});
    EXPECT_EQ(from.GetNearestIndex(rgb(70, 70, 70)), 0);
}

TEST(CxImageCopyInfo, CopiesStrideAndLastErrorIntoAnEmptyImage) {
    CxImage source;
    EXPECT_EQ(source.Create(0, 1, 8, 0), nullptr);
    makeImage(source, 8, {{1, 2, 3, 4, 5}});
    CxImage image;
    image.CopyInfo(source);
    EXPECT_EQ(image.GetEffWidth(), 8U);
    EXPECT_STREQ(image.GetLastError(), kSizeText);
}

TEST(CxImageCopyInfo, CopiesNeitherHeaderNorBlock) {
    CxImage source;
    makeImage(source, 8, {{1, 2, 3, 4, 5}});
    CxImage image;
    image.CopyInfo(source);
    EXPECT_FALSE(image.IsValid());
    EXPECT_EQ(image.GetWidth(), 0U);
    EXPECT_EQ(image.GetHeight(), 0U);
    EXPECT_EQ(image.GetNumColors(), 0U);
    EXPECT_EQ(image.GetBits(), nullptr);
    EXPECT_EQ(image.GetPixelIndex(-1, 0), 0);
    // The source keeps what it had.
    EXPECT_EQ(indicesOf(source), (Rows{{1, 2, 3, 4, 5}}));
}

TEST(CxImageCopyInfo, CopiesTheNearestColourCache) {
    CxImage source;
    makeImage(source, 8, {{0}});
    EXPECT_EQ(source.GetNearestIndex(rgb(200, 200, 200)), 200);
    CxImage image;
    image.CopyInfo(source);
    makeImage(image, 8, {{0}});
    image.SetPaletteColor(3, 200, 200, 200, 0);
    EXPECT_EQ(image.GetNearestIndex(rgb(200, 200, 200)), 200);
}

TEST(CxImageCopyInfo, ChangesNothingInAnImageWithABlock) {
    CxImage source;
    EXPECT_EQ(source.Create(0, 1, 8, 0), nullptr);
    makeImage(source, 8, {{1, 2, 3, 4, 5}});
    CxImage image;
    makeImage(image, 8, {{6}});
    image.CopyInfo(source);
    EXPECT_EQ(image.GetEffWidth(), 4U);
    EXPECT_STREQ(image.GetLastError(), "");
    EXPECT_EQ(indicesOf(image), (Rows{{6}}));
}

}  // namespace
