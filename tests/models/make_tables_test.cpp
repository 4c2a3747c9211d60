// What the program that makes the tables does not understand.

#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <vector>

#include "tests/support/files.h"
#include "tests/support/run_process.h"
#include "tests/support/temp_dir.h"

namespace kelp_test {
namespace {

class MakeTables : public testing::Test {
  protected:
    ProcessResult run(const std::vector<std::filesystem::path>& ppds) const {
        Command command;
        command.program = KELP_MAKE_TABLES;
        command.arguments = {out_};
        command.arguments.insert(command.arguments.end(), ppds.begin(), ppds.end());
        return run_process(command);
    }
    // The tables of the changed PPD: the reason why there are none, or nothing.
    std::string refusal(const std::string& from, const std::string& to) const {
        std::string text = read_file(label_);
        const std::size_t found = text.find(from);
        EXPECT_NE(found, std::string::npos) << from;
        text.replace(found, from.size(), to);
        write_file(directory_ / "changed.ppd", text);
        write_file(out_, "as it was");
        const ProcessResult result = run({directory_ / "changed.ppd"});
        if (result.exit_status == 0) {
            return "";
        }
        EXPECT_EQ(result.exit_status, 1) << result.ending();
        EXPECT_EQ(read_file(out_), "as it was");
        EXPECT_EQ(read_directory(directory_.path()).size(), 2U);
        const std::string start =
            "kelp_make_tables: " + (directory_ / "changed.ppd").string() + ": ";
        EXPECT_EQ(result.error.rfind(start, 0), 0U) << result.error;
        return result.error.substr(start.size());
    }

    const TempDir directory_;
    const std::string out_ = (directory_ / "tables.cpp").string();
    const std::string label_ = KELP_PPD_DIR "/kelp-label-2inch.ppd";
};

TEST_F(MakeTables, PrintsASource) {
    const ProcessResult result = run({label_});
    EXPECT_EQ(result.exit_status, 0) << result.error;
    EXPECT_EQ(result.error, "");
    EXPECT_NE(read_file(out_).find("{\"kelp-label-2inch\", \"Kelp Label Printer 2 inch\","),
              std::string::npos);
    EXPECT_EQ(refusal("\n*FileVersion:", "\n*FileVersion:"), "") << "nothing is changed";
}

TEST_F(MakeTables, EscapesWhatALiteralCannotHold) {
    EXPECT_EQ(refusal("Upside down", "Up\\side \"down\""), "");
    EXPECT_NE(read_file(out_).find(R"("Up\\side \"down\"")"), std::string::npos);
}

TEST_F(MakeTables, RefusesWhatTheTablesHaveNoPlaceFor) {
    EXPECT_EQ(refusal("*OpenUI *PrintSpeed/Print speed: PickOne",
                      "*OpenUI *PrintSpeed/Print speed: PickMany"),
              "PrintSpeed takes several choices at once\n");
    EXPECT_EQ(refusal("*CloseUI: *PrintSpeed",
                      "*CustomPrintSpeed True: \"\"\n*ParamCustomPrintSpeed Inches: 1 int 1 9\n"
                      "*CloseUI: *PrintSpeed"),
              "PrintSpeed takes custom values\n");
    EXPECT_EQ(refusal("*OpenUI *Origin/",
                      "*cupsUIConstraints peel: \"*PostAction PeelOff *PaperType Continue\"\n"
                      "*OpenUI *Origin/"),
              "cupsUIConstraints are not understood\n");
    EXPECT_EQ(refusal("*HWMargins: 0 0 0 0", "*HWMargins: 0 9 0 0"), "custom sizes have margins\n");
    for (const char* area : {"9 0 162 91", "0 9 162 91", "0 0 161 91", "0 0 162 90"}) {
        const std::string start = "*ImageableArea 57x32mm/57 x 32 mm: \"";
        EXPECT_EQ(refusal(start + "0 0 162 91", start + area), "57x32mm has margins\n") << area;
    }
    EXPECT_EQ(refusal("*Resolution 203dpi/",
                      "*Resolution 300dpi/300: \"<</HWResolution[300 300]>>setpagedevice\"\n"
                      "*Resolution 203dpi/"),
              "not one choice of Resolution\n");
}

TEST_F(MakeTables, RefusesWhatContradictsItself) {
    EXPECT_EQ(refusal("*DefaultPrintSpeed: Normal", "*DefaultPrintSpeed: Fast"),
              "the default of PrintSpeed is none of its choices\n");
    EXPECT_EQ(refusal("*DefaultPageSize: 2x1in", "*DefaultPageSize: 3x1in"),
              "the default of PageSize is none of its sizes\n");
    EXPECT_EQ(refusal("*UIConstraints: *GapsHeight 0 *PaperType LabelGaps",
                      "*UIConstraints: *GapsHeight 0 *PaperType Gaps"),
              "UIConstraints name \"PaperType Gaps\", which is no choice of an option\n");
    EXPECT_EQ(refusal("*UIConstraints: *GapsHeight 0 *PaperType LabelGaps",
                      "*UIConstraints: *GapsHeight 0 *PaperType"),
              "UIConstraints name \"PaperType \", which is no choice of an option\n");
    EXPECT_EQ(refusal("HWResolution[203 203]", "HWResolution[203 300]"),
              "the Resolution 203dpi is not named after what it sets\n");
}

TEST_F(MakeTables, RefusesWhatIsMissingOrNoPrintersThatTheFilterKnows) {
    EXPECT_EQ(refusal("*1284DeviceID", "*1285DeviceID"), "no 1284DeviceID\n");
    EXPECT_EQ(refusal("*cupsLanguages: \"en de", "*cupsLanguages: \"en it de"),
              "nothing is translated to it\n");
    EXPECT_EQ(refusal("*PPD-Adobe", "*PPD"), "no PPD\n");
    EXPECT_EQ(refusal("*PaperDimension 57x32mm/57 x 32 mm: \"162 91\"",
                      "*PaperDimension 57x32mm/57 x 32 mm: \"162 91.5\"")
                  .substr(0, 8),
              "57x32mm ");
    EXPECT_NE(refusal("cupsColorSpace 3", "cupsColorSpace 1").find("only 8-bit black"),
              std::string::npos);
}

TEST_F(MakeTables, RefusesModelsOfOtherLanguages) {
    std::string text = read_file(label_);
    const std::string languages = "*cupsLanguages: \"en de es fr ja zh_CN\"";
    ASSERT_NE(text.find(languages), std::string::npos);
    text.replace(text.find(languages), languages.size(), "*cupsLanguages: \"en de es fr ja\"");
    write_file(directory_ / "changed.ppd", text);
    const ProcessResult result = run({label_, directory_ / "changed.ppd"});
    EXPECT_EQ(result.exit_status, 1);
    EXPECT_EQ(result.error,
              "kelp_make_tables: changed has other languages than kelp-label-2inch\n");
    EXPECT_FALSE(std::filesystem::exists(out_));
}

TEST_F(MakeTables, WantsAPpdAndAPlaceToWriteTo) {
    EXPECT_EQ(run({}).exit_status, 1);
    EXPECT_EQ(run({directory_ / "none.ppd"}).exit_status, 1);
    std::filesystem::create_directory(out_);
    const ProcessResult result = run({label_});
    EXPECT_EQ(result.exit_status, 1);
    EXPECT_EQ(result.error, "kelp_make_tables: " + out_ + " cannot be written\n");
    EXPECT_TRUE(std::filesystem::is_empty(out_));
    EXPECT_TRUE(read_directory(directory_.path()).empty()) << "no part of it either";
}

}  // namespace
}  // namespace kelp_test
