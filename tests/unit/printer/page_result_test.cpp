#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <limits>

#include "tests/unit/printer/support/page.h"

namespace kelp_test {
namespace {

// The output buffer of PageProcess and its two copying helpers.

TEST(PageResult, HoldsWhiteDotsAsFullBytes) {
    RecordingPrinter printer;
    const Processed result = process(printer, {4, 2, {0, 255, 255, 0, 255, 0, 0, 255}});
    EXPECT_EQ(result.length, 8);
    EXPECT_EQ(result.out, (Bytes{0, 255, 255, 0, 255, 0, 0, 255,  //
                                 0, 0, 0, 0, 0, 0, 0, 0}));
}

TEST(PageResult, RowsStandAnImageRowApart) {
    RecordingPrinter printer;
    // 5 pixels, rows of 8 bytes in the image, though the page comes in lines of 5
    const Processed result = process(printer, {5, 2, Bytes(10, 255)});
    EXPECT_EQ(result.length, 16);
    EXPECT_EQ(result.out, (Bytes{255, 255, 255, 255, 255, 0, 0, 0,  //
                                 255, 255, 255, 255, 255, 0, 0, 0,  //
                                 0,   0,   0,   0}));
}

TEST(PageResult, ANegativePrintIsInvertedOnceMoreInTheBuffer) {
    RecordingPrinter printer;
    printer.setNegativePrint(true);
    const Processed result = process(printer, {2, 1, {0, 255}});
    // The image holds 255 and 254; neither is 1, so both are only inverted again.
    EXPECT_EQ(result.out, (Bytes{0, 1, 0, 0}));
}

TEST(PageResult, ATattooIsKeptAsItIs) {
    RecordingPrinter printer;
    printer.setHalftoneType(DitherTattoo);
    const Processed white = process(printer, {4, 1, Bytes(4, 255)});
    EXPECT_EQ(white.length, 4);
    EXPECT_EQ(white.out, (Bytes{255, 255, 255, 255, 0, 0, 0, 0}));
    const Processed black = process(printer, {4, 1, Bytes(4, 0)});
    EXPECT_EQ(black.out, Bytes(8, 0));
}

TEST(PageResult, ANegativeTattooComesBackToItself) {
    RecordingPrinter printer;
    printer.setHalftoneType(DitherTattoo).setNegativePrint(true);
    const Processed white = process(printer, {4, 1, Bytes(4, 255)});
    EXPECT_EQ(white.out, (Bytes{255, 255, 255, 255, 0, 0, 0, 0}));
}

TEST(PageResult, TheLengthIsTheHeightTimesTheImagesRow) {
    RecordingPrinter printer;
    EXPECT_EQ(process(printer, {1, 7, Bytes(7)}).length, 28);
    EXPECT_EQ(process(printer, {9, 3, Bytes(27)}).length, 36);
    // in lines of 20 bytes as well
    EXPECT_EQ(process(printer, {9, 3, Bytes(60), 20}).length, 36);
    printer.setHalftoneType(DitherTattooX8);
    EXPECT_EQ(process(printer, {9, 3, Bytes(27)}).length, 36);
}

TEST(PageResult, TheBufferIsTwiceThePageOrAsLargeAsTheImage) {
    const RecordingPrinter printer;
    EXPECT_EQ(printer.processedSize(8, 5, 8), 80U);
    EXPECT_EQ(printer.processedSize(20, 5, 8), 200U);
    EXPECT_GE(printer.processedSize(1, 7, 1), 28U) << "rows of 4 bytes for a 1-byte page";
    EXPECT_GE(printer.processedSize(5, 2, 5), 20U);
}

TEST(PageResult, ABufferBeyondTheMachinesMemoryNeverComesOutSmall) {
    // 2^30 + 1 rows of 4 bytes are 2^32 + 4 bytes.
    const RecordingPrinter printer;
    const std::uint64_t needed = 4'294'967'300;
    const std::uint64_t largest = std::numeric_limits<std::size_t>::max();
    EXPECT_EQ(printer.processedSize(1, 1'073'741'825, 1), std::min(needed, largest));
}

TEST(PageResult, AOneByteWidePageFitsItsBuffer) {
    RecordingPrinter printer;
    const GreyPage page(1, 3, {255, 255, 255});
    const Processed plain = process(printer, page);
    ASSERT_GE(plain.out.size(), 12U);
    EXPECT_EQ(Bytes(plain.out.begin(), plain.out.begin() + 12),
              (Bytes{255, 0, 0, 0, 255, 0, 0, 0, 255, 0, 0, 0}));
    // What the tattoo route wrote as scratch, three bytes from the first on, stays in the gaps.
    printer.setHalftoneType(DitherTattoo);
    const Processed tattoo = process(printer, page);
    ASSERT_GE(tattoo.out.size(), 12U);
    EXPECT_EQ(Bytes(tattoo.out.begin(), tattoo.out.begin() + 12),
              (Bytes{255, 255, 255, 0, 255, 0, 0, 0, 255, 0, 0, 0}));
}

CxImage& filled(CxImage& image, unsigned width, unsigned height, const Bytes& pixels) {
    image.CreateFromArray(pixels.data(), width, height, 8, width, false);
    return image;
}

TEST(CopyPixels, CopiesIndicesToRowsAStrideApart) {
    CxImage image;
    filled(image, 3, 2, {1, 2, 3, 254, 255, 0});
    Bytes out(10, 77);
    KelpPrinter::copyPixels(image, out.data(), 3, 2, 5);
    EXPECT_EQ(out, (Bytes{1, 2, 3, 77, 77, 254, 255, 0, 77, 77}));
}

TEST(CopyPixels, CopiesAPartOfTheImage) {
    CxImage image;
    filled(image, 3, 2, {1, 2, 3, 4, 5, 6});
    Bytes out(4, 77);
    KelpPrinter::copyPixels(image, out.data(), 2, 1, 2);
    EXPECT_EQ(out, (Bytes{1, 2, 77, 77}));
}

TEST(CopyPixels, TakesTheFirstByteBesideAndBelowTheImage) {
    CxImage image;
    filled(image, 3, 2, {1, 2, 3, 4, 5, 6});
    Bytes wide(10, 77);
    KelpPrinter::copyPixels(image, wide.data(), 5, 2, 5);
    EXPECT_EQ(wide, (Bytes{1, 2, 3, 1, 1, 4, 5, 6, 1, 1}));
    Bytes high(9, 77);
    KelpPrinter::copyPixels(image, high.data(), 3, 3, 3);
    EXPECT_EQ(high, (Bytes{1, 2, 3, 4, 5, 6, 1, 1, 1}));
}

TEST(CopyPixels, TakesTheIndicesOfAOneBitImage) {
    CxImage image;
    filled(image, 4, 1, {0, 255, 0, 255}).Dither(0);
    Bytes out(4, 77);
    KelpPrinter::copyPixels(image, out.data(), 4, 1, 4);
    EXPECT_EQ(out, (Bytes{0, 1, 0, 1}));
}

TEST(CopyProcessedPixels, TurnsIndexOneToAFullByteAndKeepsTheOthers) {
    CxImage image;
    filled(image, 4, 2, {0, 1, 2, 255, 254, 128, 1, 0});
    const RecordingPrinter printer;
    Bytes out(10, 77);
    printer.copyProcessedPixels(&image, out.data(), 4, 2, 5);
    EXPECT_EQ(out, (Bytes{0, 255, 2, 255, 77, 254, 128, 255, 0, 77}));
}

TEST(CopyProcessedPixels, ComplementsEveryByteForANegativePrint) {
    CxImage image;
    filled(image, 4, 2, {0, 1, 2, 255, 254, 128, 1, 0});
    RecordingPrinter printer;
    printer.setNegativePrint(true);
    Bytes out(8, 77);
    printer.copyProcessedPixels(&image, out.data(), 4, 2, 4);
    EXPECT_EQ(out, (Bytes{255, 0, 253, 0, 1, 127, 0, 255}));
}

}  // namespace
}  // namespace kelp_test
