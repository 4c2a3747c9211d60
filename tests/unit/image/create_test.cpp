#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>

#include "image/cx_image.h"
#include "tests/unit/image/image_pixels.h"

namespace {

using namespace kelp_test;

struct Depth {
    std::uint32_t asked;
    std::uint32_t bpp;
    std::uint32_t colours;
};

TEST(CxImageCreate, NormalisesTheDepthAndSizesThePaletteByIt) {
    for (const Depth depth :
         {Depth{0, 1, 2}, Depth{1, 1, 2}, Depth{2, 4, 16}, Depth{3, 4, 16}, Depth{4, 4, 16},
          Depth{5, 8, 256}, Depth{7, 8, 256}, Depth{8, 8, 256}, Depth{9, 24, 0}, Depth{16, 24, 0},
          Depth{24, 24, 0}, Depth{32, 24, 0}, Depth{0xFFFFFFFF, 24, 0}}) {
        SCOPED_TRACE(depth.asked);
        CxImage image;
        ASSERT_NE(image.Create(3, 2, depth.asked, 0), nullptr);
        EXPECT_EQ(image.GetBpp(), depth.bpp);
        EXPECT_EQ(image.GetNumColors(), depth.colours);
        EXPECT_EQ(image.GetPaletteSize(), depth.colours * 4);
    }
}

TEST(CxImageCreate, GivesAThreeByOneImageOfTwoBitsSixteenColoursAndAStrideOfFour) {
    CxImage image;
    ASSERT_NE(image.Create(3, 1, 2, 0), nullptr);
    EXPECT_EQ(image.GetWidth(), 3U);
    EXPECT_EQ(image.GetHeight(), 1U);
    EXPECT_EQ(image.GetBpp(), 4U);
    EXPECT_EQ(image.GetNumColors(), 16U);
    EXPECT_EQ(image.GetEffWidth(), 4U);
}

TEST(CxImageCreate, PadsEveryRowToAMultipleOfFourBytes) {
    struct Stride {
        std::uint32_t bpp, width, bytes;
    };
    for (const Stride s :
         {Stride{1, 1, 4}, Stride{1, 32, 4}, Stride{1, 33, 8}, Stride{1, 64, 8}, Stride{1, 65, 12},
          Stride{4, 1, 4}, Stride{4, 8, 4}, Stride{4, 9, 8}, Stride{4, 17, 12}, Stride{8, 1, 4},
          Stride{8, 4, 4}, Stride{8, 5, 8}, Stride{8, 812, 812}, Stride{8, 813, 816},
          Stride{24, 1, 4}, Stride{24, 2, 8}, Stride{24, 3, 12}, Stride{24, 4, 12},
          Stride{24, 5, 16}}) {
        CxImage image;
        ASSERT_NE(image.Create(s.width, 2, s.bpp, 0), nullptr);
        EXPECT_EQ(image.GetEffWidth(), s.bytes) << s.width << " pixels of " << s.bpp << " bits";
    }
}

TEST(CxImageCreate, CountsHeaderPaletteAndRowsInTheSize) {
    CxImage image;
    ASSERT_NE(image.Create(5, 3, 1, 0), nullptr);
    EXPECT_EQ(image.GetSize(), 40U + 2 * 4 + 3 * 4);
    ASSERT_NE(image.Create(5, 3, 4, 0), nullptr);
    EXPECT_EQ(image.GetSize(), 40U + 16 * 4 + 3 * 4);
    ASSERT_NE(image.Create(5, 3, 8, 0), nullptr);
    EXPECT_EQ(image.GetSize(), 40U + 256 * 4 + 3 * 8);
    ASSERT_NE(image.Create(5, 3, 24, 0), nullptr);
    EXPECT_EQ(image.GetSize(), 40U + 3 * 16);
}

TEST(CxImageCreate, OpensTheBlockWithTheInformationHeader) {
    CxImage image;
    const std::uint8_t* block = image.Create(5, 3, 8, 77);
    ASSERT_NE(block, nullptr);
    BITMAPINFOHEADER header;
    std::memcpy(&header, block, sizeof header);
    EXPECT_EQ(header.biSize, 40U);
    EXPECT_EQ(header.biWidth, 5);
    EXPECT_EQ(header.biHeight, 3);
    EXPECT_EQ(header.biPlanes, 1);
    EXPECT_EQ(header.biBitCount, 8);
    EXPECT_EQ(header.biCompression, 0U);
    EXPECT_EQ(header.biSizeImage, 24U);
    EXPECT_EQ(header.biXPelsPerMeter, 0);
    EXPECT_EQ(header.biYPelsPerMeter, 0);
    EXPECT_EQ(header.biClrUsed, 256U);
    EXPECT_EQ(header.biClrImportant, 0U);
}

TEST(CxImageCreate, LaysOutHeaderPaletteAndRowsOneAfterAnother) {
    for (const Depth depth : {Depth{1, 1, 2}, Depth{4, 4, 16}, Depth{8, 8, 256}}) {
        CxImage image;
        std::uint8_t* block = image.Create(9, 4, depth.bpp, 0);
        ASSERT_NE(block, nullptr);
        EXPECT_EQ(reinterpret_cast<std::uint8_t*>(image.GetPalette()), block + 40);
        EXPECT_EQ(image.GetBits(), block + 40 + depth.colours * 4);
    }
    CxImage image;
    std::uint8_t* block = image.Create(9, 4, 24, 0);
    ASSERT_NE(block, nullptr);
    EXPECT_EQ(image.GetPalette(), nullptr);
    EXPECT_EQ(image.GetBits(), block + 40);
}

TEST(CxImageCreate, ZeroesPaletteRowsAndPaddingAtEveryDepth) {
    for (const std::uint32_t bpp : {1U, 4U, 8U, 24U}) {
        CxImage image;
        // The block of a used and freed image is the likely place of the next one.
        std::uint8_t* used = image.Create(13, 11, bpp, 0);
        ASSERT_NE(used, nullptr);
        std::memset(used, 0xA5, image.GetSize());
        const std::uint8_t* block = image.Create(13, 11, bpp, 0);
        ASSERT_NE(block, nullptr);
        EXPECT_TRUE(std::all_of(block + 40, block + image.GetSize(),
                                [](std::uint8_t byte) { return byte == 0; }))
            << bpp << " bits";
    }
}

TEST(CxImageCreate, RefusesAZeroWidthWithItsText) {
    CxImage image;
    EXPECT_EQ(image.Create(0, 5, 8, 0), nullptr);
    EXPECT_STREQ(image.GetLastError(), kSizeText);
    EXPECT_FALSE(image.IsValid());
}

TEST(CxImageCreate, RefusesAZeroHeightWithItsText) {
    CxImage image;
    EXPECT_EQ(image.Create(5, 0, 1, 0), nullptr);
    EXPECT_STREQ(image.GetLastError(), kSizeText);
    EXPECT_FALSE(image.IsValid());
}

TEST(CxImageCreate, FreesTheOldBlockAlsoWhenItFails) {
    CxImage image;
    makeImage(image, 8, {{1, 2, 3}});
    EXPECT_EQ(image.Create(0, 5, 8, 0), nullptr);
    EXPECT_FALSE(image.IsValid());
    EXPECT_EQ(image.GetBits(), nullptr);
    EXPECT_EQ(image.GetPalette(), nullptr);
    // The header is only written by a Create that goes through.
    EXPECT_EQ(image.GetWidth(), 3U);
    EXPECT_EQ(image.GetHeight(), 1U);
}

TEST(CxImageCreate, ReplacesAnImageByOneOfAnotherDepth) {
    CxImage image;
    makeImage(image, 8, {{1, 2, 3}, {4, 5, 6}});
    ASSERT_NE(image.Create(40, 1, 1, 0), nullptr);
    EXPECT_EQ(image.GetWidth(), 40U);
    EXPECT_EQ(image.GetHeight(), 1U);
    EXPECT_EQ(image.GetBpp(), 1U);
    EXPECT_EQ(image.GetNumColors(), 2U);
    EXPECT_EQ(image.GetEffWidth(), 8U);
    EXPECT_EQ(image.GetSize(), 40U + 8 + 8);
}

TEST(CxImageCreate, KeepsTheTextOfAnEarlierFailure) {
    CxImage image;
    EXPECT_EQ(image.Create(0, 5, 8, 0), nullptr);
    ASSERT_NE(image.Create(1, 1, 8, 0), nullptr);
    EXPECT_STREQ(image.GetLastError(), kSizeText);
}

TEST(CxImageBits, ArePointersToRowsAStrideApart) {
    CxImage image;
    ASSERT_NE(image.Create(5, 3, 8, 0), nullptr);
    std::uint8_t* first = image.GetBits(0);
    EXPECT_EQ(image.GetBits(), first);
    EXPECT_EQ(image.GetBits(1), first + 8);
    EXPECT_EQ(image.GetBits(2), first + 16);
}

TEST(CxImageBits, AreNullFromTheHeightOn) {
    CxImage image;
    ASSERT_NE(image.Create(5, 3, 8, 0), nullptr);
    EXPECT_EQ(image.GetBits(3), nullptr);
    EXPECT_EQ(image.GetBits(4), nullptr);
    EXPECT_EQ(image.GetBits(0xFFFFFFFF), nullptr);
}

TEST(CxImageBits, AreNullForAnEmptyImage) {
    const CxImage image;
    EXPECT_EQ(image.GetBits(0), nullptr);
    EXPECT_EQ(image.GetBits(1), nullptr);
}

}  // namespace
