#include "tests/preview/listen/running_listener.h"

#include <fcntl.h>
#include <sys/prctl.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <csignal>
#include <sstream>
#include <stdexcept>
#include <system_error>

#include "tests/spooler/wait_until.h"
#include "tests/support/files.h"

namespace kelp_test {
namespace {

// In the child, between fork and exec: system calls only.
void become(char* const* command, const char* folder) {
    prctl(PR_SET_PDEATHSIG, SIGKILL);
    if (chdir(folder) != 0) {
        return;
    }
    const int output = open("output", O_WRONLY | O_CREAT | O_TRUNC | O_APPEND, 0644);
    const int error = open("error", O_WRONLY | O_CREAT | O_TRUNC | O_APPEND, 0644);
    const int nothing = open("/dev/null", O_RDONLY);
    if (output < 0 || error < 0 || nothing < 0) {
        return;
    }
    dup2(nothing, STDIN_FILENO);
    dup2(output, STDOUT_FILENO);
    dup2(error, STDERR_FILENO);
    execv(command[0], command);
}

std::vector<std::string> whole_lines(const std::filesystem::path& path) {
    std::vector<std::string> lines;
    if (!std::filesystem::exists(path)) {
        return lines;
    }
    std::istringstream text(read_file(path));
    for (std::string line; std::getline(text, line) && !text.eof();) {
        lines.push_back(line);
    }
    return lines;
}

int port_in(const std::string& line) {
    const std::size_t colon = line.rfind(':');
    return colon == std::string::npos ? 0 : std::atoi(line.c_str() + colon + 1);
}

}  // namespace

RunningListener::RunningListener(const std::filesystem::path& folder,
                                 const std::vector<std::string>& more)
    : folder_(folder) {
    std::vector<std::string> texts = {KELP_PREVIEW, "listen", "-o", "jobs"};
    texts.insert(texts.end(), more.begin(), more.end());
    for (const char* port : {"--port", "--web-port"}) {
        if (std::find(more.begin(), more.end(), port) == more.end()) {
            texts.insert(texts.end(), {port, "0"});
        }
    }
    std::vector<char*> command;
    for (std::string& text : texts) {
        command.push_back(text.data());
    }
    command.push_back(nullptr);
    std::filesystem::remove(folder_ / "error");  // of an earlier run
    process_ = fork();
    if (process_ < 0) {
        throw std::system_error(errno, std::generic_category(), "fork");
    }
    if (process_ == 0) {
        become(command.data(), folder_.c_str());
        _exit(127);
    }
    port_ = port_in(line_behind("Listening on "));
    web_port_ = port_in(line_behind("Web page: http://"));
    if (port_ == 0 || web_port_ == 0) {
        std::string said;
        for (const std::string& line : error()) {
            said += line + "\n";
        }
        stop();
        throw std::runtime_error("kelp-preview listen does not listen: " + said);
    }
}

RunningListener::~RunningListener() {
    stop();
}

std::string RunningListener::line_behind(const std::string& begin) {
    std::string found;
    wait_until([&] {
        for (const std::string& line : error()) {
            if (line.starts_with(begin)) {
                found = line.substr(begin.size());
            }
        }
        siginfo_t ended{};
        waitid(P_PID, static_cast<id_t>(process_), &ended, WEXITED | WNOHANG | WNOWAIT);
        return !found.empty() || ended.si_pid != 0;
    });
    return found;
}

std::vector<std::string> RunningListener::output() const {
    return whole_lines(folder_ / "output");
}

std::vector<std::string> RunningListener::error() const {
    return whole_lines(folder_ / "error");
}

bool RunningListener::says(const std::string& text) const {
    return wait_until([&] {
        const std::vector<std::string> lines = error();
        return std::any_of(lines.begin(), lines.end(), [&](const std::string& line) {
            return line.find(text) != std::string::npos;
        });
    });
}

void RunningListener::limit_file_size(std::size_t bytes) const {
    const rlimit limit{bytes, bytes};
    if (prlimit(process_, RLIMIT_FSIZE, &limit, nullptr) != 0) {
        throw std::system_error(errno, std::generic_category(), "prlimit");
    }
}

void RunningListener::send_signal(int signal) const {
    kill(process_, signal);
}

std::optional<int> RunningListener::exit_status() {
    int status = 0;
    const bool ended = wait_until([&] { return waitpid(process_, &status, WNOHANG) == process_; });
    if (!ended) {
        kill(process_, SIGKILL);
        waitpid(process_, nullptr, 0);
    }
    process_ = -1;
    return ended && WIFEXITED(status) ? std::optional<int>(WEXITSTATUS(status)) : std::nullopt;
}

std::optional<int> RunningListener::stop() {
    if (process_ <= 0) {
        return std::nullopt;
    }
    send_signal(SIGTERM);
    return exit_status();
}

std::vector<std::string> names_in(const std::filesystem::path& folder) {
    std::vector<std::string> names;
    for (const auto& entry : std::filesystem::directory_iterator(folder)) {
        names.push_back(entry.path().filename());
    }
    std::sort(names.begin(), names.end());
    return names;
}

}  // namespace kelp_test
