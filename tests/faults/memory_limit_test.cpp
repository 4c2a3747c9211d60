// A limit on the process's memory (ulimit -v), from one where a large page fails at once to one
// where it does not.

#include <gtest/gtest.h>

#include <array>
#include <set>

#include "tests/faults/fault_jobs.h"
#include "tests/process/expected.h"
#include "tests/reference/encoding.h"
#include "tests/support/grey_pages.h"

namespace kelp_test {
namespace {

constexpr rlim_t mebibyte = rlim_t{1} << 20U;

// How a job of a tiny page and a large one can end, first what takes the least memory.
constexpr std::array endings{"page buffer", "work buffer", "result", "image", "halftone", "whole"};

TEST(MemoryLimit, EndsAJobAtEachOfAPagesBuffersWithItsMessage) {
    // 13 MB, its dots 1.6 MB: no buffer fits where the one before it has just found room.
    Page large;
    large.width = 3600;
    large.height = 3600;
    large.pixels = gradient(large.width, large.height);
    const Job job = job_of({tiny_page(), large}, "");
    const JobResult good = run_job(job);
    ASSERT_EQ(good.exit_status, 0);
    const std::string first = preamble() + tiny_page_output();
    ASSERT_TRUE(good.output.starts_with(first));
    const std::string setup = good.output.substr(
        first.size(), good.output.find("^XX\r\n^PQ", first.size()) - first.size());

    // A halftone that fails is passed over in silence: everything that is not 0 prints.
    int last_set = 0;
    const std::string undithered = reference::encodeLabel(
        3600, 3600, 0, 1, {large.pixels.begin(), large.pixels.end()}, last_set);

    const Sandbox sandbox;
    Command command = sandbox.command(job);
    std::set<std::string> seen;
    for (rlim_t limit = 16; limit <= 256 && seen.count("whole") == 0; ++limit) {
        command.limits = {{RLIMIT_AS, limit * mebibyte}};
        const ProcessResult result = run_process(command);
        if (result.exit_status == 127 || result.signal != 0) {
            // The program's libraries do not fit: it has not come to its first line.
            ASSERT_TRUE(seen.empty()) << limit;
            ASSERT_EQ(result.output, "");
            continue;
        }
        const std::vector<std::string> errors = lines_with(result.error, "ERROR:");
        std::string ending;
        if (result.output == good.output) {
            ending = "whole";
            EXPECT_EQ(result.exit_status, 0);
            EXPECT_TRUE(errors.empty());
        } else if (result.output == first) {
            ending = "page buffer";
            EXPECT_EQ(result.exit_status, 1);
            EXPECT_TRUE(errors.empty());
        } else if (result.output == first + setup) {
            // The page is left out with its message, and the job goes on.
            EXPECT_EQ(result.exit_status, 0);
            ASSERT_EQ(errors.size(), 1U) << limit << "\n" << result.error;
            if (errors[0].starts_with("ERROR:printImage: Memory allocation failed,")) {
                ending = "work buffer";
            } else if (errors[0].starts_with(
                           "ERROR:printImage: Memory allocation for processing")) {
                ending = "result";
            } else if (errors[0] == "ERROR:printImage: pimage is NULL, unable to print the image") {
                ending = "image";
            }
        } else if (result.output == first + setup + undithered) {
            ending = "halftone";
            EXPECT_EQ(result.exit_status, 0);
            EXPECT_TRUE(errors.empty());
        } else if (result.output.empty() && result.exit_status == 1) {
            ending = "not begun";  // what stands before the first page
        }
        ASSERT_NE(ending, "") << limit << " MiB: " << result.ending() << "\n" << result.error;
        seen.insert(ending);
    }
    for (const char* ending : endings) {
        EXPECT_EQ(seen.count(ending), 1U) << ending;
    }
}

}  // namespace
}  // namespace kelp_test
