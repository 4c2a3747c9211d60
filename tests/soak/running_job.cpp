#include "tests/soak/running_job.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <fstream>
#include <stdexcept>
#include <system_error>

namespace kelp_test {

namespace fs = std::filesystem;

RunningJob::RunningJob(const Sandbox& sandbox, Command command) : sandbox_(sandbox) {
    const fs::path pipe = sandbox.extras() / "output";
    if (mkfifo(pipe.c_str(), 0600) != 0) {
        throw std::system_error(errno, std::generic_category(), pipe);
    }
    command.output = ToFile{pipe};
    command.time_limit = std::chrono::minutes(9);
    result_ = std::async(std::launch::async, [command] { return run_process(command); });
    // Each side waits here for the other.
    pipe_ = Descriptor(open(pipe.c_str(), O_RDONLY | O_CLOEXEC));
    fs::remove(pipe);
}

std::string RunningJob::take(std::size_t size) {
    std::string bytes(size, '\0');
    std::size_t taken = 0;
    while (taken < size) {
        const ssize_t count = read(pipe_.get(), bytes.data() + taken, size - taken);
        if (count <= 0) {
            break;
        }
        taken += static_cast<std::size_t>(count);
    }
    bytes.resize(taken);
    if (process_ < 0 && taken > 0) {
        process_ = find_process();
    }
    return bytes;
}

// The one that runs in the sandbox's folder.
pid_t RunningJob::find_process() const {
    for (const fs::directory_entry& entry : fs::directory_iterator("/proc")) {
        std::error_code error;
        if (fs::read_symlink(entry.path() / "cwd", error) == sandbox_.working_directory() &&
            !error) {
            return static_cast<pid_t>(std::stol(entry.path().filename()));
        }
    }
    throw std::runtime_error("the job is not running");
}

long RunningJob::memory(const std::string& name) const {
    std::ifstream status("/proc/" + std::to_string(process_) + "/status");
    for (std::string line; std::getline(status, line);) {
        if (line.starts_with(name + ":")) {
            return std::stol(line.substr(name.size() + 1));
        }
    }
    throw std::runtime_error("no figure " + name);
}

std::vector<std::string> RunningJob::descriptors() const {
    std::vector<std::string> result;
    for (const fs::directory_entry& entry :
         fs::directory_iterator("/proc/" + std::to_string(process_) + "/fd")) {
        std::error_code closed_meanwhile;
        result.push_back(fs::read_symlink(entry.path(), closed_meanwhile));
    }
    return result;
}

ProcessResult RunningJob::finish(std::string& rest) {
    for (std::string more; !(more = take(65536)).empty();) {
        rest += more;
    }
    return result_.get();
}

}  // namespace kelp_test
