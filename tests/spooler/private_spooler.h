#pragma once

#include <optional>
#include <string>
#include <vector>

#include "tests/spooler/background_process.h"
#include "tests/spooler/spooler_folders.h"
#include "tests/spooler/spooler_status.h"
#include "tests/support/run_process.h"

namespace kelp_test {

// A print spooler that nobody else sees: it runs while the object lives, on a Unix socket, in its
// own folders. Its clients are the usual commands.
class PrivateSpooler {
  public:
    // Returns when the spooler answers. Throws std::runtime_error when it does not start.
    PrivateSpooler();
    ~PrivateSpooler();

    const SpoolerFolders& folders() const { return folders_; }

    // Runs lp, lpadmin, cancel and the like as a client of this spooler.
    ProcessResult run(const std::vector<std::string>& command) const;

    // Adds or changes a queue: its PPD, its device and further arguments of lpadmin.
    void add_queue(const std::string& name, const std::filesystem::path& ppd,
                   const std::string& device, const std::vector<std::string>& more = {}) const;

    // Prints: the arguments of lp. Returns the number of the job. Throws std::runtime_error when lp
    // refuses; `try_to_print` gives nothing instead.
    int print(const std::vector<std::string>& arguments) const;
    std::optional<int> try_to_print(const std::vector<std::string>& arguments) const;

    JobStatus job(int number) const { return ask_job(folders_.socket(), number); }
    QueueStatus queue(const std::string& name) const { return ask_queue(folders_.socket(), name); }

    // Waits until nothing more happens to the job.
    JobStatus wait_for(int number) const;

    // The lines of the log that belong to the job, without their date.
    std::string log_of(int number) const;

    // Filters, backends and whatever they started that still run.
    std::vector<std::string> running_programs() const;

  private:
    SpoolerFolders folders_;
    BackgroundProcess daemon_;
};

}  // namespace kelp_test
