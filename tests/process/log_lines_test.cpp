// The job's log, line by line. Messages that end in a line feed of their own leave an empty line,
// and two labels of one message carry each other's number: both are relied on.

#include <gtest/gtest.h>

#include "tests/process/expected.h"
#include "tests/process/sandbox.h"
#include "tests/support/grey_pages.h"

namespace kelp_test {
namespace {

std::string settings_of_the_bare_ppd() {
    // 288 and 432 points × 0.3528 as single-precision numbers.
    return "DEBUG:PageSizeName: w288h432\n"
           "DEBUG:Custom Size: (288.000000,432.000000,0.000000,0.000000,288.000000,432.000000)\n"
           "DEBUG:Set page size: width 101.606400 mm, height 152.409607 mm\n"
           "DEBUG:settings->Resolution:\n"
           "DEBUG:settings->MediaMethod:\n"
           "DEBUG:settings->PaperType:\n"
           "DEBUG:settings->GapsHeight:0\n"
           "DEBUG:settings->PostAction:\n"
           "DEBUG:settings->Occurrence:\n"
           "DEBUG:settings->Origin:\n"
           "DEBUG:settings->MirrorImage:0\n"
           "DEBUG:settings->NegativeImage:0\n"
           "DEBUG:settings->PrintSpeed:\n"
           "DEBUG:settings->Darkness:0\n"
           "DEBUG:settings->halftoneType:0\n"
           "DEBUG:settings->DirectBuffer:0\n"
           "DEBUG:settings->StoredGraphics:0\n"
           "DEBUG:settings->OptionDisplayUnit:0\n"
           "DEBUG:settings->PageSize:w288h432\n"
           "DEBUG:settings->pageWidth:101.606400\n"
           "DEBUG:settings->pageHeight:152.409607\n";
}

// Every number of the header differs from every other, and so do the page's three sizes.
RawPage page_with_distinct_numbers() {
    Page page = tiny_page();
    page.bytes_per_line = 20;
    page.pixels = uniform(20, 2, 255);
    page.copies = 3;
    page.resolution_y = 204;
    RawPage raw = raw_page(page);
    raw.header.cupsMediaType = 5;
    raw.header.cupsCompression = 6;
    raw.header.cupsRowCount = 7;
    raw.header.cupsRowFeed = 9;
    raw.header.cupsRowStep = 10;
    return raw;
}

std::string header_lines(int page) {
    return "DEBUG:PAGE: " + std::to_string(page) +
           " 3\n\n"
           "DEBUG:header.HWResolution[0]:203\n\n"
           "DEBUG:header.HWResolution[1]:204\n"
           "DEBUG:header.cupsWidth:16\n"
           "DEBUG:header.cupsHeight:2\n"
           "DEBUG:header.cupsMediaType:5\n"
           "DEBUG:header.cupsBitsPerColor:8\n"
           "DEBUG:header.cupsBitsPerPixel:8\n"
           "DEBUG:header.cupsBytesPerLine:20\n"
           "DEBUG:header.cupsColorOrder:0\n"
           "DEBUG:header.cupsColorSpace:3\n"
           "DEBUG:header.cupsCompression:6\n"
           "DEBUG:header.cupsRowCount:7\n"
           "DEBUG:header.cupsRowFeed:9\n"
           "DEBUG:header.cupsRowStep:10\n";
}

std::string image_lines() {
    return "DEBUG:printImage: Start processing image, input width: 16, height: 2, bytes per line: "
           "20\n"
           "DEBUG:printImage: Memory allocated successfully, size: 40 bytes\n"
           "DEBUG:printImage: Saving original image, file path will be generated based on time\n"
           "DEBUG:printImage: Memory for processing result allocated successfully, size: 40 bytes\n"
           "DEBUG:PageProcess: TQ dithering is disabled\n"
           "DEBUG:PageProcess: Successfully created CxImage from array with stride 20\n"
           "DEBUG:PageProcess: Applied default dithering and increased bit depth\n"
           "DEBUG:PageProcess: negativePrint_ 0\n"
           // Two rows of the image's own 16 bytes.
           "DEBUG:PageProcess: Filled the output buffer with processed pixels, length: 32\n"
           // "width" carries the bytes per line and "bytes per line" the width.
           "DEBUG:printImage: Processed image information - pointer address: <address>, width: 20, "
           "height: 2, bytes per line: 16, number of top blank lines: 0, number of bottom blank "
           "lines: 0, adjusted height: 2\n"
           "DEBUG:printImage: Saving processed image, file path will be generated based on time\n"
           "DEBUG:printImage: Starting to print the processed image\n"
           "DEBUG:GrayToMono, bpl(16), h(2), skipPixels(0), wb(16)\n"
           "DEBUG:printImage: Freed the allocated memory, address: (nil)\n"
           "DEBUG:printImage: Freed the memory for processing result, address: 0x<address>\n"
           "DEBUG:printImage: Image processing completed\n";
}

TEST(LogLines, OfATwoPageJobAreThese) {
    Job job;
    job.raster = raw_raster_stream({page_with_distinct_numbers(), page_with_distinct_numbers()});
    const JobResult result = run_job(job);
    EXPECT_EQ(result.exit_status, 0);
    // 16 × 25.4 / 203 and 2 × 25.4 / 204.
    const std::string size = "DEBUG:pageWidth: 2.001971,pageHeight: 0.249020\n";
    EXPECT_EQ(without_addresses(result.error), settings_of_the_bare_ppd() + size + header_lines(1) +
                                                   image_lines() + size + header_lines(2) +
                                                   image_lines());
}

TEST(LogLines, OfAJobWithoutPagesAreTheSettings) {
    EXPECT_EQ(run_job(job_of({})).error, settings_of_the_bare_ppd());
}

TEST(LogLines, TheTwoAddressesOfAPageAreTheSame) {
    // Nothing is cut off the top, so the adjusted pointer is the start of the result's buffer.
    const std::string log = run_job(job_of({tiny_page()})).error;
    const std::string adjusted = digits_behind(log, adjusted_address);
    const std::string freed = digits_behind(log, freed_address);
    ASSERT_FALSE(adjusted.empty()) << log;
    ASSERT_FALSE(freed.empty()) << log;
    EXPECT_EQ(std::stoull(adjusted), std::stoull(freed, nullptr, 16));
    EXPECT_NE(std::stoull(adjusted), 0U);
}

TEST(LogLines, TellOfEveryStepOfTheTattooRoute) {
    Page page;
    page.width = 10;
    page.height = 3;
    page.color_space = CUPS_CSPACE_W;
    page.pixels = asymmetric(10, 3);
    Job job = job_of({page});
    job.ppd = bare_ppd()
                  .option("HalftoneType", {"Tattoo_X8"})
                  .option("MirrorImage", {"Yes"})
                  .option("NegativeImage", {"TRUE"})
                  .option("Brightness", {"-4"})
                  .text();
    const JobResult result = run_job(job);
    EXPECT_EQ(result.exit_status, 0);
    EXPECT_TRUE(contains(result.error,
                         "DEBUG:settings->MirrorImage:1\n"
                         "DEBUG:settings->NegativeImage:1\n"));
    EXPECT_TRUE(contains(result.error, "DEBUG:settings->halftoneType:9\n"));
    EXPECT_TRUE(contains(
        result.error,
        "DEBUG:PageProcess: TQ dithering is enabled\n"
        "DEBUG:PageProcess: Successfully created CxImage from array with stride 10\n"
        "DEBUG:PageProcess: Adjusted brightness to -20 and contrast to 0\n"
        "DEBUG:PageProcess: Mirrored the image\n"
        // The image pads its rows of 10 bytes to 12.
        "DEBUG:PageProcess: Copied pixels to the output buffer for TQ dithering, with stride 10, "
        "EffWidth 12\n"
        "DEBUG:PageProcess: Applied TQ dithering with stride 12, width 10\n"
        "DEBUG:PageProcess: Successfully created a new CxImage from TQ dithered data\n"
        "DEBUG:PageProcess: negativePrint_ 1\n"
        "DEBUG:PageProcess: Inverting the image for negative print\n"
        "DEBUG:PageProcess: Filled the output buffer with processed pixels, length: 36\n"))
        << result.error;
    EXPECT_TRUE(contains(result.error, "DEBUG:GrayToMono, bpl(10), h(3), skipPixels(0), wb(10)\n"));
}

TEST(LogLines, ShowEverySettingAsItWasRead) {
    Job job = job_of({});
    job.ppd = bare_ppd()
                  .option("Resolution", {"203dpi"})
                  .option("MediaMethod", {"Direct"})
                  .option("PaperType", {"LabelGaps"})
                  .option("GapsHeight", {"3"})
                  .option("PostAction", {"TearOff"})
                  .option("Occurrence", {"EveryPage"})
                  .option("Origin", {"Rotation180"})
                  .option("MirrorImage", {"255"})
                  .option("NegativeImage", {"256"})
                  .option("PrintSpeed", {"4"})
                  .option("Darkness", {"12"})
                  .option("HalftoneType", {"StevensonArce"})
                  .text();
    const std::string log = run_job(job).error;
    // A truth value that is a number keeps its low eight bits, with their sign.
    EXPECT_TRUE(contains(log,
                         "DEBUG:settings->Resolution:203dpi\n"
                         "DEBUG:settings->MediaMethod:Direct\n"
                         "DEBUG:settings->PaperType:LabelGaps\n"
                         "DEBUG:settings->GapsHeight:3\n"
                         "DEBUG:settings->PostAction:TearOff\n"
                         "DEBUG:settings->Occurrence:EveryPage\n"
                         "DEBUG:settings->Origin:Rotation180\n"
                         "DEBUG:settings->MirrorImage:-1\n"
                         "DEBUG:settings->NegativeImage:0\n"
                         "DEBUG:settings->PrintSpeed:4\n"
                         "DEBUG:settings->Darkness:12\n"
                         "DEBUG:settings->halftoneType:7\n"
                         "DEBUG:settings->DirectBuffer:0\n"))
        << log;
}

TEST(LogLines, KnowEveryHalftoneByItsExactName) {
    const std::vector<std::string> names{"None",   "FloydSteinberg",    "Ordered", "Burkes",
                                         "Stucki", "JarvisJudiceNinke", "Sierra",  "StevensonArce",
                                         "Tattoo", "Tattoo_X8"};
    for (std::size_t number = 0; number < names.size(); ++number) {
        Job job = job_of({});
        job.ppd = bare_ppd().option("HalftoneType", {names[number]}).text();
        EXPECT_EQ(
            lines_with(run_job(job).error, "DEBUG:settings->halftoneType:"),
            std::vector<std::string>{"DEBUG:settings->halftoneType:" + std::to_string(number)});
    }
    for (const char* unknown : {"tattoo", "Tattoo_X", "Tattoo_X81", "Bayer", "8"}) {
        Job job = job_of({});
        job.ppd = bare_ppd().option("HalftoneType", {unknown}).text();
        EXPECT_EQ(lines_with(run_job(job).error, "DEBUG:settings->halftoneType:"),
                  std::vector<std::string>{"DEBUG:settings->halftoneType:0"})
            << unknown;
    }
}

}  // namespace
}  // namespace kelp_test
