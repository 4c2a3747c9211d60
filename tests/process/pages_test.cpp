// From pages to the printer's commands, worked by hand, with the threshold halftone.

#include <gtest/gtest.h>

#include "tests/process/expected.h"
#include "tests/process/sandbox.h"
#include "tests/support/grey_pages.h"

namespace kelp_test {
namespace {

TEST(Pages, AJobWithoutPagesIsSixtyFourLineFeeds) {
    const JobResult result = run_job(job_of({}));
    EXPECT_EQ(result.exit_status, 0);
    EXPECT_EQ(result.output, std::string(64, '\n'));
    EXPECT_TRUE(result.snapshots.empty());
    EXPECT_FALSE(result.debug_line.has_value());
}

TEST(Pages, ATinyPageComesOutByteForByte) {
    const JobResult result = run_job(job_of({tiny_page()}));
    EXPECT_EQ(result.exit_status, 0);
    EXPECT_EQ(result.output, std::string(64, '\n') +
                                 "SIZE 2.0 mm, 0.3 mm\r\n"
                                 "^XX\r\n"
                                 "^PW16\r\n^LL2\r\n"
                                 "^MNN\r\n"
                                 "^PON\r\n"
                                 "~SD0\r\n"
                                 "^XZ\r\n\r\n"
                                 "^XX\r\n"
                                 "^PQ1\n"
                                 "~DGR:CUPS.GRF,4,2,\n"
                                 "JFF0,"
                                 "^FO0,0^XGR:CUPS.GRF,1,1^FS\n"
                                 "^XZ\r\n");
}

TEST(Pages, TheThresholdLiesBetween128And129) {
    Page page;
    page.height = 1;
    // 129 becomes a dot and 128 does not: bits 1000 0001 0100 0000, "8140".
    page.pixels = uniform(16, 1, 128);
    page.pixels[0] = page.pixels[7] = page.pixels[9] = '\x81';
    const JobResult result = run_job(job_of({page}));
    // 1 × 25.4 / 203 = 0.125 mm.
    const SetupBlock setup{.size = "2.0 mm, 0.1 mm", .length = 1};
    const Graphic graphic{.total = 2, .row_bytes = 2, .rows = "8140"};
    EXPECT_EQ(result.output, preamble() + setup.text() + graphic.text());
}

TEST(Pages, LaterBlackRowsAreColonsAndEveryPageStartsAnew) {
    Page page;
    page.height = 3;
    page.pixels = uniform(16, 3, 255);
    page.pixels[16] = '\0';  // 0111 1111 1111 1111: "7FFF"
    const JobResult result = run_job(job_of({page, page}));
    // 3 × 25.4 / 203 = 0.375 mm; in single precision 203 × that / 25.4 stays a hair below 3.
    const SetupBlock setup{.size = "2.0 mm, 0.4 mm", .length = 2};
    const Graphic graphic{.total = 6, .row_bytes = 2, .rows = "JF7IF:"};
    const std::string one = setup.text() + graphic.text();
    EXPECT_EQ(result.output, preamble() + one + one);
}

TEST(Pages, AWidthThatIsNoMultipleOfEightFillsUpItsLastByte) {
    Page page;
    page.width = 20;
    page.height = 1;
    page.pixels = drawn("....#......#...#####");
    const JobResult result = run_job(job_of({page}));
    // 0000 1000 0001 0001 1111 + 0000: "0811F0".
    const SetupBlock setup{.size = "2.5 mm, 0.1 mm", .width = 20, .length = 1};
    // Twice "1" is "H1", and a final single "0" stays.
    const Graphic graphic{.total = 3, .row_bytes = 3, .rows = "08H1F0"};
    EXPECT_EQ(result.output, preamble() + setup.text() + graphic.text());
}

TEST(Pages, AnEmptyPageIsACommaARow) {
    Page page;
    page.pixels = uniform(16, 2, 0);
    const JobResult result = run_job(job_of({page}));
    EXPECT_EQ(result.output, preamble() + SetupBlock().text() + Graphic{.rows = ",,"}.text());
}

TEST(Pages, ALongRunUsesAllCountLetters) {
    // 812 dots, one row, all ink: 101 bytes and four bits, that is 203 times F and a last 0.
    // 203 = 200 ('p') + 3 ('I').
    Page page;
    page.width = 812;
    page.height = 1;
    page.pixels = uniform(812, 1, 255);
    // 812 × 25.4 / 203 = 101.6 mm, in single precision a hair less: 811 dots.
    const SetupBlock setup{.size = "101.6 mm, 0.1 mm", .width = 811, .length = 1};
    const Graphic graphic{.total = 102, .row_bytes = 102, .rows = "pIF0"};
    EXPECT_EQ(run_job(job_of({page})).output, preamble() + setup.text() + graphic.text());
}

TEST(Pages, TheColourSpaceOfTheHeaderDoesNotMatter) {
    // White-space grey goes through unchanged as well: what is not 0 is printed.
    Page page = tiny_page();
    page.color_space = CUPS_CSPACE_W;
    EXPECT_EQ(run_job(job_of({page})).output, preamble() + tiny_page_output());
}

TEST(Pages, MirrorImageTurnsTheRowsAround) {
    const std::string ppd = bare_ppd().option("MirrorImage", {"true"}).text();
    Job job = job_of({tiny_page()});
    job.ppd = ppd;
    // The second row is 12 blank dots and four with ink: "000F", three zeros in mid-row as "I0".
    EXPECT_EQ(run_job(job).output,
              preamble() + SetupBlock().text() + Graphic{.rows = "JFI0F"}.text());
}

TEST(Pages, NegativeImageOnTheThresholdPrintsEverything) {
    // The two indices 0 and 1 become 255 and 254, and neither is 0.
    Job job = job_of({tiny_page()});
    job.ppd = bare_ppd().option("NegativeImage", {"true"}).text();
    EXPECT_EQ(run_job(job).output,
              preamble() + SetupBlock().text() + Graphic{.rows = "JF:"}.text());
}

TEST(Pages, BrightnessIsAddedFiveAStepBeforeTheThreshold) {
    // 5 × 10 on top: 79 becomes 129, 78 becomes 128.
    Page page = tiny_page();
    page.pixels = uniform(16, 1, 79) + uniform(16, 1, 78);
    Job job = job_of({page}, "Brightness=10");
    job.ppd = bare_ppd().option("Brightness", {"0", "10"}).text();
    EXPECT_EQ(run_job(job).output,
              preamble() + SetupBlock().text() + Graphic{.rows = "JF,"}.text());
}

TEST(Pages, SeveralPagesFollowOneAnotherEachWithItsOwnSize) {
    Page second = tiny_page();
    second.height = 4;
    second.pixels += second.pixels;
    Page third = tiny_page();
    third.width = 8;
    third.pixels = drawn("#......#........");
    const JobResult result = run_job(job_of({tiny_page(), second, third}));
    EXPECT_EQ(result.exit_status, 0);
    // The third row of the second page is full again, so it is a colon.
    const SetupBlock second_setup{.size = "2.0 mm, 0.5 mm", .length = 4};
    const Graphic second_graphic{.total = 8, .rows = "JFF0,:F0,"};
    // 8 × 25.4 / 203 = 1.001 mm.
    const SetupBlock third_setup{.size = "1.0 mm, 0.3 mm", .width = 8};
    const Graphic third_graphic{.total = 2, .row_bytes = 1, .rows = "81,"};
    EXPECT_EQ(result.output, preamble() + tiny_page_output() + second_setup.text() +
                                 second_graphic.text() + third_setup.text() + third_graphic.text());
}

TEST(Pages, CopiesComeFromEachPagesHeader) {
    Page two = tiny_page();
    two.copies = 2;
    Page none = tiny_page();
    none.copies = 0;
    Page many = tiny_page();
    many.copies = 4294967295U;  // read as a signed number
    const JobResult result = run_job(job_of({two, none, many}));
    EXPECT_EQ(result.output, preamble() + SetupBlock().text() + Graphic{.copies = 2}.text() +
                                 SetupBlock().text() + Graphic{.copies = 0}.text() +
                                 SetupBlock().text() + Graphic{.copies = -1}.text());
    EXPECT_EQ(lines_with(result.error, "DEBUG:PAGE: "),
              (std::vector<std::string>{"DEBUG:PAGE: 1 2", "DEBUG:PAGE: 2 0", "DEBUG:PAGE: 3 -1"}));
}

TEST(Pages, APageOfZeroHeightEndsTheJobWell) {
    RawPage flat = raw_page(tiny_page());
    flat.header.cupsHeight = 0;
    flat.pixels.clear();
    Job job;
    job.raster = raw_raster_stream({raw_page(tiny_page()), flat, raw_page(tiny_page())});
    const JobResult result = run_job(job);
    EXPECT_EQ(result.exit_status, 0);
    EXPECT_EQ(result.output, preamble() + tiny_page_output());
    EXPECT_EQ(lines_with(result.error, "ERROR:"), std::vector<std::string>{});
}

TEST(Pages, APageOfZeroBytesPerLineEndsTheJobWell) {
    RawPage empty = raw_page(tiny_page());
    empty.header.cupsWidth = 0;
    empty.header.cupsBytesPerLine = 0;
    empty.pixels.clear();
    Job job;
    job.raster = raw_raster_stream({raw_page(tiny_page()), empty, raw_page(tiny_page())});
    const JobResult result = run_job(job);
    EXPECT_EQ(result.exit_status, 0);
    EXPECT_EQ(result.output, preamble() + tiny_page_output());
}

TEST(Pages, AnotherDepthAfterTwoGoodPagesFailsButThosePagesAreSent) {
    for (const unsigned bits : {1U, 2U, 4U, 16U}) {
        Page deep = tiny_page();
        deep.bits_per_pixel = bits;
        deep.bytes_per_line = 16 * bits / 8;
        deep.pixels.clear();
        const JobResult result = run_job(job_of({tiny_page(), tiny_page(), deep, tiny_page()}));
        EXPECT_EQ(result.exit_status, 1) << bits;
        EXPECT_EQ(result.output, preamble() + tiny_page_output() + tiny_page_output()) << bits;
        EXPECT_EQ(lines_with(result.error, "ERROR:"),
                  std::vector<std::string>{"ERROR:Unsupported bits per pixel : " +
                                           std::to_string(bits) + " ! Requires 8 bits per pixel!"});
    }
}

TEST(Pages, EveryKindOfRasterStreamPrintsTheSame) {
    const std::vector<Page> pages{tiny_page(), tiny_page()};
    const std::vector<RawPage> raw{raw_page(pages[0]), raw_page(pages[1])};
    const std::string expected = preamble() + tiny_page_output() + tiny_page_output();
    Job job;
    for (const std::string& raster : {raster_stream(pages, CUPS_RASTER_WRITE),
                                      raster_stream(pages, CUPS_RASTER_WRITE_COMPRESSED),
                                      raster_stream(pages, CUPS_RASTER_WRITE_PWG),
                                      raw_raster_stream(raw), swapped_raster_stream(raw)}) {
        job.raster = raster;
        for (const bool by_file : {false, true}) {
            job.by_file = by_file;
            const JobResult result = run_job(job);
            EXPECT_EQ(result.exit_status, 0) << raster.substr(0, 4);
            EXPECT_EQ(result.output, expected) << raster.substr(0, 4);
        }
    }
}

TEST(Pages, TheResolutionOfTheHeaderGivesTheSizeInMillimetres) {
    Page page = tiny_page();
    page.resolution_x = 300;
    page.resolution_y = 100;
    // 16 × 25.4 / 300 = 1.35467 mm, 2 × 25.4 / 100 = 0.508 mm; at 203 dpi those are 10.8 and
    // 4.06 dots, cut to whole ones.
    const SetupBlock setup{.size = "1.4 mm, 0.5 mm", .width = 10, .length = 4};
    EXPECT_EQ(run_job(job_of({page})).output, preamble() + setup.text() + Graphic().text());
}

}  // namespace
}  // namespace kelp_test
