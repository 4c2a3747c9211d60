// Reads and writes that are interrupted, short or fail, on each of the filter's files.

#include <gtest/gtest.h>

#include <cerrno>
#include <cstring>

#include "tests/faults/fault_injection.h"
#include "tests/faults/fault_jobs.h"
#include "tests/process/expected.h"
#include "tests/support/files.h"
#include "tests/support/grey_pages.h"

namespace kelp_test {
namespace {

using Files = std::map<std::string, std::string>;

const std::string origin = "origin_2024-3-5_7_8_9_0.bmp";
const std::string dithered = "dithered_2024-3-5_7_8_9_1.bmp";
const std::string debug_line = "xxxxx.log";

struct FaultyResult : JobResult {
    CallReport report;
};

class FailingCalls : public testing::Test {
  protected:
    void SetUp() override {
        if (!calls_can_fail()) {
            GTEST_SKIP() << "calls can be made to fail on x86-64 and aarch64 only";
        }
        good_ = run_job(job_);
        ASSERT_EQ(good_.exit_status, 0) << good_.error;
        // More than one write of each stream.
        ASSERT_GT(good_.output.size(), 3 * 4096U);
        ASSERT_EQ(good_.recordings, (Files{{recording, good_.output}}));
        ASSERT_EQ(good_.snapshots.size(), 6U);
    }

    static FaultyResult run(const Job& job, const CallFault& fault) {
        const Sandbox sandbox;
        const auto report = sandbox.extras() / "report";
        FaultyResult result;
        static_cast<JobResult&>(result) =
            sandbox.run(with_call_fault(sandbox.command(job), fault, report));
        result.report = read_call_report(report);
        return result;
    }
    FaultyResult run(const CallFault& fault) const { return run(job_, fault); }

    void expect_whole(const JobResult& result) const {
        EXPECT_EQ(result.exit_status, 0);
        EXPECT_TRUE(result.output == good_.output);
        EXPECT_TRUE(lines_with(result.error, "ERROR:").empty()) << result.error;
    }
    void expect_whole_with_files(const JobResult& result) const {
        expect_whole(result);
        EXPECT_TRUE(result.recordings == good_.recordings);
        EXPECT_TRUE(result.snapshots == good_.snapshots);
        EXPECT_EQ(result.debug_line, good_.debug_line);
    }
    void expect_reported_loss(const JobResult& result) const {
        EXPECT_EQ(result.exit_status, 1);
        EXPECT_EQ(
            lines_with(result.error, "ERROR:"),
            std::vector<std::string>{"ERROR:Unable to write the printer data to standard output"});
        // All else goes its way.
        EXPECT_TRUE(result.recordings == good_.recordings);
        EXPECT_TRUE(result.snapshots == good_.snapshots);
    }

    // The ends of all pieces of a text, those of the C library's buffers, and what lies about them.
    static std::vector<long> places_in(const std::string& text) {
        std::vector<long> places;
        const auto add = [&](std::size_t place) {
            for (const long at : {-1L, 0L, 1L}) {
                const long moved = static_cast<long>(place) + at;
                if (moved >= 0 && moved < static_cast<long>(text.size())) {
                    places.push_back(moved);
                }
            }
        };
        for (const char* piece : {"SIZE ", "^XX\r\n^PQ", "~DG", "^FO", "^XZ\r\n"}) {
            for (std::size_t at = text.find(piece); at != std::string::npos;
                 at = text.find(piece, at + 1)) {
                add(at);
            }
        }
        for (std::size_t at = 0; at <= text.size(); at += 4096) {
            add(at);
        }
        add(text.size());
        return places;
    }

    // Three pages of more than a buffer each, with a recording.
    static Job large_job() {
        Random random(23);
        Page page;
        page.width = 256;
        page.height = 64;
        page.pixels = noise(page.width, page.height, random);
        Job job = job_of({page, page, page}, "RecordPrinterCommands=1");
        job.ppd = bare_ppd()
                      .option("RecordPrinterCommands", {"0", "1"})
                      .attribute("kelpFilterOutputFile", "rec")
                      .text();
        return job;
    }

    const Job job_ = large_job();
    JobResult good_;
};

TEST_F(FailingCalls, InterruptedReadsLoseNothing) {
    Job by_file = job_;
    by_file.by_file = true;
    for (const auto& [job, file] : {std::pair{job_, "0"}, {by_file, "page.ras"}}) {
        const FaultyResult result =
            run(job, {.call = "read", .file = file, .error = EINTR, .every = true});
        EXPECT_GT(result.report.changed, 5) << file;
        expect_whole_with_files(result);
    }
}

TEST_F(FailingCalls, ShortReadsLoseNothing) {
    for (const char* file : {"0", "printer.ppd"}) {
        for (const long limit : {1, 7}) {
            const FaultyResult result = run({.call = "read", .file = file, .limit = limit});
            EXPECT_GT(result.report.changed, 10) << file;
            expect_whole_with_files(result);
        }
    }
}

// The stream cannot be told from one that ends there: as the end of the raster is, it is no error.
TEST_F(FailingCalls, ReadsThatFailEndTheJobAsACutRasterDoes) {
    const FaultJob& small = fault_jobs()[0];
    const Job job = small.job();
    const auto size = static_cast<long>(job.raster.size());
    for (long behind = 0; behind < size; behind += 61) {
        const FaultyResult result =
            run(job, {.call = "read", .file = "0", .error = EIO, .behind = behind});
        EXPECT_EQ(result.report.bytes, behind);
        EXPECT_GT(result.report.changed, 0);
        Job cut = job;
        cut.raster.resize(static_cast<std::size_t>(behind));
        const JobResult expected = run_job(cut);
        EXPECT_EQ(result.exit_status, expected.exit_status) << behind;
        EXPECT_EQ(result.output, expected.output) << behind;
    }
}

TEST_F(FailingCalls, APpdThatCannotBeReadIsNone) {
    Job none = job_;
    none.ppd.reset();
    const JobResult expected = run_job(none);
    const FaultyResult result =
        run({.call = "read", .file = "printer.ppd", .error = EIO, .behind = 0});
    EXPECT_GT(result.report.changed, 0);
    EXPECT_EQ(result.exit_status, 1);
    EXPECT_EQ(result.output, "");
    EXPECT_EQ(result.error, expected.error);
}

TEST_F(FailingCalls, ShortWritesLoseNothing) {
    for (const char* file :
         {"1", "2", recording.c_str(), origin.c_str(), dithered.c_str(), debug_line.c_str()}) {
        for (const long limit : {1, 7, 4095}) {
            const FaultyResult result = run({.call = "write", .file = file, .limit = limit});
            EXPECT_GT(result.report.calls, 0) << file;
            EXPECT_TRUE(limit > 7 || result.report.changed > 0) << file;
            expect_whole_with_files(result);
        }
    }
}

TEST_F(FailingCalls, OutputThatIsRefusedFromOneByteOnIsCutThereAndReported) {
    for (const long behind : places_in(good_.output)) {
        const FaultyResult result =
            run({.call = "write", .file = "1", .error = ENOSPC, .behind = behind});
        EXPECT_TRUE(result.output == good_.output.substr(0, static_cast<std::size_t>(behind)))
            << behind;
        expect_reported_loss(result);
    }
    expect_whole_with_files(run({.call = "write",
                                 .file = "1",
                                 .error = ENOSPC,
                                 .behind = static_cast<long>(good_.output.size())}));
}

// A stream of the C library gives a buffer up when its write fails once, for whatever reason, and
// goes on behind it. What was sent before stays as it is, and the job does not pass for printed.
TEST_F(FailingCalls, AnOutputWriteThatFailsOnceIsReported) {
    const long calls = run({.call = "write", .file = "1"}).report.calls;
    ASSERT_GE(calls, 4);
    for (const int error : {EINTR, EAGAIN, EIO, ENOSPC, EPIPE}) {
        for (long once = 1; once <= calls; ++once) {
            const FaultyResult result =
                run({.call = "write", .file = "1", .error = error, .once = once});
            EXPECT_EQ(result.report.changed, 1);
            const std::size_t before = static_cast<std::size_t>(once - 1) * 4096;
            EXPECT_TRUE(result.output.starts_with(good_.output.substr(0, before)))
                << error << " " << once;
            EXPECT_LT(result.output.size(), good_.output.size());
            expect_reported_loss(result);
        }
    }
}

TEST_F(FailingCalls, OutputThatIsInterruptedAgainAndAgainIsReported) {
    const FaultyResult result = run({.call = "write", .file = "1", .error = EINTR, .every = true});
    EXPECT_GT(result.report.changed, 1);
    expect_reported_loss(result);
}

// Diagnosis is no printer data: what it loses is lost in silence, and nothing else is.
class FailingDiagnosis : public FailingCalls, public testing::WithParamInterface<const char*> {
  protected:
    std::string file() const { return GetParam(); }

    static std::string* find(Files& files, const std::string& name) {
        const auto found = files.find(name);
        return found == files.end() ? nullptr : &found->second;
    }
    std::string* content(JobResult& result) const {
        if (file() == debug_line) {
            return result.debug_line ? &*result.debug_line : nullptr;
        }
        return find(file() == recording ? result.recordings : result.snapshots, file());
    }

    // Everything is whole but the file, which is this.
    void expect_only(JobResult result, const std::string& what) const {
        JobResult good = good_;
        std::string* const have = content(result);
        ASSERT_NE(have, nullptr) << file();
        EXPECT_TRUE(*have == what) << file() << " has " << have->size() << " bytes";
        *have = *content(good);
        expect_whole_with_files(result);
    }
};

TEST_P(FailingDiagnosis, IsCutWhereTheDiskIsFull) {
    JobResult good = good_;
    const std::string whole = *content(good);
    std::vector<long> places = places_in(whole);
    if (whole.size() < 100) {
        for (long at = 0; at < static_cast<long>(whole.size()); ++at) {
            places.push_back(at);
        }
    }
    for (const long behind : places) {
        // The debug line is written once a page, to a file of its own each time.
        const long before = file() == debug_line ? 2 * static_cast<long>(whole.size()) : 0;
        const FaultyResult result =
            run({.call = "write", .file = file(), .error = ENOSPC, .behind = before + behind});
        EXPECT_GT(result.report.changed, 0);
        expect_only(result, whole.substr(0, static_cast<std::size_t>(behind)));
    }
}

TEST_P(FailingDiagnosis, OfNoSortEndsTheJob) {
    for (const int error : {EINTR, EIO, EDQUOT}) {
        const FaultyResult result =
            run({.call = "write", .file = file(), .error = error, .behind = 0});
        EXPECT_GT(result.report.changed, 0);
        expect_only(result, "");
        const FaultyResult once = run({.call = "write", .file = file(), .error = error, .once = 1});
        EXPECT_EQ(once.report.changed, 1);
        expect_whole(once);
    }
}

INSTANTIATE_TEST_SUITE_P(Of, FailingDiagnosis,
                         testing::Values("rec-20240305070809.bin", "origin_2024-3-5_7_8_9_0.bmp",
                                         "dithered_2024-3-5_7_8_9_1.bmp", "xxxxx.log"),
                         [](const testing::TestParamInfo<const char*>& of) {
                             return std::string(of.param, std::strcspn(of.param, "-_."));
                         });

TEST_F(FailingCalls, ALogThatCannotBeWrittenIsDoneWithout) {
    for (const int error : {EINTR, EIO, ENOSPC, EPIPE}) {
        for (const CallFault& fault :
             {CallFault{.call = "write", .file = "2", .error = error, .behind = 0},
              CallFault{.call = "write", .file = "2", .error = error, .behind = 500},
              CallFault{.call = "write", .file = "2", .error = error, .every = true}}) {
            const FaultyResult result = run(fault);
            EXPECT_GT(result.report.changed, 0);
            expect_whole_with_files(result);
        }
    }
}

}  // namespace
}  // namespace kelp_test
