#pragma once

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "tests/support/run_process.h"
#include "tests/support/temp_dir.h"

namespace kelp_test {

// Runs kelp-preview in a temporary folder.
class PreviewProgram : public testing::Test {
  protected:
    // With the bytes on standard input.
    ProcessResult run(const std::vector<std::string>& arguments, const std::string& input = "") {
        Command command = given(arguments);
        command.input = FromBytes{input};
        command.ignore_broken_pipe_signal = true;
        return run_process(command);
    }
    Command given(const std::vector<std::string>& arguments) {
        Command command;
        command.program = KELP_PREVIEW;
        command.arguments = arguments;
        command.working_directory = dir.path();
        return command;
    }

    TempDir dir;
};

}  // namespace kelp_test
