// Every allocation of a job fails once, alone and together with all behind it.

#include <gtest/gtest.h>

#include <iostream>

#include "tests/faults/fault_injection.h"
#include "tests/faults/memory_outcome.h"

namespace kelp_test {
namespace {

struct FaultyRun {
    ProcessResult result;
    MemoryReport report;
};

FaultyRun run_with(const Job& job, const MemoryFault& fault) {
    const Sandbox sandbox;
    const auto report = sandbox.extras() / "report";
    FaultyRun run;
    run.result = run_process(with_memory_fault(sandbox.command(job), fault, report));
    run.report = read_memory_report(report);
    return run;
}

// Allocations of a job up to its first page.
long before_the_pages(Job job) {
    job.raster = raster_stream({});
    return run_with(job, {}).report.allocations;
}

class FailingMemory : public testing::TestWithParam<std::tuple<std::size_t, bool>> {};

TEST_P(FailingMemory, EndsAJobSoundly) {
    const FaultJob& fault_job = fault_jobs()[std::get<0>(GetParam())];
    const bool onwards = std::get<1>(GetParam());
    const Job job = fault_job.job();
    const FaultyRun whole = run_with(job, {});
    ASSERT_EQ(whole.result.exit_status, 0) << whole.result.error;
    const MemoryOutcome outcome(fault_job, sent_job(whole.result.output));
    ASSERT_EQ(outcome.fault_in(whole.result, whole.report), "");
    ASSERT_GT(whole.report.allocations, 150);

    // Settings are read alike by all: those of the first job do for them.
    const long first = std::get<0>(GetParam()) == 0 ? 1 : before_the_pages(job) - 10;
    long own = 0;
    long library_crashes = 0;
    for (long number = first; number <= whole.report.allocations; ++number) {
        const FaultyRun run = run_with(job, {number, onwards});
        ASSERT_TRUE(run.report.asked_by.has_value()) << "allocation " << number;
        own += *run.report.asked_by == filter_program().filename() ? 1 : 0;
        library_crashes += run.result.exit_status ? 0 : 1;
        EXPECT_EQ(outcome.fault_in(run.result, run.report), "")
            << "allocation " << number << " by " << *run.report.asked_by << "\n"
            << run.result.error;
    }
    EXPECT_GT(own, 20);
    std::cout << whole.report.allocations - first + 1 << " allocations failed, " << own
              << " of them the filter's own; libcups crashed at " << library_crashes << "\n";
}

INSTANTIATE_TEST_SUITE_P(Of, FailingMemory,
                         testing::Combine(testing::Range<std::size_t>(0, 4), testing::Bool()),
                         [](const testing::TestParamInfo<FailingMemory::ParamType>& of) {
                             return std::string(fault_jobs()[std::get<0>(of.param)].name) +
                                    (std::get<1>(of.param) ? "FromOneOn" : "One");
                         });

}  // namespace
}  // namespace kelp_test
