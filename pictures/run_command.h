#ifndef KELP_PICTURES_RUN_COMMAND_H
#define KELP_PICTURES_RUN_COMMAND_H

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

struct CommandResult {
    int status = 0;         ///< its exit status; 128 and the signal's number where one ended it
    std::string output;     ///< what it wrote to standard output
    std::string errors;     ///< the last part of what it wrote to standard error
    std::string lastError;  ///< the last line of that
};

/// Runs a program of PATH, or of the folders for administrators, without a shell and with nothing
/// to read. Throws std::system_error where it cannot be started, std::runtime_error where it is not
/// installed.
/// @param mostOutput bytes; a program that writes as many is ended
/// @param whileItRuns is called several times a second
CommandResult runCommand(
    const std::vector<std::string>& arguments, std::uint64_t mostOutput,
    const std::function<void()>& whileItRuns = [] {});

#endif
