// The files every page leaves for diagnosis: two bitmaps and a line about the last page.

#include <gtest/gtest.h>

#include "tests/process/expected.h"
#include "tests/process/sandbox.h"
#include "tests/support/files.h"
#include "tests/support/grey_pages.h"

namespace kelp_test {
namespace {

using Files = std::map<std::string, std::string>;

// Dots are 1, as the threshold leaves them, and rows lie as they are printed.
std::string dots(std::string_view rows) {
    std::string bytes = drawn(rows);
    for (char& byte : bytes) {
        byte = byte == '\0' ? '\0' : '\1';
    }
    return bytes;
}

TEST(Snapshots, ShowThePageAsItCameAndAsItIsPrinted) {
    const Page page = tiny_page();
    const JobResult result = run_job(job_of({page}));
    EXPECT_EQ(result.snapshots,
              (Files{{"origin_2024-3-5_7_8_9_0.bmp", bitmap(16, 2, page.pixels)},
                     {"dithered_2024-3-5_7_8_9_1.bmp", bitmap(16, 2,
                                                              dots("################"
                                                                   "####............"))}}));
}

TEST(Snapshots, AreTheseVeryBytes) {
    Page page;
    page.width = 4;
    page.height = 1;
    page.pixels = std::string("\x00\x80\x81\xFF", 4);
    const JobResult result = run_job(job_of({page}));
    const std::string& file = result.snapshots.at("origin_2024-3-5_7_8_9_0.bmp");
    ASSERT_EQ(file.size(), 1078U + 4);
    // 1082 = 0x43A bytes in all, pixels at 1078 = 0x436, 4 × 1, one plane of 8 bits, 256 colours.
    EXPECT_EQ(file.substr(0, 54), std::string("BM\x3A\x04\0\0\0\0\0\0\x36\x04\0\0"
                                              "\x28\0\0\0\x04\0\0\0\x01\0\0\0\x01\0\x08\0"
                                              "\0\0\0\0\x04\0\0\0\0\0\0\0\0\0\0\0"
                                              "\0\x01\0\0\0\x01\0\0",
                                              54));
    EXPECT_EQ(file.substr(54, 12), std::string("\0\0\0\0\1\1\1\0\2\2\2\0", 12));
    EXPECT_EQ(file.substr(1074), std::string("\xFF\xFF\xFF\0\x00\x80\x81\xFF", 8));
    EXPECT_EQ(result.snapshots.at("dithered_2024-3-5_7_8_9_1.bmp").substr(1078),
              std::string("\0\0\1\1", 4));
}

TEST(Snapshots, DeclareRowsOfFourBytesButHoldThePixelsUnpadded) {
    Page page;
    page.width = 10;
    page.height = 3;
    page.pixels = gradient(10, 3);
    const JobResult result = run_job(job_of({page}));
    const std::string& file = result.snapshots.at("origin_2024-3-5_7_8_9_0.bmp");
    EXPECT_EQ(file, bitmap(10, 3, page.pixels));
    EXPECT_EQ(file.size(), 1078U + 30);
    // 1078 + 12 × 3 = 1114 = 0x45A, image size 36 = 0x24.
    EXPECT_EQ(file.substr(2, 4), std::string("\x5A\x04\0\0", 4));
    EXPECT_EQ(file.substr(34, 4), std::string("\x24\0\0\0", 4));
}

TEST(Snapshots, TakeTheImagesPaddedRowsAsTheyLieInMemory) {
    // The image pads 10 to 12 bytes with zeros; the first 20 of its 24 bytes are written.
    Page page;
    page.width = 10;
    page.pixels = drawn(
        "##########"
        "#.#.#.#.##");
    const JobResult result = run_job(job_of({page}));
    EXPECT_EQ(result.snapshots.at("dithered_2024-3-5_7_8_9_1.bmp"), bitmap(10, 2,
                                                                           dots("##########.."
                                                                                "#.#.#.#.")));
}

TEST(Snapshots, TakeTheFirstBytesOfARasterWithLongerLines) {
    Page page;
    page.width = 4;
    page.height = 2;
    page.bytes_per_line = 6;
    page.pixels = "abcdefghijkl";
    const JobResult result = run_job(job_of({page}));
    EXPECT_EQ(result.snapshots.at("origin_2024-3-5_7_8_9_0.bmp"), bitmap(4, 2, "abcdefgh"));
}

TEST(Snapshots, AreNumberedThroughTheWholeJob) {
    const JobResult result = run_job(job_of({tiny_page(), tiny_page(), tiny_page()}));
    std::vector<std::string> names;
    for (const auto& [name, content] : result.snapshots) {
        names.push_back(name);
    }
    EXPECT_EQ(names, (std::vector<std::string>{
                         "dithered_2024-3-5_7_8_9_1.bmp", "dithered_2024-3-5_7_8_9_3.bmp",
                         "dithered_2024-3-5_7_8_9_5.bmp", "origin_2024-3-5_7_8_9_0.bmp",
                         "origin_2024-3-5_7_8_9_2.bmp", "origin_2024-3-5_7_8_9_4.bmp"}));
}

TEST(Snapshots, AreNamedByTheLocalTimeWithoutPadding) {
    Job job = job_of({tiny_page()});
    job.time_zone = "UTC";
    job.time = 1766966399;  // 28 December 2025 23:59:59
    const JobResult late = run_job(job);
    EXPECT_EQ(late.snapshots.count("origin_2025-12-28_23_59_59_0.bmp"), 1U);
    EXPECT_EQ(late.snapshots.count("dithered_2025-12-28_23_59_59_1.bmp"), 1U);
    job.time = 0;
    EXPECT_EQ(run_job(job).snapshots.count("origin_1970-1-1_0_0_0_0.bmp"), 1U);
}

TEST(Snapshots, ReplaceLongerFilesOfTheirNames) {
    const Sandbox sandbox;
    write_file(sandbox.spool() / "origin_2024-3-5_7_8_9_0.bmp", std::string(100'000, 'x'));
    const Page page = tiny_page();
    EXPECT_EQ(sandbox.run(job_of({page})).snapshots.at("origin_2024-3-5_7_8_9_0.bmp"),
              bitmap(16, 2, page.pixels));
}

TEST(Snapshots, WithoutTheirFolderAreReportedAndCounted) {
    const Sandbox sandbox;
    std::filesystem::remove(sandbox.spool());
    const JobResult result = sandbox.run(job_of({tiny_page(), tiny_page()}));
    EXPECT_EQ(result.exit_status, 0);
    EXPECT_EQ(result.output, preamble() + tiny_page_output() + tiny_page_output());
    const std::string message =
        "KelpPrinter::saveImage: unable to open the file /var/spool/cups/tmp/";
    EXPECT_EQ(
        lines_with(result.error, "KelpPrinter::"),
        (std::vector<std::string>{
            message + "origin_2024-3-5_7_8_9_0.bmp", message + "dithered_2024-3-5_7_8_9_1.bmp",
            message + "origin_2024-3-5_7_8_9_2.bmp", message + "dithered_2024-3-5_7_8_9_3.bmp"}));
    // Each stands where the snapshot would have been made.
    EXPECT_TRUE(contains(
        result.error,
        "DEBUG:printImage: Saving original image, file path will be generated based on time\n" +
            message +
            "origin_2024-3-5_7_8_9_0.bmp\nDEBUG:printImage: Memory for processing result"));
    EXPECT_TRUE(contains(
        result.error,
        "DEBUG:printImage: Saving processed image, file path will be generated based on time\n" +
            message + "dithered_2024-3-5_7_8_9_1.bmp\nDEBUG:printImage: Starting to print"));
}

TEST(DebugLine, IsAboutTheLastPage) {
    Page last = tiny_page();
    last.height = 5;
    last.bytes_per_line = 18;
    EXPECT_EQ(run_job(job_of({tiny_page()})).debug_line,
              "cupsWidth:16, cupsHeight:2, cupsBytesPerLine:16, cupsBitsPerPixel:8\n");
    EXPECT_EQ(run_job(job_of({tiny_page(), last})).debug_line,
              "cupsWidth:16, cupsHeight:5, cupsBytesPerLine:18, cupsBitsPerPixel:8\n");
}

TEST(DebugLine, ReplacesWhatTheFileHeld) {
    const Sandbox sandbox;
    write_file(sandbox.debug_log(), std::string(100'000, 'x'));
    EXPECT_EQ(sandbox.run(job_of({tiny_page()})).debug_line,
              "cupsWidth:16, cupsHeight:2, cupsBytesPerLine:16, cupsBitsPerPixel:8\n");
}

TEST(DebugLine, IsNotWrittenForAPageThatIsRefused) {
    // The depth is looked at first.
    Page deep = tiny_page();
    deep.bits_per_pixel = 1;
    deep.bytes_per_line = 2;
    deep.pixels.clear();
    const JobResult result = run_job(job_of({deep}));
    EXPECT_EQ(lines_with(result.error, "ERROR:Unsupported bits per pixel").size(), 1U);
    EXPECT_FALSE(result.debug_line.has_value());
}

TEST(DebugLine, ThatCannotBeWrittenIsDoneWithout) {
    const Sandbox sandbox;
    std::filesystem::remove(sandbox.debug_log().parent_path());
    const JobResult result = sandbox.run(job_of({tiny_page()}));
    EXPECT_EQ(result.exit_status, 0);
    EXPECT_EQ(result.output, preamble() + tiny_page_output());
    EXPECT_FALSE(result.debug_line.has_value());
}

}  // namespace
}  // namespace kelp_test
