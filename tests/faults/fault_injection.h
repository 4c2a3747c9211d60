#pragma once

#include <filesystem>
#include <optional>
#include <string>

#include "tests/support/run_process.h"

namespace kelp_test {

// Loads one of this folder's libraries into the program before its own.
void preload(Command& command, const std::string& library);

// --- Allocations that fail (failing_memory.c) ---

struct MemoryFault {
    long number = 0;  // the allocation that fails, from main on; 0 for none
    bool onwards = false;
};

struct MemoryReport {
    // Who asked for the first and for the last one that failed, by the file name of the program or
    // library. Empty when none failed: there were fewer.
    std::optional<std::string> asked_by;
    std::optional<std::string> last_asked_by;
    long allocations = 0;  // 0 when the program did not end by itself
};

// The command with the fault; what comes of it is written to the file, which must not be there.
Command with_memory_fault(Command command, const MemoryFault& fault,
                          const std::filesystem::path& report);
MemoryReport read_memory_report(const std::filesystem::path& report);

// --- Reads and writes that are interrupted, short or fail (failing_calls.c) ---

struct CallFault {
    std::string call;                 // "read" or "write"
    std::string file;                 // "0", "1", "2" or a part of the path
    int error = 0;                    // what a call that fails gives
    long once = 0;                    // the number of the one call that fails
    bool every = false;               // every second call fails, beginning with the first
    std::optional<long> behind = {};  // all calls fail behind so many bytes
    long limit = 0;                   // a call moves so many bytes at most
};

struct CallReport {
    long calls = 0;
    long bytes = 0;
    long changed = 0;
};

// Whether failing_calls.c knows this processor.
bool calls_can_fail();

Command with_call_fault(Command command, const CallFault& fault,
                        const std::filesystem::path& report);
CallReport read_call_report(const std::filesystem::path& report);

}  // namespace kelp_test
