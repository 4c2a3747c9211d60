#include <gtest/gtest.h>

#include <string>

#include "enhance/tattoo.h"
#include "tests/unit/printer/support/page.h"

namespace kelp_test {
namespace {

// What happens to a page before and after its halftone.

bool contains(const std::string& text, const std::string& part) {
    return text.find(part) != std::string::npos;
}

TEST(PageProcess, BrightnessIsScaledByFive) {
    RecordingPrinter printer;
    printer.setBrightness(4);
    const Processed result = process(printer, {3, 1, {108, 109, 0}});
    // + 20: 128 and 129
    EXPECT_EQ(indices(*printer.processedImage()), (Rows{{0, 1, 0}}));
    EXPECT_TRUE(
        contains(result.log, "DEBUG:PageProcess: Adjusted brightness to 20 and contrast to 0\n"));
}

TEST(PageProcess, DarkeningIsScaledTheSameWay) {
    RecordingPrinter printer;
    printer.setBrightness(-10);
    const Processed result = process(printer, {3, 1, {178, 179, 255}});
    // - 50: 128 and 129. Of (i - 128) + 78 + 0.5 the fraction is cut.
    EXPECT_EQ(indices(*printer.processedImage()), (Rows{{0, 1, 1}}));
    EXPECT_TRUE(contains(result.log, "Adjusted brightness to -50 and contrast to 0\n"));
}

TEST(PageProcess, ContrastIsScaledByTwo) {
    RecordingPrinter printer;
    printer.setBrightness(-4).setContrast(10);
    const Processed result = process(printer, {3, 1, {145, 146, 255}});
    // (i - 128) * 1.2 + 108.5: 145 gives 128.9, 146 gives 130.1. A slope of 1.1 would give 128.3.
    EXPECT_EQ(indices(*printer.processedImage()), (Rows{{0, 1, 1}}));
    EXPECT_TRUE(contains(result.log, "Adjusted brightness to -20 and contrast to 20\n"));
}

TEST(PageProcess, ContrastAloneIsEnough) {
    RecordingPrinter printer;
    printer.setContrast(-50);
    const Processed result = process(printer, {2, 1, {0, 255}});
    // slope 0: everything becomes 128
    EXPECT_EQ(indices(*printer.processedImage()), (Rows{{0, 0}}));
    EXPECT_TRUE(contains(result.log, "Adjusted brightness to 0 and contrast to -100\n"));
}

TEST(PageProcess, WithoutBrightnessAndContrastNothingIsAdjusted) {
    RecordingPrinter printer;
    const Processed result = process(printer, {2, 1, {128, 129}});
    EXPECT_EQ(indices(*printer.processedImage()), (Rows{{0, 1}}));
    EXPECT_FALSE(contains(result.log, "Adjusted"));
}

TEST(PageProcess, BrightnessComesBeforeTheTattooChainToo) {
    RecordingPrinter printer;
    printer.setHalftoneType(DitherTattoo).setBrightness(51);
    process(printer, {4, 2, {0, 10, 20, 30, 40, 50, 60, 70}});
    // + 255: a white page, which stays white
    EXPECT_EQ(indices(*printer.processedImage()), Rows(2, std::vector<int>(4, 255)));
}

TEST(PageProcess, RotationTurnsThePageByAHalfTurn) {
    RecordingPrinter printer;
    printer.setRotate180Print(true);
    process(printer, {3, 2, {0, 255, 255, 0, 0, 255}});
    EXPECT_EQ(indices(*printer.processedImage()), (Rows{{1, 0, 0}, {1, 1, 0}}));
}

TEST(PageProcess, MirroringReversesEveryRow) {
    RecordingPrinter printer;
    printer.setMirrorPrint(true);
    process(printer, {3, 2, {0, 255, 255, 0, 0, 255}});
    EXPECT_EQ(indices(*printer.processedImage()), (Rows{{1, 1, 0}, {1, 0, 0}}));
}

TEST(PageProcess, RotationAndMirroringTogetherReverseTheRowsOrder) {
    RecordingPrinter printer;
    printer.setMirrorPrint(true).setRotate180Print(true);
    const Processed result = process(printer, {3, 2, {0, 255, 255, 0, 0, 255}});
    EXPECT_EQ(indices(*printer.processedImage()), (Rows{{0, 0, 1}, {0, 1, 1}}));
    EXPECT_TRUE(contains(result.log,
                         "DEBUG:PageProcess: Rotated the image 180 degrees\n"
                         "DEBUG:PageProcess: Mirrored the image\n"));
}

TEST(PageProcess, MirroringComesBeforeTheHalftone) {
    // Mirrored first, the error of Burkes runs from the page's right to its left.
    RecordingPrinter printer;
    printer.setMirrorPrint(true).setHalftoneType(DitherOrdered);
    process(printer, {3, 1, {86, 100, 100}});
    EXPECT_EQ(indices(*printer.processedImage()), (Rows{{0, 0, 1}}));
}

TEST(PageProcess, RotationComesBeforeTheTattooChain) {
    Bytes pixels;
    for (int i = 0; i < 12 * 9; ++i) {
        pixels.push_back(static_cast<unsigned char>(i * i * 7));
    }
    const Bytes turned(pixels.rbegin(), pixels.rend());
    TQImage grey(12, 9, TQ_IMG_GRAY, turned.data());
    const TQImage expected = tqTattooDithering(grey);

    RecordingPrinter printer;
    printer.setRotate180Print(true).setHalftoneType(DitherTattoo);
    process(printer, {12, 9, pixels});
    for (int y = 0; y < 9; ++y) {
        for (int x = 0; x < 12; ++x) {
            EXPECT_EQ(printer.processedImage()->GetPixelIndex(x, y), expected.data[y * 12 + x]);
        }
    }
}

TEST(PageProcess, ANegativePrintInvertsEveryByteOfTheResult) {
    RecordingPrinter printer;
    printer.setNegativePrint(true);
    process(printer, {4, 1, {0, 255, 255, 0}});
    // indices 0 and 1 turn to 255 and 254: all of them print
    EXPECT_EQ(indices(*printer.processedImage()), (Rows{{255, 254, 254, 255}}));
}

TEST(PageProcess, ANegativeTattooSwapsBlackAndWhite) {
    RecordingPrinter printer;
    printer.setNegativePrint(true).setHalftoneType(DitherTattoo);
    process(printer, {3, 1, Bytes(3, 255)});
    EXPECT_EQ(indices(*printer.processedImage()), (Rows{{0, 0, 0}}));
    process(printer, {3, 1, Bytes(3, 0)});
    EXPECT_EQ(indices(*printer.processedImage()), (Rows{{255, 255, 255}}));
}

TEST(PageProcess, LinesLongerThanTheirPixelsAreReadByTheirLength) {
    RecordingPrinter printer;
    process(printer, {2, 3, {0, 255, 9, 9, 9, 9, 255, 0, 9, 9, 9, 9, 255, 255, 9, 9, 9, 9}, 6});
    EXPECT_EQ(indices(*printer.processedImage()), (Rows{{0, 1}, {1, 0}, {1, 1}}));
}

TEST(PageProcess, TheTattooChainTakesRowsAsPackedWhateverTheLineLength) {
    // Rows of 3 pixels in lines of 4 bytes are written 4 apart into a zeroed buffer and read back
    // 3 apart: a b c 0 d e f 0 g ... becomes abc, 0de, f0g.
    const Bytes pixels{250, 200, 150, 9, 100, 50, 25, 9, 240, 10, 20, 9};
    const Bytes sheared{250, 200, 150, 0, 100, 50, 25, 0, 240};
    TQImage grey(3, 3, TQ_IMG_GRAY, sheared.data());
    const TQImage expected = tqTattooDithering(grey);

    RecordingPrinter printer;
    printer.setHalftoneType(DitherTattoo);
    process(printer, {3, 3, pixels, 4});
    for (int i = 0; i < 9; ++i) {
        EXPECT_EQ(printer.processedImage()->GetPixelIndex(i % 3, i / 3), expected.data[i]) << i;
    }
}

TEST(PageProcess, ThePageItselfIsNotChanged) {
    for (const DitherType type : {DitherOrdered, DitherTattooX8}) {
        RecordingPrinter printer;
        printer.setHalftoneType(type).setNegativePrint(true).setMirrorPrint(true).setBrightness(3);
        const GreyPage page(5, 2, {10, 60, 110, 160, 210, 250, 200, 150, 100, 50});
        const Bytes before = page.pixels;
        process(printer, page);
        EXPECT_EQ(page.pixels, before);
    }
}

TEST(PageProcess, TheResultHasEightBitsPerPixelOnBothRoutes) {
    RecordingPrinter printer;
    process(printer, {5, 2, Bytes(10, 77)});
    EXPECT_EQ(printer.processedImage()->GetBpp(), 8U);
    EXPECT_EQ(printer.processedImage()->GetEffWidth(), 8U);
    printer.setHalftoneType(DitherTattoo);
    process(printer, {5, 2, Bytes(10, 77)});
    EXPECT_EQ(printer.processedImage()->GetBpp(), 8U);
    EXPECT_EQ(printer.processedImage()->GetEffWidth(), 8U);
}

TEST(PageProcess, EachRouteHasItsOwnImage) {
    RecordingPrinter printer;
    process(printer, {2, 1, {0, 255}});
    const CxImage* const by_default = printer.processedImage();
    printer.setHalftoneType(DitherTattoo);
    process(printer, {2, 1, {0, 0}});
    EXPECT_NE(printer.processedImage(), by_default);
    printer.setHalftoneType(DitherNone);
    process(printer, {2, 1, {255, 0}});
    EXPECT_EQ(printer.processedImage(), by_default);
    EXPECT_EQ(indices(*by_default), (Rows{{1, 0}}));
}

TEST(PageProcess, PagesOfDifferentSizesFollowEachOther) {
    RecordingPrinter printer;
    process(printer, {2, 1, {0, 255}});
    process(printer, {3, 2, {255, 0, 255, 0, 255, 0}});
    EXPECT_EQ(indices(*printer.processedImage()), (Rows{{1, 0, 1}, {0, 1, 0}}));
    process(printer, {1, 1, {255}});
    EXPECT_EQ(indices(*printer.processedImage()), (Rows{{1}}));
}

}  // namespace
}  // namespace kelp_test
