#pragma once

#include <string>
#include <vector>

#include "tests/support/descriptor.h"

namespace kelp_test {

// Standard error of this process goes to a file of its own while the object lives.
class StderrCapture {
  public:
    StderrCapture();
    ~StderrCapture();
    StderrCapture(const StderrCapture&) = delete;
    StderrCapture& operator=(const StderrCapture&) = delete;

    // What was written so far.
    std::string text() const;

  private:
    Descriptor saved_;
    Descriptor file_;
};

// What a call writes to standard error.
template <typename Call>
std::string stderr_of(Call&& call) {
    const StderrCapture capture;
    call();
    return capture.text();
}

// The lines of a text without their newlines.
std::vector<std::string> lines_of(const std::string& text);

}  // namespace kelp_test
