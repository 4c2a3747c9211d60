// The same job gives the same bytes, whatever the memory held before: nothing that was never
// written reaches the printer or a file. The allocator fills fresh memory with a given byte here.

#include <gtest/gtest.h>

#include "tests/process/expected.h"
#include "tests/process/sandbox.h"
#include "tests/support/grey_pages.h"

namespace kelp_test {
namespace {

// Three fills; the C library takes the complement of a byte, and a complement of 0 for none.
constexpr int fills[] = {0, 0x5A, 0xA5};

Command filled(Command command, int byte) {
    command.environment["MALLOC_PERTURB_"] = std::to_string(~byte & 0xFF);
    // The sanitizer's allocator has options of its own.
    command.environment["ASAN_OPTIONS"] +=
        ":max_malloc_fill_size=1000000:malloc_fill_byte=" + std::to_string(byte);
    return command;
}

JobResult run_filled(const Job& job, int byte) {
    const Sandbox sandbox;
    return sandbox.run(filled(sandbox.command(job), byte));
}

class MemoryContent : public testing::TestWithParam<const char*> {};

TEST_P(MemoryContent, ShowsNowhere) {
    // Rows that are padded, rows that are longer than the page is wide, pages that grow, and one
    // that cannot be loaded.
    Random random(6);
    std::vector<RawPage> pages;
    for (const auto& [width, height, extra] : std::vector<std::tuple<unsigned, unsigned, unsigned>>{
             {1, 1, 0}, {5, 3, 0}, {30, 20, 0}, {13, 21, 6}, {3, 2, 40}, {33, 33, 0}}) {
        Page page;
        page.width = width;
        page.height = height;
        page.bytes_per_line = width + extra;
        page.pixels = noise(page.stride(), height, random);
        pages.push_back(raw_page(page));
    }
    RawPage empty = raw_page(tiny_page());
    empty.header.cupsWidth = 0;
    pages.push_back(empty);

    for (const char* flag : {"false", "true"}) {
        Job job;
        job.raster = raw_raster_stream(pages);
        job.ppd = bare_ppd()
                      .option("HalftoneType", {GetParam()})
                      .option("MirrorImage", {flag})
                      .option("NegativeImage", {flag})
                      .text();
        const JobResult clear = run_filled(job, fills[0]);
        EXPECT_EQ(clear.exit_status, 0);
        EXPECT_GE(clear.snapshots.size(), 2 * pages.size() - 1);
        for (const int fill : {fills[1], fills[2]}) {
            const JobResult other = run_filled(job, fill);
            EXPECT_EQ(other.exit_status, clear.exit_status);
            EXPECT_TRUE(other.output == clear.output) << flag << " " << fill;
            EXPECT_TRUE(other.snapshots == clear.snapshots) << flag << " " << fill;
            EXPECT_EQ(without_addresses(other.error), without_addresses(clear.error));
        }
    }
}

INSTANTIATE_TEST_SUITE_P(Of, MemoryContent,
                         testing::Values("None", "FloydSteinberg", "Ordered", "StevensonArce",
                                         "Tattoo", "Tattoo_X8"),
                         [](const testing::TestParamInfo<const char*>& of) {
                             return std::string(of.param);
                         });

TEST(MemoryContent, IsReallyChangedByTheFill) {
    // A program that prints fresh memory shows the fill, so the tests above would see it.
    const Sandbox sandbox;
    for (const int fill : fills) {
        const Command command = filled(sandbox.command({}, KELP_FRESH_MEMORY), fill);
        EXPECT_EQ(sandbox.run(command).output, std::string(100, static_cast<char>(fill)));
    }
}

}  // namespace
}  // namespace kelp_test
