#pragma once

#include <filesystem>
#include <memory>
#include <string>
#include <vector>

#include "tests/spooler/background_process.h"
#include "tests/support/run_process.h"
#include "tests/support/temp_dir.h"

namespace kelp_test {

// The printer application, running on a port of this machine with folders of its own.
class Application {
  public:
    // Starts it with more options, "name=value", and waits until it answers. Unless they say
    // otherwise, it asks no printer how it is: all that a printer gets is what is printed.
    explicit Application(const std::vector<std::string>& options = {});
    ~Application();
    Application(const Application&) = delete;
    Application& operator=(const Application&) = delete;

    int port() const { return port_; }
    // Runs one of the other subcommands.
    ProcessResult run(const std::vector<std::string>& arguments) const;
    void add_printer(const std::string& name, const std::string& model,
                     const std::string& device) const;
    std::string log() const;
    std::filesystem::path state_folder() const { return directory_ / "state"; }
    // A path for a file of the test.
    std::filesystem::path file(const std::string& name) const { return directory_ / name; }

    bool is_running() { return server_->is_running(); }
    void stop() { server_->stop(); }
    std::optional<int> end_status(std::chrono::seconds limit) { return server_->end_status(limit); }
    // Ends it at once, wherever it is, and starts it again.
    void kill_and_restart();

  private:
    void start();

    TempDir directory_;
    std::vector<std::string> options_;
    int port_;
    std::unique_ptr<BackgroundProcess> server_;
};

// What run() starts, with an environment of the folder.
Command application_command(const std::filesystem::path& directory,
                            const std::vector<std::string>& arguments);

}  // namespace kelp_test
