#include <gtest/gtest.h>

#include "tests/reference/encoding.h"
#include "tests/reference/snapshot.h"

namespace reference {

namespace {

using Bytes = std::vector<unsigned char>;

std::string firstRow(const Bytes& bytes) {
    int lastSet = 0;
    return encodeRow(bytes, lastSet);
}

unsigned field(const Bytes& file, std::size_t offset, int bytes) {
    unsigned value = 0;
    for (int i = bytes; i > 0; i--)
        value = value * 256 + file[offset + static_cast<std::size_t>(i) - 1];
    return value;
}

}  // namespace

TEST(ReferencePacking, TheLeftmostDotIsTheHighestBit) {
    // A 10-dot row packs to two bytes with dots 8 and 9 in the high bits.
    EXPECT_EQ(grayToMono(10, 1, 0, {1, 0, 0, 0, 0, 0, 0, 9, 255, 0}), (Bytes{0x81, 0x80}));
    EXPECT_EQ(grayToMono(10, 1, 0, Bytes(10, 1)), (Bytes{0xFF, 0xC0}));
}

TEST(ReferencePacking, SkippedPixelsAreDroppedFromEveryRow) {
    EXPECT_EQ(grayToMono(16, 1, 5, Bytes(16, 1)), (Bytes{0xFF, 0xE0}));
    EXPECT_EQ(grayToMono(2, 2, 1, {0, 1, 1, 0}), (Bytes{0x00, 0x80}));
    EXPECT_EQ(grayToMono(8, 1, 8, Bytes(8, 1)), (Bytes{0xFF}));
    EXPECT_EQ(grayToMono(8, 1, 9, Bytes(8, 1)), (Bytes{0xFF}));
    EXPECT_EQ(keptPixels(16, 0), 16);
    EXPECT_EQ(keptPixels(16, 5), 11);
}

TEST(ReferencePacking, TheWidthIsTheDistanceOfTheRows) {
    EXPECT_EQ(grayToMono(3, 2, 0, {1, 0, 0, 0, 1, 0, 1, 1}), (Bytes{0x80, 0x40}));
}

TEST(ReferenceRun, RepeatCountsBecomeLetters) {
    EXPECT_EQ(encodeRun('7', 1), "7");
    EXPECT_EQ(encodeRun('5', 2), "H5");
    EXPECT_EQ(encodeRun('A', 2), "HA");
    EXPECT_EQ(encodeRun('1', 19), "Y1");
    EXPECT_EQ(encodeRun('F', 20), "gF");
    EXPECT_EQ(encodeRun('3', 25), "gK3");
    EXPECT_EQ(encodeRun('F', 208), "pNF");
    EXPECT_EQ(encodeRun('F', 399), "yYF");
    EXPECT_EQ(encodeRun('F', 400), "zF");
    EXPECT_EQ(encodeRun('F', 401), "zGF");
    EXPECT_EQ(encodeRun('0', 839), "zzgY0");  // 839 = 400 + 400 + 20 + 19
}

TEST(ReferenceRow, TrailingZerosBecomeACommaInPairs) {
    EXPECT_EQ(firstRow({0x00}), ",");
    EXPECT_EQ(firstRow({0x00, 0x00, 0x00}), ",");
    EXPECT_EQ(firstRow({0xA0}), "A0");
    EXPECT_EQ(firstRow({0xF0, 0x00}), "F0,");
    EXPECT_EQ(firstRow({0x11, 0x00}), "H1,");
    EXPECT_EQ(firstRow({0x00, 0x01}), "I01");
    EXPECT_EQ(firstRow({0x3F, 0xFF}), "3IF");
}

TEST(ReferenceRow, ASolidRowIsAColonOnceARowWasEncoded) {
    int lastSet = 0;
    EXPECT_EQ(encodeRow({0xFF, 0xFF}, lastSet), "JF");
    EXPECT_EQ(lastSet, 1);
    EXPECT_EQ(encodeRow({0xFF, 0xFF}, lastSet), ":");
    EXPECT_EQ(encodeRow({0x00, 0x00}, lastSet), ",");
    EXPECT_EQ(encodeRow({0xFF, 0xFF}, lastSet), ":");
    EXPECT_EQ(lastSet, 1);
}

TEST(ReferenceRow, ASolidPageIsOneRunAndColons) {
    int lastSet = 0;
    EXPECT_EQ(encodeRow(Bytes(104, 0xFF), lastSet), "pNF");
    EXPECT_EQ(encodeRow(Bytes(104, 0xFF), lastSet), ":");
}

TEST(ReferenceLabel, TwoRowsOfSixteenDots) {
    Bytes page(32, 0);
    for (std::size_t x = 0; x < 20; x++)
        page[x] = 1;
    int lastSet = 0;
    EXPECT_EQ(encodeLabel(16, 2, 0, 1, page, lastSet),
              "^XX\r\n^PQ1\n~DGR:CUPS.GRF,4,2,\nJFF0,^FO0,0^XGR:CUPS.GRF,1,1^FS\n^XZ\r\n");
}

TEST(ReferenceSnapshot, EightBitsDeclareThePaddedSizeButCarryTheBytesUnpadded) {
    Bytes page;
    for (int i = 0; i < 20; i++)
        page.push_back(static_cast<unsigned char>(i + 100));
    const Bytes file = snapshotBytes(page.data(), 12, 2, 10, 8);
    ASSERT_EQ(file.size(), 1078u + 20u);
    EXPECT_EQ(file[0], 'B');
    EXPECT_EQ(file[1], 'M');
    EXPECT_EQ(field(file, 2, 4), 1078u + 24u);
    EXPECT_EQ(field(file, 6, 4), 0u);
    EXPECT_EQ(field(file, 10, 4), 1078u);
    EXPECT_EQ(field(file, 14, 4), 40u);
    EXPECT_EQ(field(file, 18, 4), 10u);
    EXPECT_EQ(field(file, 22, 4), 2u);
    EXPECT_EQ(field(file, 26, 2), 1u);
    EXPECT_EQ(field(file, 28, 2), 8u);
    EXPECT_EQ(field(file, 30, 4), 0u);
    EXPECT_EQ(field(file, 34, 4), 24u);
    EXPECT_EQ(field(file, 38, 4), 0u);
    EXPECT_EQ(field(file, 42, 4), 0u);
    EXPECT_EQ(field(file, 46, 4), 256u);
    EXPECT_EQ(field(file, 50, 4), 256u);
    EXPECT_EQ(field(file, 54, 4), 0u);
    EXPECT_EQ(field(file, 54 + 4 * 200, 4), 0x00C8C8C8u);
    EXPECT_EQ(file[1078], 100);
    EXPECT_EQ(file[1078 + 10], 110);  // the second row follows at once
}

TEST(ReferenceSnapshot, OneBitMarksZeroBytesAndRunsBottomUp) {
    // Rows of ten: only dot 0 zero; only dots 8 and 9 zero. The low six bits of
    // the second byte are always set.
    Bytes page(20, 5);
    page[0] = 0;
    page[18] = 0;
    page[19] = 0;
    const Bytes file = snapshotBytes(page.data(), 10, 2, 10, 1);
    ASSERT_EQ(file.size(), 62u + 8u);
    EXPECT_EQ(field(file, 2, 4), 70u);
    EXPECT_EQ(field(file, 10, 4), 62u);
    EXPECT_EQ(field(file, 28, 2), 1u);
    EXPECT_EQ(field(file, 34, 4), 8u);
    EXPECT_EQ(field(file, 46, 4), 0u);
    EXPECT_EQ(Bytes(file.begin() + 54, file.end()),
              (Bytes{0, 0, 0, 0, 255, 255, 255, 0, 0x00, 0xFF, 0, 0, 0x80, 0x3F, 0, 0}));
}

TEST(ReferenceSnapshot, OneBitRowsLongerThanTheWidthAreCutAtTheStride) {
    const Bytes page(80, 0);
    const Bytes file = snapshotBytes(page.data(), 80, 1, 8, 1);
    EXPECT_EQ(Bytes(file.begin() + 62, file.end()), Bytes(4, 0xFF));
}

}  // namespace reference
