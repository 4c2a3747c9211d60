// Allocations that fail in the programs about the filter.

#include <gtest/gtest.h>

#include <iostream>

#include "tests/faults/fault_injection.h"
#include "tests/faults/fault_jobs.h"
#include "tests/fitter/rasters.h"
#include "tests/process/expected.h"
#include "tests/support/files.h"
#include "tests/support/grey_pages.h"

namespace kelp_test {
namespace {

// Runs the command with allocation after allocation failing, each alone and with all behind it.
// `check` is given the result of each run, and whether the program's own request failed.
template <typename MakeCommand, typename Check>
void fail_each(const MakeCommand& make_command, long step, const Check& check) {
    long runs = 0;
    for (const bool onwards : {false, true}) {
        for (long number = 1;; number += step) {
            const Sandbox sandbox;
            const auto report = sandbox.extras() / "report";
            const Command command = make_command(sandbox);
            const ProcessResult result =
                run_process(with_memory_fault(command, {number, onwards}, report));
            const MemoryReport memory = read_memory_report(report);
            if (!memory.asked_by) {
                break;
            }
            ++runs;
            SCOPED_TRACE("allocation " + std::to_string(number) + " by " + *memory.asked_by + ": " +
                         result.ending() + "\n" + result.error);
            EXPECT_FALSE(result.timed_out);
            check(sandbox, result, *memory.asked_by == command.program.filename());
        }
    }
    EXPECT_GT(runs, 50);
    std::cout << runs << " allocations failed\n";
}

TEST(FailingMemoryOfTheFitter, EndsAJobSoundly) {
    // Two pages that are fitted, the first one of another kind and size.
    Job job;
    job.ppd = PagePpd{}.text();
    job.raster = raw_raster_stream(
        {page_of(rgb, 40, 12, gradient(120, 12)), page_of(k8, 36, 8, gradient(36, 8))});
    const std::string good = run_job(job, KELP_FITTER).output;
    ASSERT_EQ(good.size(), 4 + 2 * (1796U + 36 * 8));
    fail_each([&](const Sandbox& sandbox) { return sandbox.command(job, KELP_FITTER); }, 1,
              [&](const Sandbox&, const ProcessResult& result, bool own) {
                  if (!result.exit_status) {
                      // libcups uses some of its memory without having looked whether it got it.
                      EXPECT_FALSE(own);
                      return;
                  }
                  if (*result.exit_status == 0) {
                      // Settings that libcups has lost may give another page.
                      EXPECT_TRUE(!own || result.output == good);
                      EXPECT_FALSE(result.output.empty());
                  } else {
                      EXPECT_EQ(*result.exit_status, 1);
                      EXPECT_EQ(lines_with(result.error, "ERROR: ").size(), 1U);
                      EXPECT_TRUE(!own || good.starts_with(result.output));
                  }
              });
}

TEST(FailingMemoryOfThePreview, EndsWithAMessageAndNoHalfPicture) {
    const std::string label = run_job(fault_jobs()[0].job()).output;
    const auto command_of = [&](const Sandbox& sandbox) {
        Command command = sandbox.command({}, KELP_PREVIEW);
        command.arguments = {"show", "-o", "out.png"};
        command.input = FromBytes{label};
        return command;
    };
    std::string good;
    std::map<std::string, std::string> good_pictures;
    {
        const Sandbox sandbox;
        const JobResult result = sandbox.run(command_of(sandbox));
        ASSERT_TRUE(result.exit_status == 0 || result.exit_status == 2) << result.error;
        good = result.output;
        good_pictures = result.recordings;
        ASSERT_EQ(good_pictures.size(), 2U);
    }
    // It declares its options in a thousand steps that are much alike.
    fail_each(command_of, 5, [&](const Sandbox& sandbox, const ProcessResult& result, bool) {
        ASSERT_TRUE(result.exit_status.has_value());
        for (const auto& [name, content] : read_directory(sandbox.working_directory())) {
            EXPECT_EQ(good_pictures.count(name), 1U) << name;
            EXPECT_TRUE(good_pictures[name] == content) << name;
        }
        if (*result.exit_status == 1) {
            EXPECT_TRUE(result.error.starts_with("kelp-preview: ")) << result.error;
        } else {
            EXPECT_EQ(result.output, good);
        }
    });
}

}  // namespace
}  // namespace kelp_test
