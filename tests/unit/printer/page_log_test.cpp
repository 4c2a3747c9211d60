#include <gtest/gtest.h>

#include <string>

#include "tests/unit/printer/support/page.h"

namespace kelp_test {
namespace {

// The whole log of PageProcess, in order.

TEST(PageProcessLog, OfAPlainPage) {
    RecordingPrinter printer;
    EXPECT_EQ(process(printer, {5, 2, Bytes(10, 99)}).log,
              "DEBUG:PageProcess: TQ dithering is disabled\n"
              "DEBUG:PageProcess: Successfully created CxImage from array with stride 5\n"
              "DEBUG:PageProcess: Applied default dithering and increased bit depth\n"
              "DEBUG:PageProcess: negativePrint_ 0\n"
              "DEBUG:PageProcess: Filled the output buffer with processed pixels, length: 16\n");
}

TEST(PageProcessLog, OfAPageWithEverythingOn) {
    RecordingPrinter printer;
    printer.setBrightness(-3)
        .setContrast(7)
        .setRotate180Print(true)
        .setMirrorPrint(true)
        .setNegativePrint(true)
        .setAntiWrinkle(1);
    EXPECT_EQ(process(printer, {5, 2, Bytes(14, 99), 7}).log,
              "DEBUG:PageProcess: TQ dithering is disabled\n"
              "DEBUG:PageProcess: Successfully created CxImage from array with stride 7\n"
              "DEBUG:PageProcess: Adjusted brightness to -15 and contrast to 14\n"
              "DEBUG:PageProcess: Rotated the image 180 degrees\n"
              "DEBUG:PageProcess: Mirrored the image\n"
              "DEBUG:PageProcess: Applied default dithering and increased bit depth\n"
              "DEBUG:PageProcess: negativePrint_ 1\n"
              "DEBUG:PageProcess: Inverting the image for negative print\n"
              "DEBUG:EnableAntiWrink: Image or pageHdr_ is not valid, returning.\n"
              "DEBUG:PageProcess: Filled the output buffer with processed pixels, length: 16\n");
}

TEST(PageProcessLog, OfATattooPage) {
    // The stride is the width rounded up to a multiple of 4, and only reported.
    RecordingPrinter printer;
    printer.setHalftoneType(DitherTattoo);
    EXPECT_EQ(process(printer, {5, 2, Bytes(12, 99), 6}).log,
              "DEBUG:PageProcess: TQ dithering is enabled\n"
              "DEBUG:PageProcess: Successfully created CxImage from array with stride 6\n"
              "DEBUG:PageProcess: Copied pixels to the output buffer for TQ dithering, with "
              "stride 6, EffWidth 8\n"
              "DEBUG:PageProcess: Applied TQ dithering with stride 8, width 5\n"
              "DEBUG:PageProcess: Successfully created a new CxImage from TQ dithered data\n"
              "DEBUG:PageProcess: negativePrint_ 0\n"
              "DEBUG:PageProcess: Filled the output buffer with processed pixels, length: 16\n");
}

TEST(PageProcessLog, OfANegativeTattooX8Page) {
    RecordingPrinter printer;
    printer.setHalftoneType(DitherTattooX8).setNegativePrint(true).setMirrorPrint(true);
    EXPECT_EQ(process(printer, {8, 3, Bytes(24, 200)}).log,
              "DEBUG:PageProcess: TQ dithering is enabled\n"
              "DEBUG:PageProcess: Successfully created CxImage from array with stride 8\n"
              "DEBUG:PageProcess: Mirrored the image\n"
              "DEBUG:PageProcess: Copied pixels to the output buffer for TQ dithering, with "
              "stride 8, EffWidth 8\n"
              "DEBUG:PageProcess: Applied TQ dithering with stride 8, width 8\n"
              "DEBUG:PageProcess: Successfully created a new CxImage from TQ dithered data\n"
              "DEBUG:PageProcess: negativePrint_ 1\n"
              "DEBUG:PageProcess: Inverting the image for negative print\n"
              "DEBUG:PageProcess: Filled the output buffer with processed pixels, length: 24\n");
}

TEST(PageProcessLog, TheReportedTattooStrideIsRoundedUpToFour) {
    RecordingPrinter printer;
    printer.setHalftoneType(DitherTattoo);
    for (const auto& [width, stride] : {std::pair{1, 4}, {3, 4}, {4, 4}, {6, 8}, {9, 12}}) {
        const auto size = static_cast<std::size_t>(width);
        const std::string log = process(printer, {width, 1, Bytes(size, 255)}).log;
        const std::string line = "Applied TQ dithering with stride " + std::to_string(stride) +
                                 ", width " + std::to_string(width) + "\n";
        EXPECT_NE(log.find(line), std::string::npos) << log;
    }
}

TEST(PageProcessLog, OfAPageThatCannotBeLoaded) {
    RecordingPrinter printer;
    Bytes out(16);
    const Bytes pixels(16);
    int length = -1;
    // no columns
    EXPECT_EQ(stderr_of([&] {
                  length = printer.PageProcess(DitherNone, pixels.data(), 4, 0, 4, out.data());
              }),
              "DEBUG:PageProcess: TQ dithering is disabled\n"
              "CRIT:cximage.CreateFromArray with grey failed!\n");
    EXPECT_EQ(length, 0);
    EXPECT_EQ(printer.processedImage(), nullptr);
    EXPECT_EQ(out, Bytes(16));
}

TEST(PageProcessLog, ATattooPageThatCannotBeLoadedIsReportedAlike) {
    RecordingPrinter printer;
    printer.setHalftoneType(DitherTattoo);
    const Bytes pixels(16);
    int length = -1;
    EXPECT_EQ(stderr_of([&] {
                  length = printer.PageProcess(DitherTattoo, pixels.data(), 4, 4, 0, nullptr);
              }),
              "DEBUG:PageProcess: TQ dithering is enabled\n"
              "CRIT:cximage.CreateFromArray with grey failed!\n");
    EXPECT_EQ(length, 0);
    EXPECT_EQ(printer.processedImage(), nullptr);
}

TEST(PageProcessLog, AFailedLoadKeepsTheImageOfThePageBefore) {
    RecordingPrinter printer;
    process(printer, {2, 1, {0, 255}});
    const CxImage* const before = printer.processedImage();
    int length = -1;
    stderr_of([&] { length = printer.PageProcess(DitherNone, nullptr, 2, 2, 1, nullptr); });
    EXPECT_EQ(length, 0);
    EXPECT_EQ(printer.processedImage(), before);
    EXPECT_EQ(indices(*before), (Rows{{0, 1}}));
}

}  // namespace
}  // namespace kelp_test
