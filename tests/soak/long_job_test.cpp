// A job of two thousand pages: it takes no more memory and no more descriptors than one of two, and
// each page is printed as it is alone.

#include <gtest/gtest.h>

#include <algorithm>
#include <iostream>

#include "tests/process/expected.h"
#include "tests/soak/running_job.h"
#include "tests/support/files.h"
#include "tests/support/grey_pages.h"

namespace kelp_test {
namespace {

constexpr int pages = 2000;
// What a process may grow by, in KiB: no page of these would fit.
constexpr long slack = 128;

// Pages of two sizes in turn.
std::vector<Page> two_pages() {
    Random random(41);
    Page first;
    first.width = 160;
    first.height = 120;
    first.pixels = noise(first.width, first.height, random);
    Page second;
    second.width = 203;
    second.height = 90;
    second.pixels = text_bars(second.width, second.height, random);
    return {first, second};
}

Job job_of_pages(int count, const std::string& options) {
    const std::vector<Page> two = two_pages();
    std::vector<RawPage> all;
    for (int i = 0; i < count; ++i) {
        all.push_back(raw_page(two[static_cast<std::size_t>(i) % 2]));
    }
    Job job;
    job.options = options;
    job.raster = raw_raster_stream(all);
    job.ppd = bare_ppd()
                  .option("HalftoneType", {"None", "Stucki", "Tattoo"})
                  .option("RecordPrinterCommands", {"1"})
                  .attribute("kelpFilterOutputFile", "rec")
                  .text();
    return job;
}

// Two pages as they are printed in a job of their own.
std::string pair_of_pages(const std::string& options) {
    const JobResult result = run_job(job_of_pages(2, options));
    EXPECT_EQ(result.exit_status, 0);
    EXPECT_TRUE(result.output.starts_with(preamble()));
    return result.output.substr(preamble().size());
}

class LongJob : public testing::TestWithParam<const char*> {};

TEST_P(LongJob, StaysAsSmallAsItWasAfterItsSecondPage) {
    const std::string pair = pair_of_pages(GetParam());
    const Sandbox sandbox;
    const Job job = job_of_pages(pages, GetParam());
    Command command = sandbox.command(job);
    write_file(sandbox.extras() / "pages.ras", job.raster);
    command.input = FromFile{sandbox.extras() / "pages.ras"};
    RunningJob running(sandbox, command);

    ASSERT_EQ(running.take(preamble().size()), preamble());
    ASSERT_TRUE(running.take(pair.size()) == pair);
    const long first = running.memory("VmRSS");
    const long first_peak = running.memory("VmHWM");
    const std::size_t first_descriptors = running.descriptors().size();
    long most = 0;
    std::size_t most_descriptors = 0;
    constexpr int last_looks = 20;  // pairs that may already be in the pipe
    for (int i = 1; i < pages / 2 - last_looks; ++i) {
        ASSERT_TRUE(running.take(pair.size()) == pair) << i;
        most = std::max(most, running.memory("VmRSS"));
        most_descriptors = std::max(most_descriptors, running.descriptors().size());
    }
    const long last_peak = running.memory("VmHWM");
    std::string rest;
    const ProcessResult result = running.finish(rest);
    std::cout << "resident KiB after two pages: " << first << ", most later: " << most
              << "; peak after two pages: " << first_peak << ", at the end: " << last_peak
              << "; descriptors: " << first_descriptors << ", most later: " << most_descriptors
              << "\n";

    EXPECT_LE(most, first_peak + slack);
    EXPECT_LE(last_peak, first_peak + slack);
    // Of a page's files, one at a time is open.
    EXPECT_LE(most_descriptors, first_descriptors + 1);
    EXPECT_EQ(result.exit_status, 0);
    ASSERT_EQ(rest.size(), last_looks * pair.size());
    for (int i = 0; i < last_looks; ++i) {
        ASSERT_TRUE(rest.substr(static_cast<std::size_t>(i) * pair.size(), pair.size()) == pair);
    }

    // Nothing is left but what every job leaves.
    EXPECT_EQ(read_directory(sandbox.spool()).size(), 2U * pages);
    const auto recordings = read_directory(sandbox.working_directory());
    ASSERT_EQ(recordings.size(), 1U);
    EXPECT_EQ(recordings.begin()->second.size(), preamble().size() + pages / 2 * pair.size());
}

INSTANTIATE_TEST_SUITE_P(Of, LongJob, testing::Values("HalftoneType=Stucki", "HalftoneType=Tattoo"),
                         [](const testing::TestParamInfo<const char*>& of) {
                             return std::string(of.param).substr(13);
                         });

}  // namespace
}  // namespace kelp_test
