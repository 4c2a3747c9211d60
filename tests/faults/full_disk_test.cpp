// A file system that really fills up: a small one in the memory, mounted for the job alone.

#include <gtest/gtest.h>
#include <unistd.h>

#include "tests/faults/fault_jobs.h"
#include "tests/process/expected.h"
#include "tests/support/files.h"
#include "tests/support/grey_pages.h"

namespace kelp_test {
namespace {

namespace fs = std::filesystem;
using Files = std::map<std::string, std::string>;

class FullDisk : public testing::Test {
  protected:
    void SetUp() override {
        Command nothing;
        nothing.program = "/bin/true";
        if (run_process(mounted("\"$@\"", nothing, "8k")).exit_status != 0) {
            GTEST_SKIP() << "no file system can be mounted here: it takes root and its rights";
        }
        good_ = run_job(job_);
        ASSERT_EQ(good_.exit_status, 0);
        ASSERT_GT(good_.output.size(), 3 * 4096U);
    }

    // The command in a shell whose /.../small is a file system of this size; `script` runs it as
    // "$@". What is then in there is copied to results().
    Command mounted(const std::string& script, Command command, const std::string& size) const {
        fs::create_directories(small());
        fs::create_directories(results());
        std::vector<std::string> arguments{
            "-m",
            "/bin/sh",
            "-c",
            "mount -t tmpfs -o size=" + size + " none " + small().string() + " || exit 77; cd " +
                small().string() +
                "; preload=$LD_PRELOAD_LATER; { LD_PRELOAD=$preload; export LD_PRELOAD; " + script +
                "; }; status=$?; unset LD_PRELOAD; cp -a . " + results().string() +
                "; exit $status",
            "sh",
            command.program};
        arguments.insert(arguments.end(), command.arguments.begin(), command.arguments.end());
        command.environment["LD_PRELOAD_LATER"] = command.environment["LD_PRELOAD"];
        command.environment.erase("LD_PRELOAD");
        command.environment["PATH"] = "/usr/sbin:/usr/bin:/sbin:/bin";
        command.program = "/usr/bin/unshare";
        command.arguments = arguments;
        command.working_directory = "/";
        return command;
    }
    fs::path small() const { return sandbox_.extras() / "small"; }
    fs::path results() const { return sandbox_.extras() / "results"; }

    static Job large_job() {
        Random random(29);
        Page page;
        page.width = 256;
        page.height = 64;
        page.pixels = noise(page.width, page.height, random);
        Job job = job_of({page, page, page});
        job.ppd = bare_ppd()
                      .option("RecordPrinterCommands", {"1"})
                      .attribute("kelpFilterOutputFile", "rec")
                      .text();
        return job;
    }

    const Sandbox sandbox_;
    const Job job_ = large_job();
    JobResult good_;
};

TEST_F(FullDisk, InTheMiddleOfARecordingLosesNoPrint) {
    const JobResult result = sandbox_.run(mounted("\"$@\"", sandbox_.command(job_), "8k"));
    EXPECT_EQ(result.exit_status, 0) << result.error;
    EXPECT_TRUE(result.output == good_.output);
    const std::string recorded = read_file(results() / recording);
    EXPECT_EQ(recorded.size(), 8192U);
    EXPECT_TRUE(good_.output.starts_with(recorded));
    EXPECT_TRUE(result.snapshots == good_.snapshots);
}

TEST_F(FullDisk, InTheMiddleOfASnapshotLosesNoPrint) {
    // The spool's own folder becomes the small one.
    Command command = sandbox_.command(job_);
    const JobResult result = sandbox_.run(
        mounted("mount --bind . " + sandbox_.spool().string() + " && \"$@\"", command, "24k"));
    EXPECT_EQ(result.exit_status, 0) << result.error;
    EXPECT_TRUE(result.output == good_.output);
    // The recording and the first snapshot are in the same folder and fill it.
    const Files left = read_directory(results());
    std::size_t cut = 0;
    for (const auto& [name, content] : left) {
        const auto whole = good_.snapshots.find(name);
        if (whole != good_.snapshots.end()) {
            EXPECT_TRUE(whole->second.starts_with(content)) << name;
            cut += content.size() < whole->second.size() ? 1 : 0;
        }
    }
    EXPECT_GT(cut, 0U);
}

TEST_F(FullDisk, ForTheOutputIsReported) {
    const JobResult result = sandbox_.run(mounted("\"$@\" >out", sandbox_.command(job_), "8k"));
    EXPECT_EQ(result.exit_status, 1);
    EXPECT_EQ(
        lines_with(result.error, "ERROR:"),
        std::vector<std::string>{"ERROR:Unable to write the printer data to standard output"});
    const std::string out = read_file(results() / "out");
    EXPECT_TRUE(good_.output.starts_with(out));
    EXPECT_LT(out.size(), good_.output.size());
    EXPECT_TRUE(result.snapshots == good_.snapshots);
}

}  // namespace
}  // namespace kelp_test
