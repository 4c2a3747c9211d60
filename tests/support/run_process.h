#pragma once

#include <sys/resource.h>

#include <chrono>
#include <filesystem>
#include <map>
#include <optional>
#include <string>
#include <variant>
#include <vector>

namespace kelp_test {

// What a descriptor of the child is. FromBytes and Captured are pipes, as the spooler uses them.
struct Closed {};
struct FromBytes {
    std::string bytes;
};
struct FromFile {
    std::filesystem::path path;
};
struct Captured {};
struct ToFile {
    std::filesystem::path path;
};
// A pipe whose reading end is closed before the child starts.
struct BrokenPipe {};

using StandardInput = std::variant<FromBytes, FromFile, Closed>;
using StandardOutput = std::variant<Captured, ToFile, Closed, BrokenPipe>;
using StandardError = std::variant<Captured, Closed>;

struct ResourceLimit {
    int resource;  // RLIMIT_AS and the like
    rlim_t value;
};

struct Command {
    std::filesystem::path program;
    std::vector<std::string> arguments;
    // argv[0], the program's path when absent.
    std::optional<std::string> name;
    // The whole environment of the child; nothing is inherited.
    std::map<std::string, std::string> environment;
    std::filesystem::path working_directory = "/";
    StandardInput input = FromBytes{};
    StandardOutput output = Captured{};
    StandardError error = Captured{};
    std::vector<ResourceLimit> limits;
    bool ignore_broken_pipe_signal = false;
    std::chrono::milliseconds time_limit = std::chrono::seconds(60);
};

struct ProcessResult {
    std::optional<int> exit_status;  // empty when a signal ended the child
    int signal = 0;
    bool timed_out = false;  // the child was killed at its time limit
    std::string output;      // empty unless captured
    std::string error;
    long peak_resident_kib = 0;

    // One line on how the child ended, for failure messages.
    std::string ending() const;
};

// Runs the command to its end. Throws std::system_error when it cannot be started.
ProcessResult run_process(const Command& command);

}  // namespace kelp_test
