#pragma once

#include <map>
#include <optional>
#include <string>
#include <vector>

#include "tests/support/ppd_file.h"
#include "tests/support/raster_stream.h"
#include "tests/support/run_process.h"
#include "tests/support/temp_dir.h"

namespace kelp_test {

// The filter under test. The environment variable KELP_TEST_FILTER names another one, say one that
// is installed.
std::filesystem::path filter_program();

// One print job as the spooler would start it.
struct Job {
    // The PPD's text; without one there is no PPD variable.
    std::optional<std::string> ppd = bare_ppd().text();
    std::string options;
    std::string raster;
    // The raster comes from a file named by the last argument, not from standard input.
    bool by_file = false;
    // 5 March 2024 01:38:09 UTC, which is 07:08:09 in a zone five and a half hours to the east.
    long long time = 1709602689;
    std::string time_zone = "KLP-5:30";
};

// A job of these pages, written by libcups.
Job job_of(const std::vector<Page>& pages, const std::string& options = {});

struct JobResult : ProcessResult {
    std::map<std::string, std::string> snapshots;   // by file name
    std::optional<std::string> debug_line;          // what is in xxxxx.log
    std::map<std::string, std::string> recordings;  // what appeared in the working directory
};

// The directories in which a program under test runs and finds its fixed paths:
// several programs can run at the same time, each in its own.
class Sandbox {
  public:
    Sandbox();

    // Where the program finds what it opens as /var/spool/cups/tmp and /tmp/xxxxx.log.
    std::filesystem::path spool() const { return directory_ / "world/var/spool/cups/tmp"; }
    std::filesystem::path debug_log() const { return directory_ / "world/tmp/xxxxx.log"; }
    std::filesystem::path working_directory() const { return directory_ / "work"; }
    // A directory for what a test needs besides.
    std::filesystem::path extras() const { return directory_ / "extras"; }

    // The command of a job, for tests that change something about it. Writes the job's files.
    Command command(const Job& job, const std::filesystem::path& program = filter_program()) const;

    // Runs the command. A crash, a hang and a sanitizer's finding each fail the test.
    JobResult run(const Command& command) const;
    JobResult run(const Job& job) const { return run(command(job)); }

  private:
    TempDir directory_;
};

// Runs a job in a sandbox of its own.
JobResult run_job(const Job& job, const std::filesystem::path& program = filter_program());

}  // namespace kelp_test
