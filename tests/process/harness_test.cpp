// The tools of these tests, tried on programs of which everyone knows what they do.

#include <gtest/gtest.h>

#include <csignal>

#include "tests/process/expected.h"
#include "tests/process/sandbox.h"
#include "tests/support/files.h"
#include "tests/support/grey_pages.h"

namespace kelp_test {
namespace {

class Harness : public testing::Test {
  protected:
    Command shell(const std::string& script) const {
        Command command = sandbox_.command({}, "/bin/sh");
        command.arguments = {"-c", script};
        return command;
    }

    Sandbox sandbox_;
};

TEST_F(Harness, ReportsOutputErrorTextAndExitStatus) {
    const ProcessResult result = run_process(shell("printf 'a\\0b'; echo oops >&2; exit 3"));
    EXPECT_EQ(result.output, std::string("a\0b", 3));
    EXPECT_EQ(result.error, "oops\n");
    EXPECT_EQ(result.exit_status, 3);
    EXPECT_GT(result.peak_resident_kib, 0);
}

TEST_F(Harness, ReportsTheSignalThatEndedAProgram) {
    const ProcessResult result = run_process(shell("kill -SEGV $$"));
    EXPECT_FALSE(result.exit_status.has_value());
    EXPECT_EQ(result.signal, SIGSEGV);
}

TEST_F(Harness, KillsAProgramThatHangs) {
    Command command = shell("exec sleep 30");
    command.time_limit = std::chrono::milliseconds(100);
    const ProcessResult result = run_process(command);
    EXPECT_TRUE(result.timed_out);
    EXPECT_FALSE(result.exit_status.has_value());
}

TEST_F(Harness, FeedsMoreInputThanAPipeHolds) {
    Command command = shell("cat");
    const std::string input(1'000'000, 'x');
    command.input = FromBytes{input};
    EXPECT_EQ(run_process(command).output, input);
}

TEST_F(Harness, PassesTheGivenEnvironmentAndNoOther) {
    Command command;
    command.program = "/usr/bin/env";
    command.environment = {{"ONE", "1"}};
    EXPECT_EQ(run_process(command).output, "ONE=1\n");
}

TEST_F(Harness, ClosesTheDescriptorsItIsAskedToClose) {
    Command command = shell("for n in 0 1 2; do [ -e /proc/$$/fd/$n ] || exit 7; done");
    EXPECT_EQ(run_process(command).exit_status, 0);
    command.output = Closed{};
    EXPECT_EQ(run_process(command).exit_status, 7);
    command.output = Captured{};
    command.error = Closed{};
    EXPECT_EQ(run_process(command).exit_status, 7);
    command.error = Captured{};
    command.input = Closed{};
    EXPECT_EQ(run_process(command).exit_status, 7);
}

TEST_F(Harness, ABrokenPipeBreaksTheWriter) {
    Command command = shell("exec cat");
    command.input = FromBytes{"x"};
    command.output = BrokenPipe{};
    EXPECT_EQ(run_process(command).signal, SIGPIPE);
    command.ignore_broken_pipe_signal = true;
    EXPECT_EQ(run_process(command).exit_status, 1);
}

TEST_F(Harness, LimitsTheMemoryOfTheChild) {
    Command command = shell("ulimit -v");
    command.limits = {{RLIMIT_AS, 512U << 20U}};
    EXPECT_EQ(run_process(command).output, "524288\n");
}

TEST_F(Harness, TheWorldMovesTheFixedPathsAndNoOthers) {
    const std::string plain = sandbox_.extras() / "plain";
    const JobResult result =
        sandbox_.run(shell("echo log > /tmp/xxxxx.log; echo shot > "
                           "/var/spool/cups/tmp/shot; echo plain > " +
                           plain));
    EXPECT_EQ(result.exit_status, 0) << result.error;
    EXPECT_EQ(result.debug_line, "log\n");
    EXPECT_EQ(result.snapshots, (std::map<std::string, std::string>{{"shot", "shot\n"}}));
    EXPECT_EQ(read_file(plain), "plain\n");
}

TEST_F(Harness, TheClockOfTheWorldStandsStill) {
    Command command = shell("date '+%Y-%m-%d %H:%M:%S'; date -u +%H:%M:%S");
    EXPECT_EQ(run_process(command).output, "2024-03-05 07:08:09\n01:38:09\n");
}

TEST_F(Harness, LibcupsAndTheRawWriterMakeTheSameStream) {
    const std::vector<Page> pages{tiny_page(), tiny_page()};
    EXPECT_EQ(raster_stream(pages), raw_raster_stream({raw_page(pages[0]), raw_page(pages[1])}));
}

TEST_F(Harness, ThePicturesAreWhatTheirNamesSay) {
    EXPECT_EQ(uniform(3, 2, 7), std::string(6, '\7'));
    EXPECT_EQ(drawn("#.\n.#"), std::string("\xFF\0\0\xFF", 4));
    const std::string ramp = gradient(10, 10);
    EXPECT_EQ(ramp.front(), '\0');
    EXPECT_EQ(ramp.back(), '\xFF');
    const std::string picture = asymmetric(13, 11);
    EXPECT_NE(picture, std::string(picture.rbegin(), picture.rend()));
    Random first(5);
    Random again(5);
    EXPECT_EQ(noise(9, 9, first), noise(9, 9, again));
    EXPECT_NE(noise(9, 9, first), noise(9, 9, first));
}

}  // namespace
}  // namespace kelp_test
