// The recording file: a copy of everything that is sent to the printer.

#include <gtest/gtest.h>

#include "tests/process/expected.h"
#include "tests/process/sandbox.h"
#include "tests/support/files.h"

namespace kelp_test {
namespace {

using Files = std::map<std::string, std::string>;

Ppd recording_ppd(const std::string& base, const std::string& switched = "1") {
    return bare_ppd()
        .option("RecordPrinterCommands", {switched})
        .attribute("kelpFilterOutputFile", base);
}

Job recording_job(const std::string& base) {
    Job job = job_of({tiny_page(), tiny_page()});
    job.ppd = recording_ppd(base).text();
    return job;
}

const std::string& two_pages() {
    static const std::string output = preamble() + tiny_page_output() + tiny_page_output();
    return output;
}

std::vector<std::string> announced(const JobResult& result) {
    return lines_with(result.error, "DEBUG:Filter data output to: ");
}

void expect_no_recording(const JobResult& result) {
    EXPECT_EQ(result.exit_status, 0);
    EXPECT_EQ(result.output, two_pages());
    EXPECT_EQ(result.recordings, Files{});
    EXPECT_EQ(announced(result), std::vector<std::string>{});
}

TEST(Recording, IsACopyOfTheOutputUnderANameWithTheLocalTime) {
    const Sandbox sandbox;
    const std::string base = sandbox.extras() / "rec";
    const JobResult result = sandbox.run(recording_job(base));
    EXPECT_EQ(result.exit_status, 0);
    EXPECT_EQ(result.output, two_pages());
    EXPECT_EQ(read_directory(sandbox.extras()), (Files{{"rec-20240305070809.bin", two_pages()}}));
    EXPECT_EQ(announced(result), std::vector<std::string>{"DEBUG:Filter data output to: " + base +
                                                          "-20240305070809.bin"});
}

TEST(Recording, IsAnnouncedAfterTheSettings) {
    const std::string log = run_job(recording_job("rec")).error;
    EXPECT_TRUE(contains(log,
                         "DEBUG:settings->pageHeight:152.409607\n"
                         "DEBUG:Filter data output to: rec-20240305070809.bin\n"
                         "DEBUG:pageWidth: 2.001971,"))
        << log;
}

TEST(Recording, PadsAllButTheYear) {
    Job job = recording_job("rec");
    job.time_zone = "UTC";
    job.time = 1766966399;  // 28 December 2025 23:59:59
    EXPECT_EQ(run_job(job).recordings, (Files{{"rec-20251228235959.bin", two_pages()}}));
    job.time = 0;
    EXPECT_EQ(run_job(job).recordings, (Files{{"rec-19700101000000.bin", two_pages()}}));
    job.time = 253402300800;  // 1 January 10000
    EXPECT_EQ(run_job(job).recordings, (Files{{"rec-100000101000000.bin", two_pages()}}));
}

TEST(Recording, WithoutABaseLiesInTheWorkingDirectory) {
    Job job = recording_job("unused");
    job.ppd = bare_ppd().option("RecordPrinterCommands", {"1"}).text();
    const JobResult result = run_job(job);
    EXPECT_EQ(result.recordings, (Files{{"-20240305070809.bin", two_pages()}}));
    EXPECT_EQ(announced(result),
              std::vector<std::string>{"DEBUG:Filter data output to: -20240305070809.bin"});
}

TEST(Recording, DoesNotTakeTheBaseForAFormat) {
    const JobResult result = run_job(recording_job("%s%d%n%%"));
    EXPECT_EQ(result.recordings, (Files{{"%s%d%n%%-20240305070809.bin", two_pages()}}));
}

TEST(Recording, IsMadeForEveryNumberAboveZero) {
    for (const char* on : {"1", "2", "77", "3rd"}) {
        Job job = recording_job("rec");
        job.ppd = recording_ppd("rec", on).text();
        EXPECT_EQ(run_job(job).recordings, (Files{{"rec-20240305070809.bin", two_pages()}})) << on;
    }
}

TEST(Recording, IsNotMadeUnlessAskedFor) {
    Job job = recording_job("rec");
    for (const char* off : {"0", "-1", "false", "true", "off"}) {
        job.ppd = recording_ppd("rec", off).text();
        expect_no_recording(run_job(job));
    }
    job.ppd = bare_ppd().attribute("kelpFilterOutputFile", "rec").text();
    expect_no_recording(run_job(job));
}

TEST(Recording, IsSwitchedOnByTheJobsOption) {
    Job job = job_of({tiny_page(), tiny_page()}, "RecordPrinterCommands=1");
    job.ppd = bare_ppd()
                  .option("RecordPrinterCommands", {"0", "1"})
                  .attribute("kelpFilterOutputFile", "rec")
                  .text();
    EXPECT_EQ(run_job(job).recordings, (Files{{"rec-20240305070809.bin", two_pages()}}));
}

TEST(Recording, ReplacesALongerFileOfTheSameName) {
    const Sandbox sandbox;
    write_file(sandbox.working_directory() / "rec-20240305070809.bin", std::string(100'000, 'x'));
    EXPECT_EQ(sandbox.run(recording_job("rec")).recordings,
              (Files{{"rec-20240305070809.bin", two_pages()}}));
}

TEST(Recording, OfAJobWithoutPagesHasTheLineFeeds) {
    Job job = recording_job("rec");
    job.raster = raster_stream({});
    EXPECT_EQ(run_job(job).recordings, (Files{{"rec-20240305070809.bin", preamble()}}));
}

TEST(Recording, IsMadeBeforeThePaperSizeIsLookedAt) {
    Job job = recording_job("rec");
    job.ppd = Ppd()
                  .option("RecordPrinterCommands", {"1"})
                  .attribute("kelpFilterOutputFile", "rec")
                  .text();
    const JobResult result = run_job(job);
    EXPECT_EQ(result.exit_status, 1);
    EXPECT_EQ(result.recordings, (Files{{"rec-20240305070809.bin", ""}}));
    EXPECT_EQ(announced(result).size(), 1U);
}

TEST(Recording, HoldsWhatWasSentBeforeAnError) {
    Job job = recording_job("rec");
    Page deep = tiny_page();
    deep.bits_per_pixel = 1;
    deep.bytes_per_line = 2;
    deep.pixels.clear();
    job.raster = raster_stream({tiny_page(), tiny_page(), deep});
    const JobResult result = run_job(job);
    EXPECT_EQ(result.exit_status, 1);
    EXPECT_EQ(result.recordings, (Files{{"rec-20240305070809.bin", two_pages()}}));
}

TEST(Recording, ThatCannotBeOpenedIsLeftOutButStillAnnounced) {
    const Sandbox sandbox;
    const std::string base = sandbox.extras() / "no-folder" / "rec";
    const JobResult result = sandbox.run(recording_job(base));
    EXPECT_EQ(result.exit_status, 0);
    EXPECT_EQ(result.output, two_pages());
    EXPECT_EQ(announced(result), std::vector<std::string>{"DEBUG:Filter data output to: " + base +
                                                          "-20240305070809.bin"});
    EXPECT_EQ(lines_with(result.error, "ERROR:"), std::vector<std::string>{});
    EXPECT_FALSE(std::filesystem::exists(sandbox.extras() / "no-folder"));
}

// The field for the name holds 255 characters.
class LongRecordingName : public testing::Test {
  protected:
    // A path below the sandbox of `length` characters. A PPD holds lines of at most 255, so one
    // folder's name has a line end in the middle.
    std::string base(std::size_t length) const {
        const std::string folder =
            sandbox_.extras().string() + "/" + std::string(60, 'd') + "\n" + std::string(60, 'e');
        std::filesystem::create_directories(folder);
        return folder + "/" + std::string(length - folder.size() - 1, 'f');
    }

    void expect_recorded_as(const std::string& base, const std::string& name) {
        const JobResult result = sandbox_.run(recording_job(base));
        EXPECT_EQ(result.exit_status, 0);
        EXPECT_EQ(result.output, two_pages());
        EXPECT_TRUE(contains(result.error, "DEBUG:Filter data output to: " + name + "\nDEBUG:"))
            << result.error;
        const std::filesystem::path path(name);
        EXPECT_EQ(read_directory(path.parent_path()),
                  (Files{{path.filename().string(), two_pages()}}));
    }

    Sandbox sandbox_;
};

TEST_F(LongRecordingName, OfThreeHundredCharactersIsCutToTheField) {
    const std::string long_base = base(300);
    expect_recorded_as(long_base, long_base.substr(0, 255));
}

TEST_F(LongRecordingName, ThatJustFitsIsKept) {
    const std::string fitting = base(255 - 19);
    expect_recorded_as(fitting, fitting + "-20240305070809.bin");
}

TEST_F(LongRecordingName, LosesTheEndOfItsDateAndSuffixFirst) {
    const std::string one_over = base(256 - 19);
    expect_recorded_as(one_over, one_over + "-20240305070809.bi");
    const std::string ten_left = base(245);
    std::filesystem::remove(one_over + "-20240305070809.bi");
    expect_recorded_as(ten_left, ten_left + "-202403050");
}

}  // namespace
}  // namespace kelp_test
