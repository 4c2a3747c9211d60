// The filters start no process and no program, and make no socket, whatever they are told to do:
// under a kernel that kills them for that, their jobs are the same as without.

#include <gtest/gtest.h>

#include <csignal>

#include "tests/process/expected.h"
#include "tests/process/sandbox.h"
#include "tests/support/grey_pages.h"

namespace kelp_test {
namespace {

void confine(Command& command) {
    std::string& preloaded = command.environment["LD_PRELOAD"];
    preloaded += (preloaded.empty() ? "" : ":") + std::string(KELP_TEST_CONFINE_LIBRARY);
}

ProcessResult break_out(const std::string& way, bool confined) {
    Command command;
    command.program = KELP_BREAK_OUT;
    command.arguments = {way};
    if (confined) {
        confine(command);
    }
    return run_process(command);
}

TEST(Confinement, KillsWhoeverLeavesIt) {
    for (const char* way : {"fork", "shell", "exec", "socket", "local socket"}) {
        EXPECT_EQ(break_out(way, false).exit_status, 0) << way;
        EXPECT_EQ(break_out(way, true).signal, SIGSYS) << way;
    }
    EXPECT_EQ(break_out("nothing", true).exit_status, 0);
}

const std::vector<std::string> halftones{"None",   "FloydSteinberg",    "Ordered", "Burkes",
                                         "Stucki", "JarvisJudiceNinke", "Sierra",  "StevensonArce",
                                         "Tattoo", "Tattoo_X8"};

// Every option is set to something that is not its default.
Job job_with_all_options(const std::string& halftone) {
    Page page;
    page.width = 40;
    page.height = 30;
    page.pixels = gradient(40, 30);
    page.size_name = "A4";
    page.copies = 2;
    Job job = job_of({page, page},
                     "PageSize=Custom.100x50 Resolution=203dpi MediaMethod=Transfer "
                     "PaperType=LabelGaps GapsHeight=3 PostAction=PartialCut Occurrence=Job "
                     "Origin=Rotation180 MirrorImage=Yes NegativeImage=Yes PrintSpeed=4 Darkness=9 "
                     "Brightness=7 ForceRotation=1 RecordPrinterCommands=1 HalftoneType=" +
                         halftone);
    job.ppd = bare_ppd()
                  .custom_page_size()
                  .option("Resolution", {"300dpi", "203dpi"})
                  .option("MediaMethod", {"Direct", "Transfer"})
                  .option("PaperType", {"Normal", "LabelGaps"})
                  .option("GapsHeight", {"0", "3"})
                  .option("PostAction", {"None", "PartialCut"})
                  .option("Occurrence", {"Page", "Job"})
                  .option("Origin", {"Normal", "Rotation180"})
                  .option("HalftoneType", halftones)
                  .option("MirrorImage", {"No", "Yes"})
                  .option("NegativeImage", {"No", "Yes"})
                  .option("PrintSpeed", {"Normal", "4"})
                  .option("Darkness", {"15", "9"})
                  .option("Brightness", {"0", "7"})
                  .option("ForceRotation", {"0", "1"})
                  .option("RecordPrinterCommands", {"0", "1"})
                  .attribute("kelpFilterOutputFile", "rec")
                  .text();
    return job;
}

// The same job in two sandboxes, in one of them confined.
void expect_same_confined(const Job& job, const std::filesystem::path& program) {
    const JobResult free = run_job(job, program);
    const Sandbox sandbox;
    Command command = sandbox.command(job, program);
    // The spooler gives every filter a home; without, libcups asks the name service for one.
    command.environment["HOME"] = sandbox.spool();
    confine(command);
    const JobResult confined = sandbox.run(command);
    EXPECT_EQ(confined.exit_status, free.exit_status);
    EXPECT_TRUE(confined.output == free.output);
    EXPECT_EQ(without_addresses(confined.error), without_addresses(free.error));
    EXPECT_TRUE(confined.snapshots == free.snapshots);
    EXPECT_TRUE(confined.recordings == free.recordings);
    EXPECT_EQ(confined.debug_line, free.debug_line);
}

class ConfinedFilter : public testing::TestWithParam<std::string> {};

TEST_P(ConfinedFilter, PrintsAJobOfAllOptionsAsItAlwaysDoes) {
    Job job = job_with_all_options(GetParam());
    const JobResult result = run_job(job);
    ASSERT_EQ(result.exit_status, 0);
    // Each option took effect.
    SetupBlock setup{.size = "5.0 mm, 3.8 mm", .width = 40, .length = 30};
    setup.commands = {"^MNY", "^POI", "^PR4", "~SD9", "^MTT", "^MMC,N"};
    ASSERT_TRUE(result.output.starts_with(preamble() + setup.text() + "^XX\r\n^PQ2\n"))
        << result.output;
    ASSERT_EQ(result.recordings.at("rec-20240305070809.bin"), result.output);
    ASSERT_EQ(result.snapshots.size(), 4U);
    for (const bool by_file : {false, true}) {
        job.by_file = by_file;
        expect_same_confined(job, filter_program());
    }
}

INSTANTIATE_TEST_SUITE_P(Halftone, ConfinedFilter, testing::ValuesIn(halftones));

TEST(Confined, TheFilterFailsAsItAlwaysDoes) {
    Job job = job_of({tiny_page()});
    job.ppd = std::nullopt;
    expect_same_confined(job, filter_program());
    Page deep = tiny_page();
    deep.bits_per_pixel = 1;
    deep.bytes_per_line = 2;
    deep.pixels.clear();
    expect_same_confined(job_of({tiny_page(), deep}), filter_program());
}

TEST(Confined, ThePageFitterFitsAsItAlwaysDoes) {
    Page page;
    page.width = 40;
    page.height = 30;
    page.pixels = gradient(40, 30);
    page.resolution_x = page.resolution_y = 100;  // libcups' own where a description has none
    Job job = job_of({page, page}, "PageSize=Custom.100x50 Anything=1");
    job.ppd = bare_ppd().custom_page_size().text() +
              "*OpenUI *ColorModel/Model: PickOne\n*OrderDependency: 10 AnySetup *ColorModel\n"
              "*DefaultColorModel: Gray\n*ColorModel Gray/Gray: \"<</cupsColorSpace 3"
              "/cupsBitsPerColor 8/cupsColorOrder 0>>setpagedevice\"\n*CloseUI: *ColorModel\n";
    const JobResult result = run_job(job, KELP_FITTER);
    ASSERT_EQ(result.exit_status, 0) << result.error;
    ASSERT_FALSE(result.output.empty());
    for (const bool by_file : {false, true}) {
        job.by_file = by_file;
        expect_same_confined(job, KELP_FITTER);
    }
    job.raster.resize(job.raster.size() - 1);
    ASSERT_EQ(run_job(job, KELP_FITTER).exit_status, 1);
    expect_same_confined(job, KELP_FITTER);
}

}  // namespace
}  // namespace kelp_test
