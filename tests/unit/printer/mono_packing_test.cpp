#include "printer/mono_packing.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <string>

#include "tests/unit/printer/support/recording_printer.h"
#include "tests/unit/printer/support/stderr_capture.h"

namespace kelp_test {
namespace {

Bytes packed_row(const Bytes& dots) {
    Bytes packed((dots.size() + 7) / 8);
    packMonoRow(dots.data(), dots.size(), packed.data());
    return packed;
}

TEST(MonoRow, TheFirstDotIsTheMostSignificantBit) {
    for (std::size_t dot = 0; dot < 16; ++dot) {
        Bytes dots(16);
        dots[dot] = 1;
        Bytes expected(2);
        expected[dot / 8] = static_cast<unsigned char>(0x80 >> dot % 8);
        EXPECT_EQ(packed_row(dots), expected) << dot;
    }
}

TEST(MonoRow, AnyByteButZeroIsADot) {
    EXPECT_EQ(packed_row({1, 0, 2, 0, 127, 0, 128, 255}), Bytes{0xAB});
}

TEST(MonoRow, UnusedLowBitsAreZero) {
    EXPECT_EQ(packed_row({9, 9, 9, 9, 9, 9, 9, 9, 9, 9}), (Bytes{0xFF, 0xC0}));
    EXPECT_EQ(packed_row({9}), Bytes{0x80});
    EXPECT_EQ(packed_row({9, 9, 9, 9, 9, 9, 9}), Bytes{0xFE});
}

TEST(MonoRow, NoDotsWriteNothing) {
    unsigned char untouched = 0x5A;
    packMonoRow(&untouched, 0, &untouched);
    EXPECT_EQ(untouched, 0x5A);
}

TEST(MonoRow, MayBePackedOntoItself) {
    Bytes dots(20);
    dots[0] = dots[7] = dots[8] = dots[19] = 255;
    packMonoRow(dots.data(), dots.size(), dots.data());
    EXPECT_EQ(Bytes(dots.begin(), dots.begin() + 3), (Bytes{0x81, 0x80, 0x10}));
}

class GrayToMono : public testing::Test {
  protected:
    // Packs a page; its log line goes to `log`.
    int pack(int width, int height, Bytes& page) {
        int count = -1;
        log = stderr_of([&] { count = printer.GrayToMono(width, height, page.data()); });
        return count;
    }

    RecordingPrinter printer;
    std::string log;
};

TEST_F(GrayToMono, PacksRowsBehindEachOtherInPlace) {
    Bytes page{255, 255, 255, 255, 255, 255, 255, 255, 255, 255, 255, 255, 255, 255, 255, 255,
               1,   1,   1,   1,   0,   0,   0,   0,   0,   0,   0,   0,   0,   0,   0,   0};
    EXPECT_EQ(pack(16, 2, page), 4);
    EXPECT_EQ(Bytes(page.begin(), page.begin() + 4), (Bytes{0xFF, 0xFF, 0xF0, 0x00}));
    EXPECT_EQ(log, "DEBUG:GrayToMono, bpl(16), h(2), skipPixels(0), wb(16)\n");
}

TEST_F(GrayToMono, WhatLiesBehindThePackedRowsIsLeftAlone) {
    Bytes page(16 * 3, 7);
    page[32] = 0;
    EXPECT_EQ(pack(16, 3, page), 6);
    EXPECT_EQ(Bytes(page.begin(), page.begin() + 6), (Bytes{0xFF, 0xFF, 0xFF, 0xFF, 0x7F, 0xFF}));
    for (std::size_t i = 6; i < page.size(); ++i) {
        EXPECT_EQ(page[i], i == 32 ? 0 : 7) << i;
    }
}

TEST_F(GrayToMono, TenDotsPackToTwoBytesARow) {
    // dots 8 and 9 in the two high bits of the second byte
    Bytes page{0, 0, 0, 0, 0, 0, 0, 0, 1, 0,  //
               0, 0, 0, 0, 0, 0, 0, 0, 0, 1,  //
               1, 1, 1, 1, 1, 1, 1, 1, 1, 1};
    EXPECT_EQ(pack(10, 3, page), 6);
    EXPECT_EQ(Bytes(page.begin(), page.begin() + 6), (Bytes{0x00, 0x80, 0x00, 0x40, 0xFF, 0xC0}));
}

TEST_F(GrayToMono, AOneDotPageKeepsAByteARow) {
    // The output byte of a row lands on the row's own and only pixel.
    Bytes page{1, 0, 255, 0, 3};
    EXPECT_EQ(pack(1, 5, page), 5);
    EXPECT_EQ(page, (Bytes{0x80, 0x00, 0x80, 0x00, 0x80}));
}

TEST_F(GrayToMono, SkippedPixelsAreDroppedAtTheRightOfEveryRow) {
    printer.setSkipRightPixels(5);
    Bytes page(32, 1);
    page[10] = 0;       // dot 10 of row 0: the last one kept
    page[16 + 11] = 0;  // dot 11 of row 1: dropped
    EXPECT_EQ(pack(16, 2, page), 4);
    EXPECT_EQ(Bytes(page.begin(), page.begin() + 4), (Bytes{0xFF, 0xC0, 0xFF, 0xE0}));
    EXPECT_EQ(log, "DEBUG:GrayToMono, bpl(16), h(2), skipPixels(5), wb(11)\n");
}

TEST_F(GrayToMono, RowsStayAWidthApartWhenPixelsAreSkipped) {
    printer.setSkipRightPixels(5);
    Bytes page(32);
    page[15] = 1;  // row 0: dropped, though it lies right before row 1
    page[16] = 1;  // row 1: its first dot
    EXPECT_EQ(pack(16, 2, page), 4);
    EXPECT_EQ(Bytes(page.begin(), page.begin() + 4), (Bytes{0x00, 0x00, 0x80, 0x00}));
}

TEST_F(GrayToMono, SkippingToAByteBorderDropsTheByte) {
    printer.setSkipRightPixels(8);
    Bytes page(32, 1);
    EXPECT_EQ(pack(16, 2, page), 2);
    EXPECT_EQ(Bytes(page.begin(), page.begin() + 2), (Bytes{0xFF, 0xFF}));
}

TEST_F(GrayToMono, SkippingAllButOneKeepsOneDot) {
    printer.setSkipRightPixels(15);
    Bytes page(32);
    page[0] = page[17] = 1;
    EXPECT_EQ(pack(16, 2, page), 2);
    EXPECT_EQ(Bytes(page.begin(), page.begin() + 2), (Bytes{0x80, 0x00}));
    EXPECT_EQ(log, "DEBUG:GrayToMono, bpl(16), h(2), skipPixels(15), wb(1)\n");
}

TEST_F(GrayToMono, SkippingTheWholeWidthOrMoreSkipsNothing) {
    for (const int skip : {16, 17, 1000}) {
        printer.setSkipRightPixels(static_cast<unsigned long>(skip));
        Bytes page(32, 1);
        EXPECT_EQ(pack(16, 2, page), 4);
        EXPECT_EQ(Bytes(page.begin(), page.begin() + 4), Bytes(4, 0xFF));
        EXPECT_EQ(log, "DEBUG:GrayToMono, bpl(16), h(2), skipPixels(" + std::to_string(skip) +
                           "), wb(16)\n");
    }
}

TEST_F(GrayToMono, TheSkipIsComparedInFull) {
    printer.setSkipRightPixels((1UL << 32) + 5);  // not 5
    Bytes page(32, 1);
    EXPECT_EQ(pack(16, 2, page), 4);
    EXPECT_NE(log.find("wb(16)"), std::string::npos) << log;
}

TEST_F(GrayToMono, APageWithoutRowsPacksToNothing) {
    Bytes page(16, 1);
    EXPECT_EQ(pack(16, 0, page), 0);
    EXPECT_EQ(page, Bytes(16, 1));
}

}  // namespace
}  // namespace kelp_test
