#include "pictures/run_command.h"

#include <fcntl.h>
#include <poll.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <filesystem>
#include <stdexcept>
#include <system_error>

namespace {

namespace fs = std::filesystem;

constexpr std::size_t kErrorsKept = std::size_t{16} * 1024 * 1024;
constexpr int kPollMilliseconds = 200;

[[noreturn]] void fail(const std::string& what, int error) {
    throw std::system_error(error, std::generic_category(), what);
}

class Pipe {
  public:
    Pipe() {
        if (pipe2(ends_.data(), O_CLOEXEC) != 0) {
            fail("no pipe", errno);
        }
    }
    ~Pipe() {
        closeEnd(0);
        closeEnd(1);
    }
    Pipe(const Pipe&) = delete;
    Pipe& operator=(const Pipe&) = delete;

    int readEnd() const { return ends_[0]; }
    int writeEnd() const { return ends_[1]; }
    void closeEnd(std::size_t end) {
        if (ends_[end] >= 0) {
            close(ends_[end]);
            ends_[end] = -1;
        }
    }

  private:
    std::array<int, 2> ends_{};
};

/// cupsfilter lies in a folder that is not on everybody's PATH.
std::string programPath(const std::string& name) {
    const char* path = std::getenv("PATH");
    const std::string folders =
        std::string(path == nullptr ? "/usr/bin:/bin" : path) + ":/usr/sbin:/sbin";
    std::error_code none;
    for (std::size_t begin = 0; begin < folders.size();) {
        const std::size_t end = std::min(folders.find(':', begin), folders.size());
        std::string candidate = folders.substr(begin, end - begin) + "/" + name;
        if (end > begin && fs::is_regular_file(candidate, none) &&
            access(candidate.c_str(), X_OK) == 0) {
            return candidate;
        }
        begin = end + 1;
    }
    throw std::runtime_error(name + " is not installed");
}

pid_t start(const std::vector<std::string>& arguments, const Pipe& output, const Pipe& errors) {
    const std::string program = programPath(arguments[0]);
    std::vector<char*> pointers;
    pointers.reserve(arguments.size() + 1);
    for (const std::string& argument : arguments) {
        pointers.push_back(const_cast<char*>(argument.c_str()));
    }
    pointers.push_back(nullptr);

    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_addopen(&actions, STDIN_FILENO, "/dev/null", O_RDONLY, 0);
    posix_spawn_file_actions_adddup2(&actions, output.writeEnd(), STDOUT_FILENO);
    posix_spawn_file_actions_adddup2(&actions, errors.writeEnd(), STDERR_FILENO);
    posix_spawnattr_t attributes;
    posix_spawnattr_init(&attributes);
    sigset_t defaults;
    sigemptyset(&defaults);
    sigaddset(&defaults, SIGPIPE);
    sigaddset(&defaults, SIGXFSZ);
    posix_spawnattr_setsigdefault(&attributes, &defaults);
    posix_spawnattr_setflags(&attributes, POSIX_SPAWN_SETSIGDEF);

    pid_t child = 0;
    const int error =
        posix_spawn(&child, program.c_str(), &actions, &attributes, pointers.data(), environ);
    posix_spawnattr_destroy(&attributes);
    posix_spawn_file_actions_destroy(&actions);
    if (error != 0) {
        fail(arguments[0], error);
    }
    return child;
}

/// Reads what there is; false at the end.
bool readSome(int descriptor, std::string& text) {
    // NOLINTNEXTLINE(cppcoreguidelines-pro-type-member-init): what is used of it is read first
    std::array<char, 1 << 16> buffer;
    const ssize_t count = read(descriptor, buffer.data(), buffer.size());
    if (count > 0) {
        text.append(buffer.data(), static_cast<std::size_t>(count));
    }
    return count > 0 || (count < 0 && errno == EINTR);
}

void collect(const Pipe& output, const Pipe& errors, std::uint64_t mostOutput,
             const std::function<void()>& whileItRuns, CommandResult& result) {
    std::array<pollfd, 2> ends{pollfd{output.readEnd(), POLLIN, 0},
                               pollfd{errors.readEnd(), POLLIN, 0}};
    while (ends[0].fd >= 0 || ends[1].fd >= 0) {
        const int ready = poll(ends.data(), ends.size(), kPollMilliseconds);
        if (ready < 0 && errno != EINTR) {
            fail("poll", errno);
        }
        whileItRuns();
        if (ready < 0) {
            continue;  // the events are those of before
        }
        if (ends[0].fd >= 0 && ends[0].revents != 0 && !readSome(ends[0].fd, result.output)) {
            ends[0].fd = -1;
        }
        if (ends[1].fd >= 0 && ends[1].revents != 0 && !readSome(ends[1].fd, result.errors)) {
            ends[1].fd = -1;
        }
        if (result.errors.size() > 2 * kErrorsKept) {
            result.errors.erase(0, result.errors.size() - kErrorsKept);
        }
        if (result.output.size() >= mostOutput) {
            result.output.resize(static_cast<std::size_t>(mostOutput));
            return;
        }
    }
}

int waitFor(pid_t child) {
    int status = 0;
    while (waitpid(child, &status, 0) < 0 && errno == EINTR) {
    }
    return WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status);
}

std::string lastLine(const std::string& text) {
    const std::size_t end = text.find_last_not_of("\r\n ");
    if (end == std::string::npos) {
        return {};
    }
    const std::size_t begin = text.rfind('\n', end);
    return text.substr(begin + 1, end - begin);  // npos + 1 is 0
}

}  // namespace

CommandResult runCommand(const std::vector<std::string>& arguments, std::uint64_t mostOutput,
                         const std::function<void()>& whileItRuns) {
    Pipe output;
    Pipe errors;
    const pid_t child = start(arguments, output, errors);
    output.closeEnd(1);
    errors.closeEnd(1);
    CommandResult result;
    try {
        collect(output, errors, mostOutput, whileItRuns, result);
    } catch (...) {
        kill(child, SIGKILL);
        waitFor(child);
        throw;
    }
    if (result.output.size() >= mostOutput) {
        kill(child, SIGTERM);
    }
    // Who still writes must not wait for a reader.
    output.closeEnd(0);
    errors.closeEnd(0);
    result.status = waitFor(child);
    result.lastError = lastLine(result.errors);
    return result;
}
