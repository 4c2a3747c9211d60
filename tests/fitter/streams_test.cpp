// Output that is lost, input that cannot be read, and standard descriptors that are closed.

#include <gtest/gtest.h>

#include "tests/fitter/fitter_job.h"
#include "tests/process/expected.h"
#include "tests/support/files.h"
#include "tests/support/grey_pages.h"

namespace kelp_test {
namespace {

class Streams : public testing::Test {
  protected:
    // Several buffers of output.
    static Job large_job() {
        return fitter_job({page_of(k8, 812, 300, gradient(812, 300))},
                          {.width = "812", .height = "300"});
    }
    static Job small_job() { return fitter_job({page_of(k8, 4, 1, "abcd")}); }

    Command command(const Job& job) const { return sandbox_.command(job, fitter_program()); }

    Sandbox sandbox_;
};

TEST_F(Streams, LostOutputIsAnError) {
    for (const StandardOutput& output : {StandardOutput{Closed{}}, {ToFile{"/dev/full"}}}) {
        for (const Job& job : {small_job(), large_job(), fitter_job({})}) {
            Command lost = command(job);
            lost.output = output;
            expect_error(sandbox_.run(lost), {"Unable to write"});
        }
    }
}

// The filter behind this one tells the person why it ended; a later error would hide that.
TEST_F(Streams, AReaderThatEndsFirstIsAFailureWithoutAnErrorLine) {
    for (const Job& job : {small_job(), large_job(), fitter_job({})}) {
        for (const bool ignore_signal : {false, true}) {
            Command lost = command(job);
            lost.output = BrokenPipe{};
            lost.ignore_broken_pipe_signal = ignore_signal;
            const JobResult result = sandbox_.run(lost);
            EXPECT_EQ(result.exit_status, 1) << result.error;
            EXPECT_TRUE(lines_with(result.error, "ERROR:").empty()) << result.error;
            EXPECT_EQ(lines_with(result.error, "DEBUG: Unable to write the fitted raster").size(),
                      1U)
                << result.error;
        }
    }
}

TEST_F(Streams, ADiskThatFillsUpInTheMiddleIsAnError) {
    Command limited = command(large_job());
    // With the kernel's signal ignored, writing beyond the limit fails.
    limited.arguments.insert(limited.arguments.begin(),
                             {"-c", "trap '' XFSZ; exec \"$0\" \"$@\"", limited.program});
    limited.program = "/bin/sh";
    limited.output = ToFile{sandbox_.extras() / "out"};
    limited.limits = {{RLIMIT_FSIZE, 100'000}};
    expect_error(sandbox_.run(limited), {"Unable to write", "File too large"});
}

TEST_F(Streams, OutputGoesToAFileAsItGoesToAPipe) {
    Command filed = command(large_job());
    const std::string piped = sandbox_.run(filed).output;
    ASSERT_EQ(piped.size(), 4 + 1796 + 812U * 300);
    filed.output = ToFile{sandbox_.extras() / "out"};
    EXPECT_EQ(sandbox_.run(filed).exit_status, 0);
    EXPECT_TRUE(read_file(sandbox_.extras() / "out") == piped);
}

TEST_F(Streams, ClosedStandardErrorIsDoneWithout) {
    const std::string expected = run_fitter(small_job()).output;
    for (const bool by_file : {false, true}) {
        Job job = small_job();
        job.by_file = by_file;
        Command deaf = command(job);
        deaf.error = Closed{};
        const JobResult result = sandbox_.run(deaf);
        EXPECT_EQ(result.exit_status, 0);
        EXPECT_TRUE(result.output == expected);
    }
}

TEST_F(Streams, ClosedStandardInputIsAnErrorUnlessThereIsAFile) {
    Command closed = command(small_job());
    closed.input = Closed{};
    expect_error(sandbox_.run(closed), {"Unable to read"});
    Job job = small_job();
    job.by_file = true;
    closed = command(job);
    closed.input = Closed{};
    const JobResult result = sandbox_.run(closed);
    EXPECT_EQ(result.exit_status, 0);
    EXPECT_TRUE(result.output == run_fitter(small_job()).output);
}

TEST_F(Streams, AllClosedLeaveTheRasterFileAsItIs) {
    Job job = small_job();
    job.by_file = true;
    Command closed = command(job);
    closed.input = Closed{};
    closed.output = Closed{};
    closed.error = Closed{};
    EXPECT_EQ(sandbox_.run(closed).exit_status, 1);
    EXPECT_EQ(read_file(closed.arguments.back()), job.raster);
    EXPECT_EQ(read_file(closed.environment["PPD"]), *job.ppd);
}

TEST_F(Streams, AFileIsReadEvenWhenStandardInputHoldsAnotherJob) {
    Job job = small_job();
    job.by_file = true;
    Command both = command(job);
    both.input = FromBytes{large_job().raster};
    EXPECT_TRUE(sandbox_.run(both).output == run_fitter(small_job()).output);
}

}  // namespace
}  // namespace kelp_test
