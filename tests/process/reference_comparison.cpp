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

const std::vector<OptionChoices>& generous_options() {
    static const std::vector<OptionChoices> options{
        {"Resolution", {"203dpi", "300dpi"}},
        {"MediaMethod", {"Direct", "Transfer", "DirectTransfer", "Other"}},
        {"PaperType", {"LabelGaps", "LabelMark", "Continue", "Normal", "MarkNormal", "Other"}},
        {"GapsHeight", {"0", "2", "-1", "0.7", "30", "none"}},
        {"PostAction", {"None", "Normal", "TearOff", "PeelOff", "Cut", "PartialCut", "Other"}},
        {"Occurrence", {"EveryPage", "EndOfJob"}},
        {"Origin", {"Normal", "Rotation180", "Rotation90"}},
        {"HalftoneType",
         {"None", "FloydSteinberg", "Ordered", "Burkes", "Stucki", "JarvisJudiceNinke", "Sierra",
          "StevensonArce", "Tattoo", "Tattoo_X8", "Other"}},
        {"MirrorImage",
         {"false", "true", "yes", "no", "0", "1", "255", "256", "-1", "TRUE", "maybe"}},
        {"NegativeImage", {"false", "true", "no", "Yes", "0", "1", "256", "257", "x"}},
        {"PrintSpeed", {"4", "2.5", "0", "Normal", "12", "-1", "1e-20", "fast", "3ips"}},
        {"Darkness", {"15", "0", "30", "31", "-1", "7.9", "dark"}},
        {"Brightness",
         {"0",    "1",     "-1",         "7",           "-13",         "20",    "-20",
          "25",   "26",    "50",         "-60",         "100",         "101",   "-100",
          "-101", "99999", "2147483647", "-2147483648", "99999999999", "bright"}},
        {"ForceRotation", {"0", "1", "90"}},
        {"RecordPrinterCommands", {"0", "1", "-1", "2"}}};
    return options;
}

const Ppd& generous_ppd() {
    static const Ppd ppd = [] {
        Ppd made = bare_ppd();
        made.page_size("A4", "595", "842").page_size("Small", "36.5", "17.25");
        made.custom_page_size();
        for (const OptionChoices& option : generous_options()) {
            made.option(option.name, option.choices);
        }
        return made.attribute("kelpFilterOutputFile", "rec");
    }();
    return ppd;
}

Job recorded_job(const std::vector<Page>& pages, const std::string& options) {
    Job job = job_of(pages, "RecordPrinterCommands=1 " + options);
    job.ppd = generous_ppd().text();
    return job;
}

}  // namespace kelp_test
