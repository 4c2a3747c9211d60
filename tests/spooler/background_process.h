#pragma once

#include <sys/types.h>

#include <chrono>
#include <filesystem>
#include <optional>
#include <string>
#include <vector>

namespace kelp_test {

// A child that runs beside the test. It ends with the object, and with the test program should that
// one die first.
class BackgroundProcess {
  public:
    // What the child prints goes to the file. Throws std::system_error when it cannot be started.
    BackgroundProcess(const std::vector<std::string>& command, const std::filesystem::path& output);
    ~BackgroundProcess();
    BackgroundProcess(const BackgroundProcess&) = delete;
    BackgroundProcess& operator=(const BackgroundProcess&) = delete;

    bool is_running();
    // Asks the child to end, and kills it if it does not within some seconds.
    void stop();
    // Kills it.
    void kill();
    // Asks it to end, and waits. Its exit status; none where it is still there, or a signal ended
    // it.
    std::optional<int> end_status(std::chrono::seconds limit);

  private:
    pid_t process_ = -1;
};

}  // namespace kelp_test
