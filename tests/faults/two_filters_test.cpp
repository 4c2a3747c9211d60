// Filters at the same paths at the same time, and someone who swaps what is there as they run.

#include <gtest/gtest.h>

#include <algorithm>
#include <atomic>
#include <chrono>
#include <future>
#include <iostream>
#include <thread>

#include "tests/faults/fault_jobs.h"
#include "tests/process/expected.h"
#include "tests/support/files.h"
#include "tests/support/grey_pages.h"

namespace kelp_test {
namespace {

namespace fs = std::filesystem;

const std::string precious = "not to be touched";

Job recording_job(unsigned width, unsigned height, std::uint64_t seed) {
    Random random(seed);
    Page page;
    page.width = width;
    page.height = height;
    page.pixels = noise(width, height, random);
    Job job = job_of({page, page});
    job.ppd = bare_ppd()
                  .option("RecordPrinterCommands", {"1"})
                  .attribute("kelpFilterOutputFile", "rec")
                  .text();
    return job;
}

// Names of everything in a folder.
std::vector<std::string> names_in(const fs::path& folder) {
    std::vector<std::string> names;
    for (const fs::directory_entry& entry : fs::directory_iterator(folder)) {
        names.push_back(entry.path().filename());
    }
    std::sort(names.begin(), names.end());
    return names;
}

TEST(TwoFilters, OnTheSamePathsPrintWhatEachPrintsAlone) {
    // The clock of both stands still, so that all their names are the same.
    const Job small = recording_job(40, 30, 1);
    const Job large = recording_job(400, 300, 2);
    const JobResult small_alone = run_job(small);
    const JobResult large_alone = run_job(large);
    for (int round = 0; round < 50; ++round) {
        const Sandbox sandbox;
        // Each its own PPD and raster, which are read; what is written is shared.
        const Command first = sandbox.command(small);
        const Command second = sandbox.command(large);
        auto running = std::async(std::launch::async, [&] { return run_process(first); });
        const ProcessResult large_result = run_process(second);
        const ProcessResult small_result = running.get();
        for (const auto& [result, alone] :
             {std::pair{&small_result, &small_alone}, {&large_result, &large_alone}}) {
            EXPECT_EQ(result->exit_status, 0) << round << result->error;
            EXPECT_TRUE(result->output == alone->output) << round;
        }
        // The files are those of a job alone, each no longer than the larger job's.
        EXPECT_EQ(names_in(sandbox.working_directory()), std::vector<std::string>{recording});
        EXPECT_LE(read_file(sandbox.working_directory() / recording).size(),
                  large_alone.output.size());
        const auto snapshots = read_directory(sandbox.spool());
        EXPECT_EQ(snapshots.size(), large_alone.snapshots.size());
        for (const auto& [name, content] : snapshots) {
            ASSERT_EQ(large_alone.snapshots.count(name), 1U) << name;
            EXPECT_LE(content.size(), large_alone.snapshots.at(name).size()) << name;
        }
        EXPECT_EQ(names_in(sandbox.debug_log().parent_path()),
                  std::vector<std::string>{"xxxxx.log"});
    }
}

// A link comes and goes at every path while filters open it again and again.
TEST(SwappedLink, IsNeverWrittenThrough) {
    const Job job = recording_job(40, 30, 3);
    const std::string good = run_job(job).output;
    const Sandbox sandbox;
    const fs::path target = sandbox.extras() / "target";
    write_file(target, precious);
    const std::vector<fs::path> places{sandbox.debug_log(), sandbox.working_directory() / recording,
                                       sandbox.spool() / "origin_2024-3-5_7_8_9_0.bmp",
                                       sandbox.spool() / "dithered_2024-3-5_7_8_9_1.bmp",
                                       sandbox.spool() / "origin_2024-3-5_7_8_9_2.bmp"};

    std::atomic<bool> done = false;
    std::atomic<long> swaps = 0;
    std::thread swapping([&] {
        const fs::path link = sandbox.extras() / "link";
        const fs::path hard_link = sandbox.extras() / "hard-link";
        while (!done) {
            for (const fs::path& place : places) {
                // One after the other: a link, a second name of the file, which then goes and
                // comes. Errors are races that were lost.
                std::error_code ignored;
                fs::create_symlink(target, link, ignored);
                fs::rename(link, place, ignored);
                for (int i = 0; i < 10; ++i) {
                    fs::create_hard_link(target, hard_link, ignored);
                    fs::rename(hard_link, place, ignored);
                    fs::remove(place, ignored);
                }
                ++swaps;
            }
        }
    });
    const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(5);
    long jobs = 0;
    long without_link = 0;
    while (std::chrono::steady_clock::now() < end || jobs < 20) {
        const ProcessResult result = run_process(sandbox.command(job));
        EXPECT_EQ(result.exit_status, 0) << result.error;
        EXPECT_TRUE(result.output == good);
        EXPECT_TRUE(read_file(target) == precious) << "written through a link";
        without_link += count_of(result.error, "unable to open the file") == 0 ? 1 : 0;
        ++jobs;
    }
    done = true;
    swapping.join();
    EXPECT_TRUE(read_file(target) == precious) << "written through a link";
    EXPECT_EQ(fs::hard_link_count(target), 1U);
    // Links were met, and files were opened as well.
    EXPECT_LT(without_link, jobs);
    std::cout << swaps << " swaps, " << jobs << " jobs, " << without_link
              << " of them opened all their snapshots\n";
}

}  // namespace
}  // namespace kelp_test
