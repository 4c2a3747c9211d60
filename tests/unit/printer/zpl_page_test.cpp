#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <new>
#include <string>
#include <utility>

#include "printer/zpl_printer.h"
#include "tests/unit/image/allocation_failure.h"
#include "tests/unit/printer/support/memory_stream.h"
#include "tests/unit/printer/support/recording_printer.h"
#include "tests/unit/printer/support/stderr_capture.h"

namespace kelp_test {
namespace {

class ZplPage : public testing::Test {
  protected:
    ZplPage() {
        printer.getOutputStreams() = {stream.file()};
        header.NumCopies = 1;
        printer.setPageHeader(&header);
        sPrinter = &printer;
        LastSet = 0;
    }
    ~ZplPage() override {
        sPrinter = nullptr;
        LastSet = 0;
    }

    // The label of a page of packed rows.
    std::string label(Bytes page, unsigned long height, unsigned long width) {
        log = stderr_of([&] { printer.doPrintImage(page.data(), width, height, width); });
        return stream.take();
    }

    MemoryStream stream;
    ZplPrinter printer;
    cups_page_header2_t header{};
    std::string log;
};

// Row 0 all dots, row 1 the first four.
Bytes example_page() {
    Bytes page(32);
    std::fill_n(page.begin(), 16, static_cast<unsigned char>(255));
    std::fill_n(page.begin() + 16, 4, static_cast<unsigned char>(1));
    return page;
}

TEST_F(ZplPage, IsADownloadedGraphicRecalledAtTheOrigin) {
    EXPECT_EQ(label(example_page(), 2, 16),
              "^XX\r\n"
              "^PQ1\n"
              "~DGR:CUPS.GRF,4,2,\n"
              "JFF0,"
              "^FO0,0^XGR:CUPS.GRF,1,1^FS\n"
              "^XZ\r\n");
    EXPECT_EQ(LastSet, 1);
    EXPECT_EQ(log, "DEBUG:GrayToMono, bpl(16), h(2), skipPixels(0), wb(16)\n");
}

TEST_F(ZplPage, ASolidThirdRowAddsAColon) {
    Bytes page = example_page();
    page.resize(48, 1);
    EXPECT_EQ(label(page, 3, 16),
              "^XX\r\n^PQ1\n~DGR:CUPS.GRF,6,2,\nJFF0,:^FO0,0^XGR:CUPS.GRF,1,1^FS\n^XZ\r\n");
}

TEST_F(ZplPage, EveryStreamGetsTheSameLabel) {
    MemoryStream second;
    printer.getOutputStreams().push_back(second.file());
    const std::string first = label(example_page(), 2, 16);
    EXPECT_EQ(first, "^XX\r\n^PQ1\n~DGR:CUPS.GRF,4,2,\nJFF0,^FO0,0^XGR:CUPS.GRF,1,1^FS\n^XZ\r\n");
    EXPECT_EQ(second.take(), first);
}

TEST_F(ZplPage, CopiesAreThoseOfThePageHeader) {
    for (const unsigned copies : {0U, 1U, 2U, 250U}) {
        header.NumCopies = copies;
        const std::string text = label({1}, 1, 1);
        EXPECT_EQ(text.substr(0, text.find('~')), "^XX\r\n^PQ" + std::to_string(copies) + "\n");
    }
}

TEST_F(ZplPage, WithoutAPageHeaderThereIsOneCopy) {
    printer.setPageHeader(nullptr);
    EXPECT_EQ(label({1}, 1, 1),
              "^XX\r\n^PQ1\n~DGR:CUPS.GRF,1,1,\n80^FO0,0^XGR:CUPS.GRF,1,1^FS\n^XZ\r\n");
}

TEST_F(ZplPage, ThePrintQuantityGoesThroughThePublishedPrinter) {
    MemoryStream other_stream;
    ZplPrinter other;
    other.getOutputStreams() = {other_stream.file()};
    sPrinter = &other;
    header.NumCopies = 3;
    EXPECT_EQ(label({1}, 1, 1), "^XX\r\n~DGR:CUPS.GRF,1,1,\n80^FO0,0^XGR:CUPS.GRF,1,1^FS\n^XZ\r\n");
    EXPECT_EQ(other_stream.take(), "^PQ3\n");
}

TEST_F(ZplPage, TheFirstArgumentOfThePrintQuantityHasNoEffect) {
    setPrint(99, 7);
    setPrint(0, -1);
    EXPECT_EQ(stream.take(), "^PQ7\n^PQ-1\n");
}

TEST_F(ZplPage, ABlackPageIsOneRowAndColons) {
    // 832 dots: 104 bytes, 208 digits
    EXPECT_EQ(label(Bytes(832 * 3, 1), 3, 832),
              "^XX\r\n^PQ1\n~DGR:CUPS.GRF,312,104,\npNF::^FO0,0^XGR:CUPS.GRF,1,1^FS\n^XZ\r\n");
}

TEST_F(ZplPage, WithTheFlagClearedTheNextBlackPageStartsInFullAgain) {
    const std::string first = label(Bytes(832 * 3, 1), 3, 832);
    LastSet = 0;
    EXPECT_EQ(label(Bytes(832 * 3, 1), 3, 832), first);
}

TEST_F(ZplPage, TheFlagIsNotClearedByThePageItself) {
    LastSet = 1;
    EXPECT_EQ(label(Bytes(16 * 2, 1), 2, 16),
              "^XX\r\n^PQ1\n~DGR:CUPS.GRF,4,2,\n::^FO0,0^XGR:CUPS.GRF,1,1^FS\n^XZ\r\n");
}

TEST_F(ZplPage, AWhitePageIsACommaARow) {
    EXPECT_EQ(label(Bytes(100 * 4), 4, 100),
              "^XX\r\n^PQ1\n~DGR:CUPS.GRF,52,13,\n,,,,^FO0,0^XGR:CUPS.GRF,1,1^FS\n^XZ\r\n");
}

TEST_F(ZplPage, APartialLastByteIsNeverSolid) {
    // 812 dots: 101 bytes of FF and an F0: 203 digits F (p, then 3: I), one 0
    EXPECT_EQ(label(Bytes(812 * 2, 1), 2, 812),
              "^XX\r\n^PQ1\n~DGR:CUPS.GRF,204,102,\npIF0pIF0^FO0,0^XGR:CUPS.GRF,1,1^FS\n^XZ\r\n");
}

TEST_F(ZplPage, SkippedPixelsNarrowTheGraphic) {
    printer.setSkipRightPixels(5);
    // 11 dots: FF E0 a row
    EXPECT_EQ(label(Bytes(16 * 2, 1), 2, 16),
              "^XX\r\n^PQ1\n~DGR:CUPS.GRF,4,2,\nHFE0HFE0^FO0,0^XGR:CUPS.GRF,1,1^FS\n^XZ\r\n");
    EXPECT_EQ(log, "DEBUG:GrayToMono, bpl(16), h(2), skipPixels(5), wb(11)\n");
}

TEST_F(ZplPage, RowsAreTakenAWidthApartWhateverTheBytesPerLine) {
    // Two rows of 6 dots in lines of 8 bytes: the second row is read from byte 6.
    Bytes page{1, 0, 0, 0, 0, 1, 1, 1,  // row 0: 100001; byte 6 starts what is read as row 1
               1, 0, 1, 0, 0, 0, 0, 0};
    log = stderr_of([&] { printer.doPrintImage(page.data(), 8, 2, 6); });
    // 1000 0100 = 84; bytes 6 to 11, 1 1 1 0 1 0: 1110 1000 = E8
    EXPECT_EQ(stream.take(),
              "^XX\r\n^PQ1\n~DGR:CUPS.GRF,2,1,\n84E8^FO0,0^XGR:CUPS.GRF,1,1^FS\n^XZ\r\n");
}

TEST_F(ZplPage, ThePixelsArePackedInPlace) {
    Bytes page = example_page();
    log = stderr_of([&] { printer.doPrintImage(page.data(), 16, 2, 16); });
    EXPECT_EQ(Bytes(page.begin(), page.begin() + 4), (Bytes{0xFF, 0xFF, 0xF0, 0x00}));
}

TEST_F(ZplPage, IsReachedThroughTheBaseClass) {
    Bytes page = example_page();
    KelpPrinter& base = printer;
    log = stderr_of([&] { base.doPrintImage(page.data(), 16, 2, 16); });
    EXPECT_NE(stream.take().find("JFF0,"), std::string::npos);
}

// Every other dot prints: a character for each digit.
Bytes dotted_page(std::size_t height, std::size_t width) {
    Bytes page(height * width);
    for (std::size_t i = 0; i < page.size(); ++i) {
        page[i] = static_cast<unsigned char>(i % 8 < 4 ? i % 2 : (i + 1) % 2);
    }
    return page;
}

TEST_F(ZplPage, IsNotBegunWithoutMemoryForItsRows) {
    Bytes page = dotted_page(3, 320);
    stderr_of([&] {
        const AllocationFailure none(1);
        EXPECT_THROW(printer.doPrintImage(page.data(), 320, 3, 320), std::bad_alloc);
    });
    EXPECT_EQ(stream.take(), "");
}

TEST_F(ZplPage, NeedsNoOtherMemory) {
    // The rows of the higher page have 1000 characters each, more than are sent in one piece.
    for (const auto& size : {std::pair{3UL, 320UL}, {150UL, 4000UL}}) {
        const unsigned long height = size.first;
        const unsigned long width = size.second;
        Bytes page = dotted_page(height, width);
        const std::string expected = label(page, height, width);
        ZplPrinter other;
        other.getOutputStreams() = {stream.file()};
        other.setPageHeader(&header);
        sPrinter = &other;
        LastSet = 0;
        stderr_of([&] {
            const AllocationFailure all_but_one(1, 1);
            other.doPrintImage(page.data(), width, height, width);
            EXPECT_EQ(all_but_one.refused(), 0U);
        });
        EXPECT_EQ(stream.take(), expected);
        sPrinter = &printer;
        LastSet = 0;
    }
}

TEST_F(ZplPage, HoldsNoMoreThanAPieceOfTheGraphicAndARow) {
    Bytes page = dotted_page(150, 4000);
    stderr_of([&] {
        const AllocationFailure large(70'000);
        printer.doPrintImage(page.data(), 4000, 150, 4000);
        EXPECT_EQ(large.refused(), 0U);
    });
    EXPECT_GT(stream.take().size(), 150'000U);
}

}  // namespace
}  // namespace kelp_test
