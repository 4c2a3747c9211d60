#include "tools/kelp-preview/progress.h"

#include <unistd.h>

#include <cstdio>

namespace {

constexpr std::chrono::milliseconds kPatience{1000};
constexpr std::chrono::milliseconds kBetweenChanges{100};

}  // namespace

Progress::Progress() : terminal_(isatty(STDERR_FILENO) == 1), next_(Clock::now() + kPatience) {}

void Progress::show(const std::string& text) {
    if (!terminal_ || Clock::now() < next_) {
        return;
    }
    next_ = Clock::now() + kBetweenChanges;
    std::fprintf(stderr, "\r%s\033[K", text.c_str());
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
