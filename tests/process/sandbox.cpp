#include "tests/process/sandbox.h"

#include <gtest/gtest.h>

#include <cstdlib>

#include "tests/support/files.h"

namespace kelp_test {
namespace {

constexpr int sanitizer_status = 99;

// The status is no status of the filter's, and the world library comes before the runtime.
std::string sanitizer_options() {
    return "exitcode=" + std::to_string(sanitizer_status) +
           ":verify_asan_link_order=0:detect_leaks=1:abort_on_error=0";
}

std::map<std::string, std::string> base_environment() {
    const std::string options = sanitizer_options();
    return {{"LD_PRELOAD", KELP_TEST_WORLD_LIBRARY},
            {"ASAN_OPTIONS", options},
            {"LSAN_OPTIONS", options},
            {"UBSAN_OPTIONS", options + ":print_stacktrace=1"}};
}

bool names_a_finding(const std::string& error) {
    for (const char* mark : {"ERROR: AddressSanitizer", "ERROR: LeakSanitizer", "runtime error:"}) {
        if (error.find(mark) != std::string::npos) {
            return true;
        }
    }
    return false;
}

// What no run of a program under test may show, however its test uses it.
void expect_sound(const ProcessResult& result) {
    const bool sound = !result.timed_out && result.exit_status.has_value() &&
                       *result.exit_status != sanitizer_status && !names_a_finding(result.error);
    EXPECT_TRUE(sound) << result.ending() << "\n" << result.error;
    EXPECT_EQ(result.error.find("cannot be preloaded"), std::string::npos) << result.error;
}

}  // namespace

std::filesystem::path filter_program() {
    const char* other = std::getenv("KELP_TEST_FILTER");
    return other != nullptr ? other : KELP_FILTER;
}

Job job_of(const std::vector<Page>& pages, const std::string& options) {
    Job job;
    job.options = options;
    job.raster = raster_stream(pages);
    return job;
}

Sandbox::Sandbox() {
    std::filesystem::create_directories(spool());
    std::filesystem::create_directories(debug_log().parent_path());
    std::filesystem::create_directories(working_directory());
    std::filesystem::create_directories(extras());
}

Command Sandbox::command(const Job& job, const std::filesystem::path& program) const {
    Command command;
    command.program = program;
    command.arguments = {"1", "user", "title", "1", job.options};
    command.working_directory = working_directory();
    command.environment = base_environment();
    command.environment["KELP_TEST_WORLD"] = (directory_ / "world").string();
    command.environment["KELP_TEST_TIME"] = std::to_string(job.time);
    command.environment["TZ"] = job.time_zone;
    if (job.ppd) {
        write_file(directory_ / "printer.ppd", *job.ppd);
        command.environment["PPD"] = (directory_ / "printer.ppd").string();
    }
    if (job.by_file) {
        write_file(directory_ / "page.ras", job.raster);
        command.arguments.push_back((directory_ / "page.ras").string());
    } else {
        command.input = FromBytes{job.raster};
    }
    return command;
}

JobResult Sandbox::run(const Command& command) const {
    JobResult result;
    static_cast<ProcessResult&>(result) = run_process(command);
    expect_sound(result);
    result.snapshots = read_directory(spool());
    result.recordings = read_directory(working_directory());
    if (std::filesystem::is_regular_file(std::filesystem::symlink_status(debug_log()))) {
        result.debug_line = read_file(debug_log());
    }
    return result;
}

JobResult run_job(const Job& job, const std::filesystem::path& program) {
    const Sandbox sandbox;
    return sandbox.run(sandbox.command(job, program));
}

}  // namespace kelp_test
