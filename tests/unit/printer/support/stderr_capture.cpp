#include "tests/unit/printer/support/stderr_capture.h"

#include <sys/mman.h>
#include <unistd.h>

#include <array>
#include <cstddef>
#include <cstdio>
#include <sstream>
#include <stdexcept>

// A sanitizer's own, absent without one.
extern "C" [[gnu::weak]] void __sanitizer_set_death_callback(void (*callback)());

namespace kelp_test {
namespace {

const StderrCapture* current = nullptr;
int shown_on = -1;

// A sanitizer's report must not stay in the capture.
void show_capture() {
    if (current != nullptr) {
        const std::string text = current->text();
        static_cast<void>(!write(shown_on, text.data(), text.size()));
    }
}

}  // namespace

StderrCapture::StderrCapture()
    : saved_(dup(STDERR_FILENO)), file_(memfd_create("stderr", MFD_CLOEXEC)) {
    current = this;
    shown_on = saved_.get();
    if (__sanitizer_set_death_callback != nullptr) {
        __sanitizer_set_death_callback(show_capture);
    }
    std::fflush(stderr);
    if (!saved_.is_open() || dup2(file_.get(), STDERR_FILENO) < 0) {
        throw std::runtime_error("cannot capture standard error");
    }
}

StderrCapture::~StderrCapture() {
    std::fflush(stderr);
    dup2(saved_.get(), STDERR_FILENO);
    current = nullptr;
}

std::string StderrCapture::text() const {
    std::fflush(stderr);
    std::string text;
    std::array<char, 4096> buffer;
    ssize_t count = 0;
    while ((count = pread(file_.get(), buffer.data(), buffer.size(),
                          static_cast<off_t>(text.size()))) > 0) {
        text.append(buffer.data(), static_cast<std::size_t>(count));
    }
    return text;
}

std::vector<std::string> lines_of(const std::string& text) {
    std::vector<std::string> lines;
    std::istringstream stream(text);
    for (std::string line; std::getline(stream, line);) {
        lines.push_back(line);
    }
    return lines;
}

}  // namespace kelp_test
