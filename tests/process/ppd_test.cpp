// The printer description and the job's options: what is missing, broken or too long.

#include <gtest/gtest.h>

#include <algorithm>

#include "tests/process/expected.h"
#include "tests/process/sandbox.h"
#include "tests/support/files.h"

namespace kelp_test {
namespace {

constexpr const char* no_paper_size =
    "ERROR: Paper size must not less than 1.0 : (0.000000, 0.000000)\n";

Job tiny_job(std::optional<std::string> ppd, const std::string& options = {}) {
    Job job = job_of({tiny_page()}, options);
    job.ppd = std::move(ppd);
    return job;
}

std::vector<std::string> setting(const JobResult& result, const std::string& name) {
    return lines_with(result.error, "DEBUG:settings->" + name + ":");
}

// A job that ends before anything is printed, with the settings' defaults in its log.
void expect_no_paper(const JobResult& result) {
    EXPECT_EQ(result.exit_status, 1);
    EXPECT_EQ(result.output, "");
    EXPECT_TRUE(result.error.ends_with(std::string("\n") + no_paper_size)) << result.error;
    EXPECT_EQ(lines_with(result.error, "ERROR:").size(), 1U);
    EXPECT_EQ(setting(result, "PageSize"), std::vector<std::string>{"DEBUG:settings->PageSize:"});
    EXPECT_EQ(setting(result, "pageWidth"),
              std::vector<std::string>{"DEBUG:settings->pageWidth:0.000000"});
    EXPECT_TRUE(result.snapshots.empty());
}

TEST(PrinterDescription, WithoutAVariableThereIsNoPaperSize) {
    expect_no_paper(run_job(tiny_job(std::nullopt)));
}

TEST(PrinterDescription, AMissingFileGivesNoPaperSize) {
    const Sandbox sandbox;
    Command command = sandbox.command(tiny_job(bare_ppd().text()));
    command.environment["PPD"] = sandbox.extras() / "missing.ppd";
    expect_no_paper(sandbox.run(command));
}

TEST(PrinterDescription, AFileThatIsNoneGivesNoPaperSize) {
    expect_no_paper(run_job(tiny_job("this is not a printer description\n")));
    expect_no_paper(run_job(tiny_job("")));
    expect_no_paper(run_job(tiny_job(raster_stream({tiny_page()}))));
    expect_no_paper(run_job(tiny_job(std::string(100'000, '*'))));
}

TEST(PrinterDescription, ANumberBeyond32BitsKeepsItsLowBits) {
    // 2^32 + 15 and 2^32: darkness 15, and no mirroring.
    Ppd ppd = bare_ppd();
    ppd.option("Darkness", {"4294967311"}).option("MirrorImage", {"4294967296"});
    const JobResult result = run_job(tiny_job(ppd.text()));
    EXPECT_EQ(setting(result, "Darkness"), std::vector<std::string>{"DEBUG:settings->Darkness:15"});
    EXPECT_EQ(setting(result, "MirrorImage"),
              std::vector<std::string>{"DEBUG:settings->MirrorImage:0"});
    EXPECT_TRUE(contains(result.output, "~SD15\r\n"));
}

TEST(PrinterDescription, ADirectoryGivesNoPaperSize) {
    const Sandbox sandbox;
    Command command = sandbox.command(tiny_job(bare_ppd().text()));
    command.environment["PPD"] = sandbox.extras();
    expect_no_paper(sandbox.run(command));
}

TEST(PrinterDescription, WithoutAPageSizeNothingIsPrinted) {
    expect_no_paper(run_job(tiny_job(Ppd().option("Darkness", {"15"}).text())));
}

TEST(PrinterDescription, APageSizeOfNoWidthOrNoLengthIsRefused) {
    const JobResult narrow = run_job(tiny_job(Ppd().page_size("line", "0", "432").text()));
    EXPECT_EQ(narrow.exit_status, 1);
    EXPECT_EQ(narrow.output, "");
    // 432 points × 0.3528 as a single-precision number.
    EXPECT_EQ(lines_with(narrow.error, "ERROR:"),
              std::vector<std::string>{
                  "ERROR: Paper size must not less than 1.0 : (0.000000, 152.409607)"});
    const JobResult flat = run_job(tiny_job(Ppd().page_size("line", "288", "0").text()));
    EXPECT_EQ(flat.exit_status, 1);
    EXPECT_EQ(lines_with(flat.error, "ERROR:"),
              std::vector<std::string>{
                  "ERROR: Paper size must not less than 1.0 : (101.606400, 0.000000)"});
}

TEST(PrinterDescription, ASizeFarBelowOneMillimetreIsEnough) {
    // 0.01 points are 0.003528 mm: less than the 1.0 of the message, more than the limit's 1e-6.
    const JobResult result = run_job(tiny_job(Ppd().page_size("dot", "0.01", "0.01").text()));
    EXPECT_EQ(result.exit_status, 0);
    EXPECT_EQ(result.output, preamble() + tiny_page_output());
}

TEST(PrinterDescription, TheChosenPageSizeIsLoggedInPointsAndMillimetres) {
    Ppd ppd = bare_ppd();
    ppd.page_size("Small", "100", "50");
    const JobResult result = run_job(tiny_job(ppd.text(), "PageSize=Small"));
    // 100 × 0.3528 = 35.28 and 50 × 0.3528 = 17.64, both a hair off in single precision.
    EXPECT_TRUE(contains(result.error,
                         "DEBUG:PageSizeName: Small\n"
                         "DEBUG:Custom Size: (100.000000,50.000000,0.000000,0.000000,100.000000,"
                         "50.000000)\n"
                         "DEBUG:Set page size: width 35.279999 mm, height 17.639999 mm\n"))
        << result.error;
    EXPECT_EQ(setting(result, "PageSize"),
              std::vector<std::string>{"DEBUG:settings->PageSize:Small"});
}

TEST(PrinterDescription, ACustomPageSizeIsTakenFromTheOption) {
    Ppd ppd = bare_ppd();
    ppd.custom_page_size();
    const JobResult result = run_job(tiny_job(ppd.text(), "PageSize=Custom.100x50"));
    EXPECT_EQ(result.exit_status, 0);
    EXPECT_TRUE(contains(result.error,
                         "DEBUG:PageSizeName: Custom\nDEBUG:Custom Size: (100.000000,"
                         "50.000000,"))
        << result.error;
    EXPECT_TRUE(contains(result.error, "DEBUG:settings->pageWidth:35.279999\n"));
}

Ppd ppd_with_paper_types(const std::vector<std::string>& types) {
    return bare_ppd().option("PaperType", types).option("GapsHeight", {"3"});
}

TEST(Options, UnknownOnesAndUnknownChoicesLeaveTheDefaults) {
    const std::string ppd = ppd_with_paper_types({"LabelMark", "LabelGaps"}).text();
    const JobResult plain = run_job(tiny_job(ppd));
    SetupBlock setup;
    setup.commands = {"^MNM", "^PON", "~SD0"};
    ASSERT_EQ(plain.output, preamble() + setup.text() + Graphic().text());
    for (const char* options :
         {"NoSuchOption=3", "PaperType=NoSuchType", "PaperType=LabelGap NoSuchOption",
          "PaperType=", "=", "PaperType", "%s%n=%s", "'unclosed quote", "{a=1", "\\"}) {
        const JobResult result = run_job(tiny_job(ppd, options));
        EXPECT_EQ(result.exit_status, 0) << options;
        EXPECT_EQ(result.output, plain.output) << options;
    }
}

TEST(Options, InAnotherCaseAreReadAsThePpdSpellsThem) {
    const std::string ppd = ppd_with_paper_types({"LabelMark", "LabelGaps"}).text();
    const JobResult result = run_job(tiny_job(ppd, "papertype=labelGAPS"));
    EXPECT_EQ(setting(result, "PaperType"),
              std::vector<std::string>{"DEBUG:settings->PaperType:LabelGaps"});
}

TEST(Options, TheLastOfSeveralValuesCounts) {
    const std::string ppd = ppd_with_paper_types({"LabelMark", "LabelGaps", "Continue"}).text();
    const JobResult result = run_job(tiny_job(ppd, "PaperType=LabelGaps PaperType=Continue"));
    EXPECT_EQ(setting(result, "PaperType"),
              std::vector<std::string>{"DEBUG:settings->PaperType:Continue"});
}

TEST(Options, AChoiceOfFortyCharactersIsKeptWhole) {
    const std::string forty = "LabelGaps_" + std::string(30, 'x');
    const JobResult result =
        run_job(tiny_job(ppd_with_paper_types({"LabelMark", forty}).text(), "PaperType=" + forty));
    EXPECT_EQ(result.exit_status, 0);
    EXPECT_EQ(setting(result, "PaperType"),
              std::vector<std::string>{"DEBUG:settings->PaperType:" + forty});
    SetupBlock setup;
    setup.commands = {"^MNY", "^PON", "~SD0"};
    EXPECT_EQ(result.output, preamble() + setup.text() + Graphic().text());
}

TEST(Options, OverLongChoicesOfAJobAreNoChoices) {
    // libcups holds choices of up to 40 characters, so no longer one can ever be marked.
    const std::string ppd = ppd_with_paper_types({"LabelMark", "LabelGaps"}).text();
    for (const std::size_t length : {41U, 45U, 300U, 100'000U}) {
        const std::string type = "LabelGaps" + std::string(length - 9, 'x');
        const JobResult result = run_job(tiny_job(ppd, "PaperType=" + type));
        EXPECT_EQ(result.exit_status, 0) << length;
        EXPECT_EQ(setting(result, "PaperType"),
                  std::vector<std::string>{"DEBUG:settings->PaperType:LabelMark"})
            << length;
    }
}

TEST(Options, OverLongChoicesOfAPrinterDescriptionMakeItNone) {
    // libcups refuses the whole file.
    const std::string type = "LabelGaps" + std::string(36, 'x');
    expect_no_paper(run_job(tiny_job(ppd_with_paper_types({"LabelMark", type}).text())));
}

TEST(Options, OverLongOptionNamesAreIgnored) {
    const JobResult result = run_job(tiny_job(bare_ppd().text(), std::string(100'000, 'x') + "=1"));
    EXPECT_EQ(result.exit_status, 0);
    EXPECT_EQ(result.output, preamble() + tiny_page_output());
}

}  // namespace
}  // namespace kelp_test
