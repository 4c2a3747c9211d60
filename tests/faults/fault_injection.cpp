#include "tests/faults/fault_injection.h"

#include <fstream>
#include <stdexcept>

namespace kelp_test {

void preload(Command& command, const std::string& library) {
    std::string& libraries = command.environment["LD_PRELOAD"];
    libraries += (libraries.empty() ? "" : ":") + library;
}

Command with_memory_fault(Command command, const MemoryFault& fault,
                          const std::filesystem::path& report) {
    preload(command, KELP_FAILING_MEMORY);
    command.environment["KELP_FAULT_MEMORY"] = std::to_string(fault.number);
    command.environment["KELP_FAULT_MEMORY_ONWARDS"] = fault.onwards ? "1" : "0";
    command.environment["KELP_FAULT_MEMORY_REPORT"] = report;
    return command;
}

MemoryReport read_memory_report(const std::filesystem::path& report) {
    MemoryReport result;
    std::ifstream file(report);
    for (std::string word; file >> word;) {
        if (word == "failed") {
            long size = 0;
            std::string object;
            file >> size >> object;
            result.asked_by = result.asked_by.value_or(object);
            result.last_asked_by = object;
        } else if (word == "allocations") {
            file >> result.allocations;
        } else {
            throw std::runtime_error("no report of the failing memory: " + word);
        }
    }
    return result;
}

bool calls_can_fail() {
#if defined(__x86_64__) || defined(__aarch64__)
    return true;
#else
    return false;
#endif
}

Command with_call_fault(Command command, const CallFault& fault,
                        const std::filesystem::path& report) {
    preload(command, KELP_FAILING_CALLS);
    auto& environment = command.environment;
    environment["KELP_FAULT_CALL"] = fault.call;
    environment["KELP_FAULT_FILE"] = fault.file;
    environment["KELP_FAULT_ERROR"] = std::to_string(fault.error);
    environment["KELP_FAULT_ONCE"] = std::to_string(fault.once);
    environment["KELP_FAULT_EVERY"] = fault.every ? "1" : "0";
    environment["KELP_FAULT_BEHIND"] = std::to_string(fault.behind.value_or(-1));
    environment["KELP_FAULT_LIMIT"] = std::to_string(fault.limit);
    environment["KELP_FAULT_REPORT"] = report;
    return command;
}

CallReport read_call_report(const std::filesystem::path& report) {
    CallReport result;
    std::ifstream file(report);
    std::string calls;
    std::string bytes;
    std::string changed;
    file >> calls >> result.calls >> bytes >> result.bytes >> changed >> result.changed;
    if (!file || calls != "calls" || bytes != "bytes" || changed != "changed") {
        throw std::runtime_error("no report of the failing calls in " + report.string());
    }
    return result;
}

}  // namespace kelp_test
