// Hundreds of jobs, one after the other and some at once, and nothing left of them.

#include <gtest/gtest.h>

#include <future>

#include "tests/process/expected.h"
#include "tests/process/sandbox.h"
#include "tests/support/files.h"
#include "tests/support/grey_pages.h"

namespace kelp_test {
namespace {

namespace fs = std::filesystem;

const std::vector<std::string>& kinds() {
    static const std::vector<std::string> options{"HalftoneType=Stucki", "HalftoneType=Tattoo"};
    return options;
}

Job small_job(const std::string& options) {
    Random random(43);
    Page page;
    page.width = 100;
    page.height = 60;
    page.pixels = noise(page.width, page.height, random);
    Job job = job_of({page, page}, options);
    job.ppd = bare_ppd().option("HalftoneType", {"None", "Stucki", "Tattoo"}).text();
    return job;
}

// A sandbox in which `jobs` jobs of one kind run, each compared with the same job alone.
void run_jobs(int jobs, const std::string& options) {
    const Job job = small_job(options);
    const JobResult alone = run_job(job);
    ASSERT_EQ(alone.exit_status, 0);
    ASSERT_EQ(alone.snapshots.size(), 4U);
    const Sandbox sandbox;
    const fs::path temporary = sandbox.extras() / "temporary";
    fs::create_directory(temporary);
    Command command = sandbox.command(job);
    command.environment["TMPDIR"] = temporary;
    for (int i = 0; i < jobs; ++i) {
        const JobResult result = sandbox.run(command);
        ASSERT_EQ(result.exit_status, 0) << i << "\n" << result.error;
        ASSERT_TRUE(result.output == alone.output) << i;
        ASSERT_TRUE(result.snapshots == alone.snapshots) << i;
        ASSERT_EQ(result.debug_line, alone.debug_line) << i;
    }
    // The clock stands still: all jobs have written the same files, and no others.
    EXPECT_TRUE(fs::is_empty(temporary));
    EXPECT_TRUE(fs::is_empty(sandbox.working_directory()));
    EXPECT_EQ(read_directory(sandbox.spool()).size(), 4U);
    EXPECT_EQ(read_directory(sandbox.debug_log().parent_path()).size(), 1U);
}

TEST(ManyJobs, OneAfterTheOtherPrintTheSame) {
    for (const std::string& options : kinds()) {
        run_jobs(250, options);
    }
}

TEST(ManyJobs, EightAtOncePrintTheSame) {
    std::vector<std::future<void>> all;
    for (std::size_t i = 0; i < 8; ++i) {
        all.push_back(std::async(std::launch::async, run_jobs, 25, kinds()[i % 2]));
    }
    for (std::future<void>& jobs : all) {
        jobs.get();
    }
}

}  // namespace
}  // namespace kelp_test
