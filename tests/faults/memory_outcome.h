#pragma once

#include <string>
#include <vector>

#include "tests/faults/fault_injection.h"
#include "tests/faults/fault_jobs.h"

namespace kelp_test {

// What a job may come to when memory runs out in the filter's own code.
class MemoryOutcome {
  public:
    MemoryOutcome(const FaultJob& job, const SentJob& sent);

    // What is wrong with a run in which allocations failed, or none; empty when nothing is.
    std::string fault_in(const ProcessResult& result, const MemoryReport& report) const;

  private:
    std::string fault_of_filter(const ProcessResult& result) const;
    std::string fault_of_library(const ProcessResult& result) const;

    // Where a job can end.
    struct End {
        std::string output;
        std::size_t missing = 0;   // pages that were left out, each with its message
        std::size_t stale = 0;     // pages in whose place the one before was printed again
        bool before_page = false;  // a page may come next
        bool complete = false;
    };
    void add_ends(const End& so_far, std::size_t page);

    SentJob sent_;
    std::vector<std::string> undithered_;
    std::string first_again_;  // empty where it cannot come to that
    std::vector<End> ends_;
};

}  // namespace kelp_test
