#include "tests/process/reference_comparison.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "tests/process/expected.h"

namespace kelp_test {
namespace {

// Where two texts part, with what stands there.
std::string difference(const std::string& ours, const std::string& reference) {
    const auto [our_end, reference_end] =
        std::mismatch(ours.begin(), ours.end(), reference.begin(), reference.end());
    const auto at = static_cast<std::size_t>(our_end - ours.begin());
    const std::size_t from = at < 60 ? 0 : at - 60;
    return "they part at byte " + std::to_string(at) + " of " + std::to_string(ours.size()) +
           " and " + std::to_string(reference.size()) +
           "\nfilter:    " + testing::PrintToString(ours.substr(from, 120)) +
           "\nreference: " + testing::PrintToString(reference.substr(from, 120));
}

testing::AssertionResult same(const std::string& ours, const std::string& reference) {
    if (ours == reference) {
        return testing::AssertionSuccess();
    }
    return testing::AssertionFailure() << difference(ours, reference);
}

using Files = std::map<std::string, std::string>;

void expect_same_files(const Files& ours, const Files& reference) {
    for (const auto& [name, content] : reference) {
        const auto found = ours.find(name);
        if (found == ours.end()) {
            ADD_FAILURE() << "the filter does not make " << name;
        } else {
            EXPECT_TRUE(same(found->second, content)) << name;
        }
    }
    for (const auto& [name, content] : ours) {
        EXPECT_TRUE(reference.contains(name)) << "the reference does not make " << name;
    }
}

}  // namespace

void expect_like_reference(const Job& job, const std::string& what) {
    SCOPED_TRACE(what);
    const JobResult ours = run_job(job);
    const JobResult reference = run_job(job, KELP_REFERENCE_JOB);
    EXPECT_EQ(ours.exit_status, reference.exit_status);
    EXPECT_TRUE(same(ours.output, reference.output)) << "on standard output";
    EXPECT_TRUE(same(without_addresses(ours.error), without_addresses(reference.error)))
        << "in the log";
    EXPECT_EQ(ours.debug_line, reference.debug_line);
    expect_same_files(ours.recordings, reference.recordings);
    expect_same_files(ours.snapshots, reference.snapshots);
}

Job recorded_job(const std::vector<Page>& pages, const std::string& options) {
    Job job = job_of(pages, "RecordPrinterCommands=1 " + options);
    job.ppd = generous_ppd().text();
    return job;
}

}  // namespace kelp_test
