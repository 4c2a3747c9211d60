#include "tools/kelp-preview/progress.h"

#include <sys/ioctl.h>
#include <unistd.h>

#include <cstddef>
#include <cstdio>

#include "tools/kelp-preview/one_line.h"

namespace {

constexpr std::chrono::milliseconds kPatience{1000};
constexpr std::chrono::milliseconds kBetweenChanges{100};

/// As much of the text as stays on one line: what wraps could not be taken away.
std::string fitting(const std::string& text) {
    constexpr std::size_t kUsualColumns = 80;
    winsize size{};
    const bool known = ioctl(STDERR_FILENO, TIOCGWINSZ, &size) == 0 && size.ws_col > 0;
    return oneLine(text).substr(0, (known ? size.ws_col : kUsualColumns) - 1);
}

}  // namespace

Progress::Progress() : terminal_(isatty(STDERR_FILENO) == 1), next_(Clock::now() + kPatience) {}

void Progress::show(const std::string& text) {
    if (!terminal_ || Clock::now() < next_) {
        return;
    }
    next_ = Clock::now() + kBetweenChanges;
    std::fprintf(stderr, "\r%s\033[K", fitting(text).c_str());
    std::fflush(stderr);
    shown_ = true;
}

void Progress::clear() {
    if (shown_) {
        std::fputs("\r\033[K", stderr);
        std::fflush(stderr);
        shown_ = false;
    }
}
