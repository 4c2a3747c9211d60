#include "pictures/run_command.h"

#include <gtest/gtest.h>
#include <sys/wait.h>

#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <filesystem>
#include <stdexcept>
#include <string>
#include <system_error>

#include "tests/support/files.h"
#include "tests/support/temp_dir.h"

namespace {

namespace fs = std::filesystem;
using kelp_test::TempDir;
using kelp_test::write_file;

constexpr std::uint64_t plenty = 1'000'000;

CommandResult shell(const std::string& script, std::uint64_t most = plenty) {
    return runCommand({"sh", "-c", script}, most);
}

std::size_t open_descriptors() {
    return static_cast<std::size_t>(
        std::distance(fs::directory_iterator("/proc/self/fd"), fs::directory_iterator()));
}

// Also holds each test to leaving no child and no descriptor.
class RunCommand : public testing::Test {
  protected:
    RunCommand() { setenv("PATH", "/usr/bin:/bin", 1); }
    ~RunCommand() override {
        setenv("PATH", path_.c_str(), 1);
        EXPECT_EQ(open_descriptors(), descriptors_);
        EXPECT_EQ(waitpid(-1, nullptr, WNOHANG), -1);
        EXPECT_EQ(errno, ECHILD);
    }

    // A script of the name, in a folder of its own.
    static fs::path add_program(const TempDir& dir, const char* folder, const std::string& script) {
        fs::create_directories(dir / folder);
        write_file(dir / folder / "kelp-try", script);
        fs::permissions(dir / folder / "kelp-try", fs::perms(0755));
        return dir / folder;
    }
    static std::string reason(const std::string& program) {
        try {
            runCommand({program}, plenty);
            return "ran";
        } catch (const std::runtime_error& error) {
            return error.what();
        }
    }

  private:
    std::string path_ = getenv("PATH") == nullptr ? "" : getenv("PATH");
    std::size_t descriptors_ = open_descriptors();
};

TEST_F(RunCommand, GivesTheExitStatusOrTheSignal) {
    EXPECT_EQ(shell("exit 0").status, 0);
    EXPECT_EQ(shell("exit 7").status, 7);
    EXPECT_EQ(shell("kill -KILL $$").status, 128 + 9);
}

TEST_F(RunCommand, KeepsOutputAndErrorsApart) {
    const CommandResult result = shell("echo out; echo first >&2; printf 'last one \\r\\n\\n' >&2");
    EXPECT_EQ(result.output, "out\n");
    EXPECT_EQ(result.errors, "first\nlast one \r\n\n");
    EXPECT_EQ(result.lastError, "last one");
    EXPECT_EQ(shell("printf only >&2").lastError, "only");
    EXPECT_EQ(shell("echo >&2").lastError, "");
}

TEST_F(RunCommand, GivesNothingToRead) {
    EXPECT_EQ(runCommand({"cat"}, plenty).output, "");
}

TEST_F(RunCommand, KnowsNoShell) {
    EXPECT_EQ(runCommand({"printf", "%s|", "$HOME; echo x", "a b", "*", "", "`id`"}, plenty).output,
              "$HOME; echo x|a b|*||`id`|");
}

TEST_F(RunCommand, EndsAProgramThatWritesAsMuchAsAllowed) {
    const CommandResult endless = runCommand({"yes"}, 1000);
    EXPECT_EQ(endless.output.size(), 1000U);
    EXPECT_GT(endless.status, 128);
    EXPECT_EQ(shell("printf 12345; exec sleep 1000", 5).output, "12345");
    const CommandResult less = shell("printf 12345", 6);
    EXPECT_EQ(less.output, "12345");
    EXPECT_EQ(less.status, 0);
}

TEST_F(RunCommand, EndsAProgramThatWritesOnThoughToldToEnd) {
    EXPECT_EQ(shell("trap '' TERM; while echo yes; do :; done", 1000).output.size(), 1000U);
}

TEST_F(RunCommand, KeepsTheEndOfLongErrors) {
    const CommandResult result =
        shell("yes error | head -c 60000000 >&2; echo the end >&2; echo out");
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.output, "out\n");
    EXPECT_EQ(result.lastError, "the end");
    EXPECT_GE(result.errors.size(), 16U * 1024 * 1024);
    EXPECT_LE(result.errors.size(), 33U * 1024 * 1024);
}

TEST_F(RunCommand, NamesAProgramThatIsNotThereOrCannotRun) {
    EXPECT_EQ(reason("kelp-no-such-program"), "kelp-no-such-program is not installed");
    const TempDir dir;
    setenv("PATH", add_program(dir, "a", "#!/no/such/interpreter\n").c_str(), 1);
    EXPECT_EQ(reason("kelp-try"), "kelp-try: No such file or directory");
}

TEST_F(RunCommand, TakesTheFirstProgramOfThePath) {
    const TempDir dir;
    fs::create_directories(dir / "folder/kelp-try");
    write_file(add_program(dir, "plain", "").string() + "/kelp-try", "not to be run");
    fs::permissions(dir / "plain/kelp-try", fs::perms(0644));
    add_program(dir, "first", "#!/bin/sh\necho first\n");
    add_program(dir, "second", "#!/bin/sh\necho second\n");
    const std::string base = dir.path().string();
    const std::string path = base + "/missing:" + base + "/folder::" + base + "/plain:" + base +
                             "/first:" + base + "/second";
    setenv("PATH", path.c_str(), 1);
    EXPECT_EQ(runCommand({"kelp-try"}, plenty).output, "first\n");
}

TEST_F(RunCommand, LooksInTheAdministratorsFoldersTooButNotInTheWorkingOne) {
    setenv("PATH", "/usr/bin:/bin", 1);
    EXPECT_EQ(runCommand({"ldconfig", "--version"}, plenty).status, 0);
    unsetenv("PATH");
    EXPECT_EQ(shell("echo found").output, "found\n");
    const TempDir dir;
    const fs::path before = fs::current_path();
    fs::current_path(add_program(dir, "here", "#!/bin/sh\n"));
    setenv("PATH", "", 1);
    EXPECT_EQ(reason("kelp-try"), "kelp-try is not installed");
    setenv("PATH", "::", 1);
    EXPECT_EQ(reason("kelp-try"), "kelp-try is not installed");
    fs::current_path(before);
}

TEST_F(RunCommand, CallsBackAndEndsTheProgramWhenThatThrows) {
    int calls = 0;
    const auto thrice = [&] {
        if (++calls == 3) {
            throw std::logic_error("enough");
        }
    };
    EXPECT_THROW(runCommand({"sleep", "1000"}, plenty, thrice), std::logic_error);
    EXPECT_EQ(calls, 3);
}

TEST_F(RunCommand, GivesTheProgramItsSignalsBack) {
    const auto before = std::signal(SIGPIPE, SIG_IGN);
    EXPECT_EQ(shell("kill -PIPE $$; echo alive").status, 128 + SIGPIPE);
    std::signal(SIGPIPE, before);
}

}  // namespace
