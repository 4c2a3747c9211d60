// Output that is lost, and standard descriptors that are closed when the filter starts.

#include <gtest/gtest.h>

#include "tests/process/expected.h"
#include "tests/process/sandbox.h"
#include "tests/support/files.h"
#include "tests/support/grey_pages.h"

namespace kelp_test {
namespace {

using Files = std::map<std::string, std::string>;

// More output than a stream's buffer and a pipe hold: rows of alternating dots, 400 characters
// each.
Page large_page() {
    Page page;
    page.width = 1600;
    page.height = 800;
    Random random(1);
    page.pixels = noise(page.width, page.height, random);
    return page;
}

Job recording_job(const std::vector<Page>& pages) {
    Job job = job_of(pages);
    job.ppd = bare_ppd()
                  .option("RecordPrinterCommands", {"1"})
                  .attribute("kelpFilterOutputFile", "rec")
                  .text();
    return job;
}

class LostOutput : public testing::Test {
  protected:
    // Status 1, one error line, and the recording holds the job once.
    void expect_reported(Command command, const std::vector<Page>& pages) const {
        const JobResult good = run_job(recording_job(pages));
        ASSERT_EQ(good.exit_status, 0);
        for (const bool ignore_signal : {false, true}) {
            command.ignore_broken_pipe_signal = ignore_signal;
            const JobResult result = sandbox_.run(command);
            EXPECT_EQ(result.exit_status, 1);
            EXPECT_EQ(lines_with(result.error, "ERROR:").size(), 1U) << result.error;
            EXPECT_EQ(result.recordings, (Files{{"rec-20240305070809.bin", good.output}}));
            EXPECT_EQ(result.snapshots.size(), 2 * pages.size());
        }
    }

    void expect_reported(const StandardOutput& output) const {
        for (const std::vector<Page>& pages :
             {std::vector<Page>{}, {tiny_page()}, {tiny_page(), tiny_page()}, {large_page()}}) {
            for (const bool by_file : {false, true}) {
                Job job = recording_job(pages);
                job.by_file = by_file;
                Command command = sandbox_.command(job);
                command.output = output;
                expect_reported(command, pages);
                std::filesystem::remove_all(sandbox_.spool());
                std::filesystem::create_directories(sandbox_.spool());
            }
        }
    }

    Sandbox sandbox_;
};

TEST_F(LostOutput, ToAClosedDescriptorIsAnError) {
    expect_reported(Closed{});
}

TEST_F(LostOutput, ToAFullDiskIsAnError) {
    expect_reported(ToFile{"/dev/full"});
}

TEST_F(LostOutput, ToABrokenPipeIsAnErrorAndNotASignal) {
    expect_reported(BrokenPipe{});
}

TEST_F(LostOutput, WithoutARecordingIsAnErrorAsWell) {
    for (const StandardOutput& output :
         {StandardOutput{Closed{}}, {ToFile{"/dev/full"}}, {BrokenPipe{}}}) {
        Command command = sandbox_.command(job_of({tiny_page()}));
        command.output = output;
        const JobResult result = sandbox_.run(command);
        EXPECT_EQ(result.exit_status, 1);
        EXPECT_EQ(lines_with(result.error, "ERROR:").size(), 1U) << result.error;
    }
}

TEST_F(LostOutput, IsNoMatterWhenThereWasNone) {
    // Usage and paper size errors keep their own words.
    Command command = sandbox_.command(job_of({tiny_page()}));
    command.output = Closed{};
    command.environment.erase("PPD");
    const JobResult result = sandbox_.run(command);
    EXPECT_EQ(result.exit_status, 1);
    EXPECT_EQ(lines_with(result.error, "ERROR:"),
              std::vector<std::string>{
                  "ERROR: Paper size must not less than 1.0 : (0.000000, 0.000000)"});
}

TEST(Output, GoesToAFileAsItGoesToAPipe) {
    const Sandbox sandbox;
    Command command = sandbox.command(job_of({large_page()}));
    const std::string piped = sandbox.run(command).output;
    command.output = ToFile{sandbox.extras() / "out"};
    EXPECT_EQ(sandbox.run(command).exit_status, 0);
    EXPECT_GT(piped.size(), 200'000U);
    EXPECT_EQ(read_file(sandbox.extras() / "out"), piped);
}

// No file that the filter opens may take the place of a closed standard descriptor: its log or its
// printer data would end up in that file.
class ClosedDescriptor : public testing::TestWithParam<bool> {
  protected:
    Command command() const {
        Job job = recording_job({tiny_page()});
        job.by_file = GetParam();
        return sandbox_.command(job);
    }

    static std::string output() { return preamble() + tiny_page_output(); }

    // Every file holds what it holds when all descriptors are open.
    void expect_files_intact(const JobResult& result) const {
        const Page page = tiny_page();
        EXPECT_EQ(result.recordings, (Files{{"rec-20240305070809.bin", output()}}));
        EXPECT_EQ(result.debug_line,
                  "cupsWidth:16, cupsHeight:2, cupsBytesPerLine:16, cupsBitsPerPixel:8\n");
        ASSERT_EQ(result.snapshots.size(), 2U);
        EXPECT_EQ(result.snapshots.at("origin_2024-3-5_7_8_9_0.bmp"), bitmap(16, 2, page.pixels));
        EXPECT_EQ(result.snapshots.at("dithered_2024-3-5_7_8_9_1.bmp").size(), 1078U + 32);
    }

    Sandbox sandbox_;
};

TEST_P(ClosedDescriptor, StandardErrorIsDoneWithout) {
    Command without_log = command();
    without_log.error = Closed{};
    const JobResult result = sandbox_.run(without_log);
    EXPECT_EQ(result.exit_status, 0);
    EXPECT_EQ(result.output, output());
    expect_files_intact(result);
}

TEST_P(ClosedDescriptor, StandardOutputIsTakenByNoFile) {
    Command without_output = command();
    without_output.output = Closed{};
    const JobResult result = sandbox_.run(without_output);
    EXPECT_EQ(result.exit_status, 1);
    expect_files_intact(result);
}

TEST_P(ClosedDescriptor, OutputAndErrorTogetherAreTakenByNoFile) {
    Command deaf = command();
    deaf.output = Closed{};
    deaf.error = Closed{};
    const JobResult result = sandbox_.run(deaf);
    EXPECT_EQ(result.exit_status, 1);
    expect_files_intact(result);
}

INSTANTIATE_TEST_SUITE_P(Input, ClosedDescriptor, testing::Bool(),
                         [](const testing::TestParamInfo<bool>& of) {
                             return of.param ? "File" : "Pipe";
                         });

// Every file of the sandbox by its path.
Files tree(const std::filesystem::path& folder) {
    Files files;
    for (const auto& file : std::filesystem::recursive_directory_iterator(folder)) {
        if (file.is_regular_file()) {
            files[file.path().lexically_relative(folder)] = read_file(file.path());
        }
    }
    return files;
}

// The job leaves the very files that it leaves with all descriptors open.
void expect_files_of_an_open_job(const Job& job, bool input, bool output, bool error) {
    const Sandbox sandbox;
    const Sandbox open_sandbox;
    const JobResult good = open_sandbox.run(job);
    Command command = sandbox.command(job);
    if (!input) {
        command.input = Closed{};
    }
    if (!output) {
        command.output = Closed{};
    }
    if (!error) {
        command.error = Closed{};
    }
    const JobResult result = sandbox.run(command);
    EXPECT_EQ(result.exit_status, output ? 0 : 1);
    EXPECT_EQ(result.output, output ? good.output : "");
    // The one folder that both the programs and the tests write into.
    const auto root = [](const Sandbox& of) { return of.extras().parent_path(); };
    EXPECT_EQ(tree(root(sandbox)), tree(root(open_sandbox)));
}

TEST(ClosedDescriptors, InEveryCombinationAreTakenByNoFile) {
    for (const bool input : {false, true}) {
        for (const bool output : {false, true}) {
            for (const bool error : {false, true}) {
                SCOPED_TRACE(testing::Message() << input << output << error);
                Job job = recording_job({tiny_page(), tiny_page()});
                job.by_file = true;
                expect_files_of_an_open_job(job, input, output, error);
                // Without a file, closed input is a job without pages.
                job.by_file = false;
                if (!input) {
                    job.raster.clear();
                }
                expect_files_of_an_open_job(job, input, output, error);
            }
        }
    }
}

TEST(ClosedInput, IsNotMissedWhenThereIsAFile) {
    const Sandbox sandbox;
    Job job = recording_job({tiny_page(), tiny_page()});
    job.by_file = true;
    Command command = sandbox.command(job);
    command.input = Closed{};
    const JobResult result = sandbox.run(command);
    EXPECT_EQ(result.exit_status, 0);
    EXPECT_EQ(result.output, preamble() + tiny_page_output() + tiny_page_output());
    EXPECT_EQ(result.recordings, (Files{{"rec-20240305070809.bin", result.output}}));
}

TEST(ClosedInput, WithoutAFileIsAJobWithoutPages) {
    const Sandbox sandbox;
    Command command = sandbox.command(recording_job({tiny_page()}));
    command.input = Closed{};
    const JobResult result = sandbox.run(command);
    EXPECT_EQ(result.exit_status, 0);
    EXPECT_EQ(result.output, preamble());
    EXPECT_EQ(result.recordings, (Files{{"rec-20240305070809.bin", preamble()}}));
}

TEST(ClosedInput, OutputAndErrorTogetherLeaveTheFilesIntact) {
    const Sandbox sandbox;
    Job job = recording_job({tiny_page()});
    job.by_file = true;
    Command command = sandbox.command(job);
    command.input = Closed{};
    command.output = Closed{};
    command.error = Closed{};
    const JobResult result = sandbox.run(command);
    EXPECT_EQ(result.exit_status, 1);
    EXPECT_EQ(result.recordings,
              (Files{{"rec-20240305070809.bin", preamble() + tiny_page_output()}}));
}

}  // namespace
}  // namespace kelp_test
