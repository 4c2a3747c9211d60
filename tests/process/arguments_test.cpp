// How the filter is called, and where its input comes from.

#include <gtest/gtest.h>

#include <filesystem>

#include "tests/process/expected.h"
#include "tests/process/sandbox.h"
#include "tests/support/files.h"

namespace kelp_test {
namespace {

constexpr const char* no_raster_file = "ERROR: Unable to open raster file - ";

std::string usage_of(const std::string& name) {
    return name + " v3.13.13\n\nUsage:\n\n    " + name +
           " job_id user title copyies options [file]\n\n";
}

JobResult run_as(const std::string& name, const std::vector<std::string>& arguments) {
    const Sandbox sandbox;
    Command command = sandbox.command(job_of({tiny_page()}));
    command.name = name;
    command.arguments = arguments;
    return sandbox.run(command);
}

TEST(Arguments, FewerThanFivePrintTheUsageAndFail) {
    const std::vector<std::string> all{"1", "user", "title", "1"};
    for (std::size_t count = 0; count <= all.size(); ++count) {
        const auto end = all.begin() + static_cast<std::ptrdiff_t>(count);
        const JobResult result = run_as("rastertokelp", {all.begin(), end});
        EXPECT_EQ(result.exit_status, 1) << count << " arguments";
        EXPECT_EQ(result.error, usage_of("rastertokelp")) << count << " arguments";
        EXPECT_EQ(result.output, "") << count << " arguments";
    }
}

TEST(Arguments, TheUsageNamesTheProgramWithoutItsFolder) {
    EXPECT_EQ(run_as("/usr/lib/cups/filter/rastertokelp", {}).error, usage_of("rastertokelp"));
    EXPECT_EQ(run_as("relative/other-name", {}).error, usage_of("other-name"));
    // A backslash separates folders as well, and the last separator of either kind counts.
    EXPECT_EQ(run_as("a/b\\c", {}).error, usage_of("c"));
    EXPECT_EQ(run_as("a\\b/c", {}).error, usage_of("c"));
    EXPECT_EQ(run_as("folder/", {}).error, usage_of(""));
}

TEST(Arguments, FiveReadTheRasterFromStandardInput) {
    const JobResult result = run_job(job_of({tiny_page()}));
    EXPECT_EQ(result.exit_status, 0);
    EXPECT_EQ(result.output, preamble() + tiny_page_output());
}

TEST(Arguments, TheSixthNamesTheRasterFile) {
    Job job = job_of({tiny_page()});
    job.by_file = true;
    const JobResult result = run_job(job);
    EXPECT_EQ(result.exit_status, 0);
    EXPECT_EQ(result.output, preamble() + tiny_page_output());
}

TEST(Arguments, AFileIsReadEvenWhenStandardInputHoldsAnotherJob) {
    const Sandbox sandbox;
    Job job = job_of({tiny_page()});
    job.by_file = true;
    Command command = sandbox.command(job);
    command.input = FromBytes{raster_stream({tiny_page(), tiny_page()})};
    EXPECT_EQ(sandbox.run(command).output, preamble() + tiny_page_output());
}

TEST(Arguments, MoreThanSixAreIgnored) {
    const Sandbox sandbox;
    Job job = job_of({tiny_page()});
    job.by_file = true;
    Command command = sandbox.command(job);
    command.arguments.emplace_back("/nonexistent");
    const JobResult result = sandbox.run(command);
    EXPECT_EQ(result.exit_status, 0);
    EXPECT_EQ(result.output, preamble() + tiny_page_output());
}

// Standard input holds a good job throughout: none may be printed in place of the file.
class UnusableInputFile : public testing::Test {
  protected:
    void expect_refused(const std::string& file) const {
        Command command = sandbox_.command(job_of({tiny_page()}));
        command.arguments.push_back(file);
        const JobResult result = sandbox_.run(command);
        EXPECT_EQ(result.exit_status, 1) << file;
        EXPECT_EQ(result.error, no_raster_file) << file;
        EXPECT_EQ(result.output, "") << file;
    }

    Sandbox sandbox_;
};

TEST_F(UnusableInputFile, MissingIsAnError) {
    expect_refused(sandbox_.extras() / "missing.ras");
    expect_refused(sandbox_.extras() / "no-folder" / "missing.ras");
}

TEST_F(UnusableInputFile, TheEmptyNameIsAnError) {
    expect_refused("");
}

TEST_F(UnusableInputFile, UnreadableIsAnError) {
    // Not even an administrator opens a path through a file, a loop of links or an endless name.
    const std::filesystem::path file = sandbox_.extras() / "file";
    write_file(file, "not a folder");
    expect_refused(file / "page.ras");
    const std::filesystem::path loop = sandbox_.extras() / "loop";
    std::filesystem::create_symlink(loop, loop);
    expect_refused(loop);
    expect_refused("/" + std::string(300, 'x'));
}

TEST_F(UnusableInputFile, AFolderHoldsNoPages) {
    // It can be opened for reading, but nothing can be read from it.
    Command command = sandbox_.command(job_of({tiny_page()}));
    command.arguments.push_back(sandbox_.extras());
    const JobResult result = sandbox_.run(command);
    EXPECT_EQ(result.exit_status, 0);
    EXPECT_EQ(result.output, preamble());
}

TEST(Arguments, JobTitleUserAndCopiesDoNotShowInTheOutput) {
    const Sandbox sandbox;
    Command command = sandbox.command(job_of({tiny_page()}));
    command.arguments = {"%n%n%s", "%s^XZ", "~JA", "99", ""};
    const JobResult result = sandbox.run(command);
    EXPECT_EQ(result.exit_status, 0);
    EXPECT_EQ(result.output, preamble() + tiny_page_output());
}

}  // namespace
}  // namespace kelp_test
