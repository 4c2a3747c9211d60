#pragma once

#include <sys/types.h>

#include <future>
#include <string>
#include <vector>

#include "tests/process/sandbox.h"
#include "tests/support/descriptor.h"

namespace kelp_test {

// A job whose output is taken from it bit by bit, so that it can be looked at in the middle: it
// waits where the pipe is full.
class RunningJob {
  public:
    // The command's output becomes the pipe.
    RunningJob(const Sandbox& sandbox, Command command);
    RunningJob(const RunningJob&) = delete;
    RunningJob& operator=(const RunningJob&) = delete;

    // The next bytes of the output, fewer at its end.
    std::string take(std::size_t size);

    // A figure of the process, in KiB: "VmRSS" or "VmHWM".
    long memory(const std::string& name) const;
    // What its descriptors are, by number.
    std::vector<std::string> descriptors() const;

    // Takes the rest of the output and waits for the end.
    ProcessResult finish(std::string& rest);

  private:
    pid_t find_process() const;

    const Sandbox& sandbox_;
    std::future<ProcessResult> result_;
    Descriptor pipe_;
    pid_t process_ = -1;
};

}  // namespace kelp_test
