#include <gtest/gtest.h>

#include <cstddef>
#include <string>

#include "tests/unit/printer/support/page.h"

namespace kelp_test {
namespace {

// The border as the last step of a page. At 203 dots per inch and level 2 the canvas of Tattoo_A6
// is 831 x 959 with bars of 16 and 8.
class AntiWrinklePage : public testing::Test {
  protected:
    AntiWrinklePage() {
        printer.set_resolution(203);
        printer.setPageHeader(&header).setAntiWrinkle(2);
        std::string("Tattoo_A6").copy(header.cupsPageSizeName, 63);
    }
    int index(int x, int y) const { return printer.processedImage()->GetPixelIndex(x, y); }

    cups_page_header2_t header{};
    RecordingPrinter printer;
};

TEST_F(AntiWrinklePage, ADitheredPageHasMarginsOfItsWhiteAndBarsOf255) {
    process(printer, {31, 59, Bytes(31 * 59)});
    EXPECT_EQ(printer.processedImage()->GetWidth(), 831U);
    EXPECT_EQ(printer.processedImage()->GetHeight(), 959U);
    EXPECT_EQ(index(0, 0), 255);
    EXPECT_EQ(index(15, 480), 255);
    EXPECT_EQ(index(16, 480), 1) << "white is entry 1 of a dithered page's palette";
    EXPECT_EQ(index(399, 480), 1);
    EXPECT_EQ(index(400, 480), 0);
    EXPECT_EQ(index(430, 480), 0);
    EXPECT_EQ(index(431, 480), 1);
    EXPECT_EQ(index(814, 480), 1);
    EXPECT_EQ(index(815, 480), 255);
    EXPECT_EQ(index(420, 7), 255);
    EXPECT_EQ(index(420, 8), 1);
    EXPECT_EQ(index(420, 450), 0);
    EXPECT_EQ(index(420, 509), 1);
    EXPECT_EQ(index(420, 951), 255);
}

TEST_F(AntiWrinklePage, TheBorderOfANegativePrintIsNotInverted) {
    printer.setNegativePrint(true);
    process(printer, {31, 59, Bytes(31 * 59)});
    EXPECT_EQ(index(0, 0), 255) << "a bar";
    EXPECT_EQ(index(16, 480), 1) << "a margin";
    EXPECT_EQ(index(400, 480), 255) << "the page: 0 inverted";
    process(printer, {31, 59, Bytes(31 * 59, 255)});
    EXPECT_EQ(index(0, 0), 255);
    EXPECT_EQ(index(400, 480), 254);
}

TEST_F(AntiWrinklePage, ATattooPageHasWhiteMargins) {
    printer.setHalftoneType(DitherTattoo);
    process(printer, {31, 59, Bytes(31 * 59)});
    EXPECT_EQ(index(15, 480), 255);
    EXPECT_EQ(index(16, 480), 255);
    EXPECT_EQ(index(400, 480), 0);
}

TEST_F(AntiWrinklePage, TheBufferHoldsTheEnlargedPage) {
    const GreyPage page(31, 59, Bytes(31 * 59));
    ASSERT_GE(printer.processedSize(31, 59, 31), 832U * 959U);
    const Processed result = process(printer, page);
    // rows of 832 bytes; margins are 255 too, as every index of 1
    EXPECT_EQ(result.out[480 * 832], 255);
    EXPECT_EQ(result.out[480 * 832 + 399], 255);
    EXPECT_EQ(result.out[480 * 832 + 400], 0);
    EXPECT_EQ(result.out[480 * 832 + 430], 0);
    EXPECT_EQ(result.out[480 * 832 + 431], 255);
    EXPECT_EQ(result.out[958 * 832 + 830], 255);
    EXPECT_EQ(result.out[958 * 832 + 831], 0) << "between width and row";
}

TEST_F(AntiWrinklePage, TheLengthIsThePagesHeightTimesTheEnlargedRow) {
    const Processed result = process(printer, {31, 59, Bytes(31 * 59)});
    EXPECT_EQ(result.length, 59 * 832);
    EXPECT_NE(result.log.find("Filled the output buffer with processed pixels, length: 49088\n"),
              std::string::npos);
}

TEST_F(AntiWrinklePage, TheBorderIsLoggedBetweenInversionAndOutput) {
    printer.setNegativePrint(true);
    const std::string log = process(printer, {31, 59, Bytes(31 * 59)}).log;
    const auto inverting = log.find("Inverting");
    const auto border = log.find("EnableAntiWrink: AntiWrinkle level: 2");
    const auto filled = log.find("Filled");
    EXPECT_LT(inverting, border);
    EXPECT_LT(border, filled);
    EXPECT_NE(filled, std::string::npos);
}

TEST_F(AntiWrinklePage, LevelZeroIsNoBorder) {
    printer.setAntiWrinkle(0);
    const Processed result = process(printer, {31, 59, Bytes(31 * 59)});
    EXPECT_EQ(printer.processedImage()->GetWidth(), 31U);
    EXPECT_EQ(result.log.find("EnableAntiWrink"), std::string::npos);
}

TEST_F(AntiWrinklePage, ACanvasThatCannotBeMadeLeavesThePageItsSize) {
    printer.setAntiWrinkle(0xFFFFFFFF);
    ASSERT_GE(printer.processedSize(31, 59, 31), 32U * 59U);
    EXPECT_LT(printer.processedSize(31, 59, 31), 100'000U);
    const Processed result = process(printer, {31, 59, Bytes(31 * 59, 255)});
    EXPECT_EQ(printer.processedImage()->GetWidth(), 31U);
    EXPECT_EQ(result.length, 59 * 32);
    EXPECT_EQ(result.out[58 * 32 + 30], 255);
}

TEST_F(AntiWrinklePage, AnEnlargedPageIsPrintedWhole) {
    stderr_of([&] {
        const Bytes pixels(31 * 59);
        printer.printImage(pixels.data(), 31, 59, 31);
    });
    ASSERT_EQ(printer.prints.size(), 1U);
    EXPECT_EQ(printer.prints[0].bytesPerLine, 832UL);
    EXPECT_EQ(printer.prints[0].height, 959UL);
    EXPECT_EQ(printer.prints[0].width, 831UL);
}

}  // namespace
}  // namespace kelp_test
