#include "tests/spooler/background_process.h"

#include <fcntl.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <chrono>
#include <csignal>
#include <system_error>

#include "tests/spooler/wait_until.h"

namespace kelp_test {
namespace {

// In the child, between fork and exec: system calls only.
void become(char* const* command, const char* output) {
    prctl(PR_SET_PDEATHSIG, SIGTERM);
    const int file = open(output, O_WRONLY | O_CREAT | O_APPEND, 0644);
    const int nothing = open("/dev/null", O_RDONLY);
    if (file < 0 || nothing < 0) {
        return;
    }
    dup2(nothing, STDIN_FILENO);
    dup2(file, STDOUT_FILENO);
    dup2(file, STDERR_FILENO);
    execv(command[0], command);
}

}  // namespace

BackgroundProcess::BackgroundProcess(const std::vector<std::string>& command,
                                     const std::filesystem::path& output) {
    std::vector<std::string> texts = command;
    std::vector<char*> pointers;
    for (std::string& text : texts) {
        pointers.push_back(text.data());
    }
    pointers.push_back(nullptr);
    process_ = fork();
    if (process_ < 0) {
        throw std::system_error(errno, std::generic_category(), "fork");
    }
    if (process_ == 0) {
        become(pointers.data(), output.c_str());
        _exit(127);
    }
}

BackgroundProcess::~BackgroundProcess() {
    stop();
}

bool BackgroundProcess::is_running() {
    if (process_ > 0 && waitpid(process_, nullptr, WNOHANG) == process_) {
        process_ = -1;
    }
    return process_ > 0;
}

void BackgroundProcess::stop() {
    if (!is_running()) {
        return;
    }
    ::kill(process_, SIGTERM);
    if (!wait_until([this] { return !is_running(); }, std::chrono::seconds(20))) {
        kill();
    }
}

void BackgroundProcess::kill() {
    if (is_running()) {
        ::kill(process_, SIGKILL);
        waitpid(process_, nullptr, 0);
        process_ = -1;
    }
}

std::optional<int> BackgroundProcess::end_status(std::chrono::seconds limit) {
    int status = 0;
    ::kill(process_, SIGTERM);
    if (!wait_until([&] { return waitpid(process_, &status, WNOHANG) == process_; }, limit)) {
        return std::nullopt;
    }
    process_ = -1;
    return WIFEXITED(status) ? std::optional<int>(WEXITSTATUS(status)) : std::nullopt;
}

}  // namespace kelp_test
