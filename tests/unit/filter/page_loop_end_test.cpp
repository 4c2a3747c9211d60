#include <fcntl.h>

#include <cstddef>
#include <cstdio>
#include <cstdlib>
#include <new>
#include <string>
#include <vector>

#include "tests/unit/filter/page_loop_fixture.h"
#include "tests/unit/filter/raster_reader.h"

namespace kelp_test {
namespace {

// How the page loop ends.
using PageLoopEnd = PageLoop;

RawPage bad_page(void (*change)(cups_page_header2_t&)) {
    RawPage page = raw_page(example_page());
    change(page.header);
    return page;
}

TEST_F(PageLoopEnd, AStreamWithoutPagesIsDoneAtOnce) {
    EXPECT_EQ(print(raster_stream({})), 0);
    EXPECT_EQ(text, "");
    EXPECT_EQ(log, "");
}

TEST_F(PageLoopEnd, AStreamThatCouldNotBeOpenedHasNoPages) {
    EXPECT_EQ(printPages(nullptr, settings, printer), 0);
    EXPECT_EQ(print(""), 0);
    EXPECT_EQ(print("This is no raster stream, though it is long enough to be one."), 0);
    EXPECT_EQ(text, "");
}

TEST_F(PageLoopEnd, AStreamThatLibcupsHasNoMemoryForIsNoEndOfTheJob) {
    const std::string two_pages = raster_stream({example_page(), example_page()});
    for (const auto what : {ReaderWithoutMemory::For::header, ReaderWithoutMemory::For::pixels}) {
        for (const int page : {0, 1}) {
            const ReaderWithoutMemory failure(page, what);
            EXPECT_THROW(print(two_pages), std::bad_alloc);
        }
    }
}

TEST_F(PageLoopEnd, AOneBitPageFailsAfterThePagesBeforeIt) {
    const RawPage one_bit = bad_page([](cups_page_header2_t& header) {
        header.cupsBitsPerPixel = header.cupsBitsPerColor = 1;
        header.cupsBytesPerLine = 2;
    });
    const RawPage good = raw_page(example_page());
    EXPECT_EQ(print(raw_raster_stream({good, good, one_bit, good})), 1);
    const std::string page = example_setup + example_label;
    EXPECT_EQ(text, page + page);
    EXPECT_TRUE(
        log.ends_with("ERROR:Unsupported bits per pixel : 1 ! Requires 8 bits per pixel!\n"))
        << log;
}

TEST_F(PageLoopEnd, OtherDepthsFailAlike) {
    const RawPage colour = bad_page([](cups_page_header2_t& header) {
        header.cupsBitsPerPixel = 24;
        header.cupsColorSpace = CUPS_CSPACE_RGB;
        header.cupsNumColors = 3;
        header.cupsBytesPerLine = 48;
    });
    EXPECT_EQ(print(raw_raster_stream({colour})), 1);
    EXPECT_EQ(text, "");
    EXPECT_EQ(log, "ERROR:Unsupported bits per pixel : 24 ! Requires 8 bits per pixel!\n");
    EXPECT_TRUE(files.opened().empty()) << "no dimensions are left";
}

TEST_F(PageLoopEnd, APageWithoutRowsEndsTheJobWell) {
    const RawPage empty = bad_page([](cups_page_header2_t& header) { header.cupsHeight = 0; });
    const RawPage good = raw_page(example_page());
    EXPECT_EQ(print(raw_raster_stream({good, empty, good})), 0);
    EXPECT_EQ(text, example_setup + example_label);
}

TEST_F(PageLoopEnd, APageWithoutBytesEndsTheJobWell) {
    const RawPage empty =
        bad_page([](cups_page_header2_t& header) { header.cupsBytesPerLine = 0; });
    const RawPage good = raw_page(example_page());
    EXPECT_EQ(print(raw_raster_stream({good, empty, good})), 0);
    EXPECT_EQ(text, example_setup + example_label);
}

TEST_F(PageLoopEnd, SuchPagesEndTheJobAlsoWhereTheStreamsReaderLetsThemPass) {
    const ChangedHeader::Change changes[] = {
        [](cups_page_header2_t& header) { header.cupsHeight = 0; },
        [](cups_page_header2_t& header) { header.cupsBytesPerLine = 0; },
        [](cups_page_header2_t& header) {
            header.cupsBytesPerLine = 0;
            header.HWResolution[0] = 0;  // what cannot be printed does not matter then
        }};
    for (const ChangedHeader::Change change : changes) {
        const ChangedHeader changed(change);
        EXPECT_EQ(print(raster_stream({example_page()})), 0);
        EXPECT_EQ(text, "");
        EXPECT_EQ(log, "");
    }
    EXPECT_TRUE(files.opened().empty()) << "no dimensions are left";
}

TEST_F(PageLoopEnd, AnEmptyPageOfAnotherDepthFails) {
    const ChangedHeader changed([](cups_page_header2_t& header) {
        header.cupsHeight = 0;
        header.cupsBitsPerPixel = 1;
    });
    EXPECT_EQ(print(raster_stream({example_page()})), 1);
    EXPECT_EQ(log, "ERROR:Unsupported bits per pixel : 1 ! Requires 8 bits per pixel!\n");
}

TEST_F(PageLoopEnd, APageThatCannotBePrintedFailsBeforeAnythingOfItIsSent) {
    const RawPage pages[] = {
        bad_page([](cups_page_header2_t& header) { header.cupsWidth = 17; }),
        bad_page([](cups_page_header2_t& header) { header.HWResolution[0] = 0; }),
        bad_page([](cups_page_header2_t& header) { header.HWResolution[1] = 0; }),
        bad_page([](cups_page_header2_t& header) { header.cupsHeight = 0x10000000; })};
    const RawPage good = raw_page(example_page());
    for (const RawPage& bad : pages) {
        EXPECT_EQ(print(raw_raster_stream({good, bad, good})), 1);
        EXPECT_EQ(text, example_setup + example_label);
        EXPECT_EQ(count(log, "ERROR:"), 1U) << log;
        EXPECT_TRUE(lines_of(log).back().starts_with("ERROR:")) << log;
    }
}

TEST_F(PageLoopEnd, APageCutInItsPixelsKeepsItsSetupAndSendsNoHalfLabel) {
    const std::string stream =
        raw_raster_stream({raw_page(example_page()), raw_page(example_page())});
    for (const std::size_t missing : {1U, 16U, 31U, 32U}) {
        EXPECT_EQ(print(stream.substr(0, stream.size() - missing)), 0);
        EXPECT_EQ(text, example_setup + example_label + example_setup) << missing;
    }
}

TEST_F(PageLoopEnd, APageOfWhichNothingIsHandedOverIsSkippedAndTheNextOneRead) {
    const ShortPages none(0);
    EXPECT_EQ(print(raster_stream({example_page(), example_page()})), 0);
    EXPECT_EQ(text, example_setup + example_setup);
    EXPECT_TRUE(logged("DEBUG:PAGE: 2 1"));
    EXPECT_EQ(count(log, "printImage"), 0U);
}

// Leaves used memory of small sizes for the next allocations.
void leave_used_memory() {
    std::vector<std::string> blocks;
    for (std::size_t size = 24; size < 200; size += 8) {
        blocks.resize(blocks.size() + 7, std::string(size, '\xA5'));
    }
}

TEST_F(PageLoopEnd, PixelsThatAreNotHandedOverAreZero) {
    Page higher = example_page();
    higher.height = 6;
    const std::string stream = raster_stream({example_page(), higher});
    leave_used_memory();
    const ShortPages one(1);
    EXPECT_EQ(print(stream), 0);
    // One dot in row 0: 8000, then white rows, also where the buffer has grown.
    EXPECT_EQ(count(text, "~DGR:CUPS.GRF,4,2,\n80,,^FO0,0"), 1U) << text;
    EXPECT_EQ(count(text, "~DGR:CUPS.GRF,12,2,\n80,,,,,,^FO0,0"), 1U) << text;
}

TEST_F(PageLoopEnd, AHeaderThatIsCutEndsTheJob) {
    std::string stream = raw_raster_stream({raw_page(example_page()), raw_page(example_page())});
    stream.resize(stream.size() - 33);
    EXPECT_EQ(print(stream), 0);
    EXPECT_EQ(text, example_setup + example_label);
}

TEST_F(PageLoopEnd, ABrokenOutputDoesNotKeepPagesFromTheOtherStreams) {
    const std::string stream = raster_stream({example_page(), example_page()});
    const std::string page = example_setup + example_label;
    // That data was lost is found at the end of the job, not here.
    const auto print_to_full_device = [&] {
        std::fflush(stdout);
        dup2(open("/dev/full", O_WRONLY), STDOUT_FILENO);
        std::fputs("what is lost", stdout);
        std::fflush(stdout);
        printer.getOutputStreams() = {stdout, output.file()};
        const int status = print(stream);
        std::_Exit(status == 0 && text == page + page ? 0 : 2);
    };
    EXPECT_EXIT(print_to_full_device(), testing::ExitedWithCode(0), "");
}

}  // namespace
}  // namespace kelp_test
