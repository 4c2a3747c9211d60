#include "printer/bmp.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <initializer_list>

#include "tests/unit/printer/support/memory_stream.h"
#include "tests/unit/printer/support/recording_printer.h"

namespace kelp_test {
namespace {

Bytes bmp(const Bytes& data, unsigned long bytesPerLine, unsigned long height, unsigned long width,
          unsigned short depth) {
    MemoryStream stream;
    writeBmp(stream.file(), data.data(), bytesPerLine, height, width, depth);
    const std::string text = stream.take();
    return {text.begin(), text.end()};
}

Bytes part(const Bytes& bytes, std::size_t begin, std::size_t end) {
    return {bytes.begin() + static_cast<std::ptrdiff_t>(begin),
            bytes.begin() + static_cast<std::ptrdiff_t>(end)};
}

// Consecutive values, so that every byte of a page shows where it went.
Bytes counting(std::size_t count) {
    Bytes bytes(count);
    for (std::size_t i = 0; i < count; ++i) {
        bytes[i] = static_cast<unsigned char>(i + 1);
    }
    return bytes;
}

TEST(GreyBmp, HeadersDeclarePaddedRows) {
    const Bytes file = bmp(counting(20), 10, 2, 10, 8);
    // 12 bytes a row, 24 of image, 1078 + 24 = 1102 = 0x44E of file; 1078 = 0x436
    const Bytes expected{'B', 'M', 0x4E, 0x04, 0, 0, 0, 0, 0, 0, 0x36, 0x04, 0, 0,  // file header
                         40,  0,   0,    0,                  // size of this header
                         10,  0,   0,    0,                  // width
                         2,   0,   0,    0,                  // height
                         1,   0,   8,    0,                  // planes, depth
                         0,   0,   0,    0,                  // no compression
                         24,  0,   0,    0,                  // image size
                         0,   0,   0,    0,    0, 0, 0, 0,   // pixels per metre
                         0,   1,   0,    0,    0, 1, 0, 0};  // 256 colours, 256 important
    EXPECT_EQ(part(file, 0, 54), expected);
}

TEST(GreyBmp, PaletteIsAGreyRamp) {
    const Bytes file = bmp(counting(20), 10, 2, 10, 8);
    for (std::size_t i = 0; i < 256; ++i) {
        const auto grey = static_cast<unsigned char>(i);
        EXPECT_EQ(part(file, 54 + 4 * i, 58 + 4 * i), (Bytes{grey, grey, grey, 0})) << i;
    }
}

TEST(GreyBmp, PixelsFollowInMemoryOrderWithoutPadding) {
    const Bytes file = bmp(counting(20), 10, 2, 10, 8);
    ASSERT_EQ(file.size(), 1078U + 20U);
    EXPECT_EQ(part(file, 1078, file.size()), counting(20));
}

TEST(GreyBmp, BytesPerLineIsNotUsed) {
    // Two lines of 12 bytes for 10 pixels: the first 20 bytes go out, the gap among them.
    const Bytes file = bmp(counting(24), 12, 2, 10, 8);
    EXPECT_EQ(file, bmp(counting(24), 10, 2, 10, 8));
    EXPECT_EQ(part(file, 1078, file.size()), counting(20));
}

TEST(GreyBmp, LargeSizesAreWrittenLittleEndian) {
    // 300 = 0x12C wide, 700 = 0x2BC high, 210000 = 0x33450 of image, + 1078 = 0x33886
    const Bytes file = bmp(Bytes(210'000, 7), 300, 700, 300, 8);
    EXPECT_EQ(part(file, 2, 6), (Bytes{0x86, 0x38, 0x03, 0x00}));
    EXPECT_EQ(part(file, 18, 26), (Bytes{0x2C, 0x01, 0, 0, 0xBC, 0x02, 0, 0}));
    EXPECT_EQ(part(file, 34, 38), (Bytes{0x50, 0x34, 0x03, 0x00}));
    EXPECT_EQ(file.size(), 1078U + 210'000U);
}

TEST(GreyBmp, APageWithoutPixelsIsHeadersAndPalette) {
    const Bytes file = bmp({1, 2, 3, 4}, 4, 1, 0, 8);
    EXPECT_EQ(file.size(), 1078U);
    EXPECT_EQ(part(file, 34, 38), (Bytes{0, 0, 0, 0}));
}

TEST(MonoBmp, IsWrittenByteForByte) {
    const Bytes page{0, 1, 1, 1, 1, 1, 1, 1, 0, 1,  //
                     1, 0, 1, 1, 1, 1, 1, 0, 1, 0};
    const Bytes expected{'B', 'M', 70, 0, 0, 0, 0, 0, 0, 0, 62, 0, 0, 0,  // 62 + 8 bytes
                         40, 0, 0, 0,                                     //
                         10, 0, 0, 0,                                     // width
                         2, 0, 0, 0,                                      // height
                         1, 0, 1, 0,                                      // planes, depth
                         0, 0, 0, 0,                                      //
                         8, 0, 0, 0,                                      // 2 rows of 4
                         0, 0, 0, 0, 0, 0, 0, 0,                          //
                         0, 0, 0, 0, 0, 0, 0, 0,                          // no colour counts
                         0, 0, 0, 0, 255, 255, 255, 0,                    // black, white
                         // The last row first. 0100 0001 | 01, then 00 1111 11 filled up with ones.
                         0x41, 0x7F, 0, 0,  //
                         // 1000 0000 | 10, then 11 1111.
                         0x80, 0xBF, 0, 0};
    EXPECT_EQ(bmp(page, 10, 2, 10, 1), expected);
}

// The rows of a 1-bit file, behind its palette.
Bytes mono_rows(const Bytes& page, unsigned long bytesPerLine, unsigned long height,
                unsigned long width) {
    const Bytes file = bmp(page, bytesPerLine, height, width, 1);
    return part(file, 62, file.size());
}

TEST(MonoBmp, OnlyAByteOfZeroSetsItsBit) {
    EXPECT_EQ(mono_rows({0, 1, 0, 2, 0, 128, 0, 255}, 8, 1, 8), (Bytes{0xAA, 0, 0, 0}));
}

TEST(MonoBmp, WholeBytesAreNotFilledUp) {
    EXPECT_EQ(mono_rows(Bytes(16, 1), 16, 1, 16), (Bytes{0, 0, 0, 0}));
    EXPECT_EQ(mono_rows(Bytes(16, 0), 16, 1, 16), (Bytes{0xFF, 0xFF, 0, 0}));
}

TEST(MonoBmp, APartialByteIsFilledUpWithOnes) {
    for (std::size_t count = 1; count < 8; ++count) {
        // `count` zeros from inked pixels, the rest ones
        const auto filled = static_cast<unsigned char>(0xFF >> count);
        EXPECT_EQ(mono_rows(Bytes(count, 1), count, 1, count), (Bytes{filled, 0, 0, 0})) << count;
    }
}

TEST(MonoBmp, PixelsOfARowAreCountedByBytesPerLine) {
    // 10 pixels wide, 12 bytes a line: 12 bits and 4 ones
    EXPECT_EQ(mono_rows({1, 1, 1, 1, 1, 1, 1, 1, 1, 1, 0, 1}, 12, 1, 10), (Bytes{0, 0x2F, 0, 0}));
}

TEST(MonoBmp, ARowNeverExceedsTheLengthTheWidthGivesIt) {
    // 4 bytes for 10 pixels, whatever the line brings: 40 bytes a line pack to 5
    const Bytes page(40 * 2, 0);
    EXPECT_EQ(mono_rows(page, 40, 2, 10), (Bytes{0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF}));
    // 35 bytes a line pack to a fifth byte that is partial
    EXPECT_EQ(mono_rows(Bytes(35, 1), 35, 1, 10), (Bytes{0, 0, 0, 0}));
}

TEST(MonoBmp, RowsDoNotLeakIntoEachOther) {
    // 9 pixels: the second byte is used; bottom row white, top row inked
    Bytes page(18, 1);
    for (std::size_t x = 9; x < 18; ++x) {
        page[x] = 0;
    }
    EXPECT_EQ(mono_rows(page, 9, 2, 9), (Bytes{0xFF, 0xFF, 0, 0, 0x00, 0x7F, 0, 0}));
}

TEST(MonoBmp, WidthsArePaddedToFourBytes) {
    EXPECT_EQ(mono_rows(Bytes(32, 0), 32, 1, 32).size(), 4U);
    EXPECT_EQ(mono_rows(Bytes(33, 0), 33, 1, 33), (Bytes{0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0, 0, 0}));
}

TEST(BmpOfAnotherDepth, IsAMonoFileWithoutItsPalette) {
    const Bytes page{0, 1, 1, 1, 1, 1, 1, 1, 0, 1, 1, 0, 1, 1, 1, 1, 1, 0, 1, 0};
    const Bytes mono = bmp(page, 10, 2, 10, 1);
    Bytes without_palette = part(mono, 0, 54);
    const Bytes rows = part(mono, 62, mono.size());
    without_palette.insert(without_palette.end(), rows.begin(), rows.end());
    for (const int depth : {0, 4, 16, 24, 32}) {
        EXPECT_EQ(bmp(page, 10, 2, 10, static_cast<unsigned short>(depth)), without_palette)
            << depth;
    }
}

}  // namespace
}  // namespace kelp_test
