#pragma once

#include <sys/types.h>

#include <filesystem>
#include <map>
#include <optional>
#include <string>
#include <vector>

namespace kelp_test {

// kelp-preview listen as a child, on ports that the system chooses unless told otherwise. It ends
// with the object, and with the test program should that one die first.
class RunningListener {
  public:
    // Returns when it takes jobs. Throws std::runtime_error, with what it said, when it does not.
    // What it prints goes to files in the folder; its jobs go to "jobs" there.
    explicit RunningListener(const std::filesystem::path& folder,
                             const std::vector<std::string>& more = {});
    ~RunningListener();
    RunningListener(const RunningListener&) = delete;
    RunningListener& operator=(const RunningListener&) = delete;

    bool is_running() const { return process_ > 0; }
    int port() const { return port_; }
    int web_port() const { return web_port_; }
    std::filesystem::path jobs() const { return folder_ / "jobs"; }

    // What it printed so far, in lines.
    std::vector<std::string> output() const;
    std::vector<std::string> error() const;
    // Whether a line of standard error with this text came within a generous limit.
    bool says(const std::string& text) const;

    // From now on no file of it can grow beyond this, as on a full disk.
    void limit_file_size(std::size_t bytes) const;

    void send_signal(int signal) const;
    // Waits for its end. Nothing when a signal killed it, or when it does not end.
    std::optional<int> exit_status();
    // The same after SIGTERM.
    std::optional<int> stop();

  private:
    // The rest of the line that begins so; empty when the child ended without it.
    std::string line_behind(const std::string& begin);

    std::filesystem::path folder_;
    pid_t process_ = -1;
    int port_ = 0;
    int web_port_ = 0;
};

// The names in a folder, hidden ones too, sorted.
std::vector<std::string> names_in(const std::filesystem::path& folder);

}  // namespace kelp_test
