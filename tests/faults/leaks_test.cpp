// Whole jobs, and jobs that end for want of memory, under a checker of memory: nothing is leaked,
// read before it is written, or touched outside its block.

#include <gtest/gtest.h>

#include <iostream>

#include "tests/faults/fault_injection.h"
#include "tests/faults/fault_jobs.h"
#include "tests/process/expected.h"
#include "tests/support/files.h"

namespace kelp_test {
namespace {

constexpr int finding = 97;

Command checked(Command command) {
    command.arguments.insert(
        command.arguments.begin(),
        {"--quiet", "--leak-check=full", "--show-leak-kinds=definite,indirect,possible",
         "--errors-for-leak-kinds=definite,indirect,possible",
         "--error-exitcode=" + std::to_string(finding),
         // Else it would replace our failing functions too.
         "--soname-synonyms=somalloc=nouserintercepts", command.program});
    command.program = KELP_VALGRIND;
    command.environment["PATH"] = "/usr/bin:/bin";
    command.time_limit = std::chrono::minutes(3);
    return command;
}

class Leaks : public testing::TestWithParam<FaultJob> {};

TEST_P(Leaks, HasNoWholeJob) {
    const Job job = GetParam().job();
    const std::string good = run_job(job).output;
    const Sandbox sandbox;
    const JobResult result = sandbox.run(checked(sandbox.command(job)));
    EXPECT_EQ(result.exit_status, 0) << result.error;
    EXPECT_TRUE(result.output == good);
}

TEST_P(Leaks, HasNoJobWithoutItsOutput) {
    const Sandbox sandbox;
    Command command = checked(sandbox.command(GetParam().job()));
    command.output = ToFile{"/dev/full"};
    EXPECT_EQ(sandbox.run(command).exit_status, 1);
}

INSTANTIATE_TEST_SUITE_P(In, Leaks, testing::ValuesIn(fault_jobs()),
                         [](const testing::TestParamInfo<FaultJob>& of) {
                             return std::string(of.param.name);
                         });

// libcups leaks when its own memory fails, so only the filter's allocations do.
TEST(LeaksWithoutMemory, HasNoJob) {
    long runs = 0;
    for (const FaultJob& fault_job : fault_jobs()) {
        const Job job = fault_job.job();
        for (long number = 150;; number += 5) {
            const Sandbox sandbox;
            const auto report = sandbox.extras() / "report";
            const ProcessResult result = run_process(
                checked(with_memory_fault(sandbox.command(job), {number, false}, report)));
            const MemoryReport memory = read_memory_report(report);
            if (!memory.asked_by) {
                break;
            }
            if (*memory.asked_by == filter_program().filename()) {
                EXPECT_TRUE(result.exit_status == 0 || result.exit_status == 1)
                    << fault_job.name << " " << number << "\n"
                    << result.error;
                ++runs;
            }
        }
    }
    EXPECT_GT(runs, 15);
    std::cout << runs << " jobs checked\n";
}

// The checker sees what these tests are there for.
TEST(LeakChecker, FindsALeakAndAnOverrun) {
    for (const char* fault : {"leak", "overrun"}) {
        const Sandbox sandbox;
        Command command = sandbox.command({}, KELP_LEAKING);
        command.arguments = {fault};
        EXPECT_EQ(sandbox.run(checked(command)).exit_status, finding) << fault;
    }
    const Sandbox sandbox;
    Command command = sandbox.command({}, KELP_LEAKING);
    command.arguments = {"neither"};
    EXPECT_EQ(sandbox.run(checked(command)).exit_status, 0);
}

}  // namespace
}  // namespace kelp_test
