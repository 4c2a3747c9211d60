// The printer commands before every page, by job option.

#include <gtest/gtest.h>

#include <ostream>

#include "tests/process/expected.h"
#include "tests/process/sandbox.h"

namespace kelp_test {
namespace {

using Options = std::vector<std::pair<std::string, std::string>>;

struct Setting {
    Options options;                    // each the only choice of its name in the PPD
    std::vector<std::string> commands;  // between ^LL and ^XZ
    std::vector<std::string> log = {};  // lines about the paper type

    friend void PrintTo(const Setting& setting, std::ostream* out) {
        for (const auto& [name, value] : setting.options) {
            *out << name << "=" << value << " ";
        }
    }
};

class SetupBlockOf : public testing::TestWithParam<Setting> {};

TEST_P(SetupBlockOf, HasTheCommandsOfItsOptions) {
    Ppd ppd = bare_ppd();
    for (const auto& [name, value] : GetParam().options) {
        ppd.option(name, {value});
    }
    Job job = job_of({tiny_page()});
    job.ppd = ppd.text();
    const JobResult result = run_job(job);
    EXPECT_EQ(result.exit_status, 0);
    SetupBlock setup;
    setup.commands = GetParam().commands;
    EXPECT_EQ(result.output, preamble() + setup.text() + Graphic().text());

    std::vector<std::string> log = lines_with(result.error, "DEBUG:Skip the GAP");
    for (const std::string& line : lines_with(result.error, "DEBUG:Unknown paper type")) {
        log.push_back(line);
    }
    EXPECT_EQ(log, GetParam().log);
}

const std::string skipped = "DEBUG:Skip the GAP cmd by Normal paper type";

INSTANTIATE_TEST_SUITE_P(
    PaperType, SetupBlockOf,
    testing::Values(
        Setting{{{"PaperType", "LabelGaps"}, {"GapsHeight", "3"}}, {"^MNY", "^PON", "~SD0"}},
        Setting{{{"PaperType", "LabelMark"}, {"GapsHeight", "3"}}, {"^MNM", "^PON", "~SD0"}},
        Setting{{{"PaperType", "Continue"}, {"GapsHeight", "3"}}, {"^MNN", "^PON", "~SD0"}},
        Setting{{{"PaperType", "Normal"}, {"GapsHeight", "3"}}, {"^PON", "~SD0"}, {skipped}},
        Setting{{{"PaperType", "Normal"}, {"GapsHeight", "0"}}, {"^PON", "~SD0"}, {skipped}},
        Setting{{{"PaperType", "Fanfold"}, {"GapsHeight", "3"}},
                {"^PON", "~SD0"},
                {"DEBUG:Unknown paper type: Fanfold!"}},
        Setting{{{"PaperType", "%s%n"}, {"GapsHeight", "3"}},
                {"^PON", "~SD0"},
                {"DEBUG:Unknown paper type: %s%n!"}},
        Setting{{{"GapsHeight", "3"}}, {"^PON", "~SD0"}, {"DEBUG:Unknown paper type: !"}},
        // A part of the name decides, and the first test that fits; case counts.
        Setting{
            {{"PaperType", "LabelMarkNormal"}, {"GapsHeight", "3"}}, {"^PON", "~SD0"}, {skipped}},
        Setting{{{"PaperType", "ContinueLabelGaps"}, {"GapsHeight", "3"}},
                {"^MNN", "^PON", "~SD0"}},
        Setting{{{"PaperType", "LabelMarkLabelGaps"}, {"GapsHeight", "3"}},
                {"^MNY", "^PON", "~SD0"}},
        Setting{{{"PaperType", "MyLabelMark2"}, {"GapsHeight", "3"}}, {"^MNM", "^PON", "~SD0"}},
        Setting{{{"PaperType", "labelgaps"}, {"GapsHeight", "3"}},
                {"^PON", "~SD0"},
                {"DEBUG:Unknown paper type: labelgaps!"}}));

INSTANTIATE_TEST_SUITE_P(
    NoGap, SetupBlockOf,
    testing::Values(
        Setting{{{"PaperType", "LabelGaps"}, {"GapsHeight", "0"}}, {"^MNN", "^PON", "~SD0"}},
        Setting{{{"PaperType", "LabelMark"}, {"GapsHeight", "-2"}}, {"^MNN", "^PON", "~SD0"}},
        Setting{{{"PaperType", "LabelGaps"}}, {"^MNN", "^PON", "~SD0"}},
        Setting{{{"PaperType", "Fanfold"}, {"GapsHeight", "0"}}, {"^MNN", "^PON", "~SD0"}},
        // Read as whole millimetres: 0.9 is none, 1.5 is one.
        Setting{{{"PaperType", "LabelGaps"}, {"GapsHeight", "0.9"}}, {"^MNN", "^PON", "~SD0"}},
        Setting{{{"PaperType", "LabelGaps"}, {"GapsHeight", "1.5"}}, {"^MNY", "^PON", "~SD0"}},
        Setting{{{"PaperType", "LabelGaps"}, {"GapsHeight", "none"}}, {"^MNN", "^PON", "~SD0"}}));

INSTANTIATE_TEST_SUITE_P(
    Origin, SetupBlockOf,
    testing::Values(Setting{{{"Origin", "Rotation180"}}, {"^MNN", "^POI", "~SD0"}},
                    Setting{{{"Origin", "LabelRotation180Feed"}}, {"^MNN", "^POI", "~SD0"}},
                    Setting{{{"Origin", "Normal"}}, {"^MNN", "^PON", "~SD0"}},
                    Setting{{{"Origin", "Rotation90"}}, {"^MNN", "^PON", "~SD0"}},
                    Setting{{{"Origin", "rotation180"}}, {"^MNN", "^PON", "~SD0"}}));

INSTANTIATE_TEST_SUITE_P(
    PrintSpeed, SetupBlockOf,
    testing::Values(Setting{{{"PrintSpeed", "4"}}, {"^MNN", "^PON", "^PR4", "~SD0"}},
                    Setting{{{"PrintSpeed", "2.5"}}, {"^MNN", "^PON", "^PR2.5", "~SD0"}},
                    Setting{{{"PrintSpeed", "4ips"}}, {"^MNN", "^PON", "^PR4ips", "~SD0"}},
                    Setting{{{"PrintSpeed", "007"}}, {"^MNN", "^PON", "^PR007", "~SD0"}},
                    Setting{{{"PrintSpeed", "1e-14"}}, {"^MNN", "^PON", "^PR1e-14", "~SD0"}},
                    Setting{{{"PrintSpeed", "1e-16"}}, {"^MNN", "^PON", "~SD0"}},
                    Setting{{{"PrintSpeed", "0"}}, {"^MNN", "^PON", "~SD0"}},
                    Setting{{{"PrintSpeed", "-3"}}, {"^MNN", "^PON", "~SD0"}},
                    Setting{{{"PrintSpeed", "Normal"}}, {"^MNN", "^PON", "~SD0"}},
                    Setting{{{"PrintSpeed", "4Normal"}}, {"^MNN", "^PON", "~SD0"}},
                    Setting{{{"PrintSpeed", "fast"}}, {"^MNN", "^PON", "~SD0"}},
                    Setting{{{"PrintSpeed", "4%d"}}, {"^MNN", "^PON", "^PR4%d", "~SD0"}}));

INSTANTIATE_TEST_SUITE_P(Darkness, SetupBlockOf,
                         testing::Values(Setting{{{"Darkness", "-1"}}, {"^MNN", "^PON"}},
                                         Setting{{{"Darkness", "0"}}, {"^MNN", "^PON", "~SD0"}},
                                         Setting{{{"Darkness", "15"}}, {"^MNN", "^PON", "~SD15"}},
                                         Setting{{{"Darkness", "30"}}, {"^MNN", "^PON", "~SD30"}},
                                         Setting{{{"Darkness", "31"}}, {"^MNN", "^PON"}},
                                         Setting{{{"Darkness", "07"}}, {"^MNN", "^PON", "~SD7"}},
                                         Setting{{{"Darkness", "dark"}}, {"^MNN", "^PON", "~SD0"}},
                                         Setting{{}, {"^MNN", "^PON", "~SD0"}},
                                         Setting{{{"PrintSpeed", "4"}, {"Darkness", "31"}},
                                                 {"^MNN", "^PON", "^PR4"}}));

INSTANTIATE_TEST_SUITE_P(
    MediaMethod, SetupBlockOf,
    testing::Values(Setting{{{"MediaMethod", "Direct"}}, {"^MNN", "^PON", "~SD0", "^MTD"}},
                    Setting{{{"MediaMethod", "Transfer"}}, {"^MNN", "^PON", "~SD0", "^MTT"}},
                    Setting{{{"MediaMethod", "ThermalTransfer"}}, {"^MNN", "^PON", "~SD0", "^MTT"}},
                    Setting{{{"MediaMethod", "TransferOrDirect"}},
                            {"^MNN", "^PON", "~SD0", "^MTD"}},
                    Setting{{{"MediaMethod", "direct"}}, {"^MNN", "^PON", "~SD0"}},
                    Setting{{{"MediaMethod", "Ribbon"}}, {"^MNN", "^PON", "~SD0"}}));

INSTANTIATE_TEST_SUITE_P(
    PostAction, SetupBlockOf,
    testing::Values(Setting{{{"PostAction", "Normal"}}, {"^MNN", "^PON", "~SD0"}},
                    Setting{{{"PostAction", "None"}}, {"^MNN", "^PON", "~SD0"}},
                    Setting{{{"PostAction", "TearOff"}}, {"^MNN", "^PON", "~SD0", "^MMT,N"}},
                    Setting{{{"PostAction", "PeelOff"}}, {"^MNN", "^PON", "~SD0", "^MMP,N"}},
                    Setting{{{"PostAction", "Cut"}}, {"^MNN", "^PON", "~SD0", "^MMC,N"}},
                    Setting{{{"PostAction", "PartialCut"}}, {"^MNN", "^PON", "~SD0", "^MMC,N"}},
                    Setting{{{"PostAction", "CutNone"}}, {"^MNN", "^PON", "~SD0"}},
                    Setting{{{"PostAction", "PeelOffTearOff"}}, {"^MNN", "^PON", "~SD0", "^MMT,N"}},
                    Setting{{{"PostAction", "CutPeelOff"}}, {"^MNN", "^PON", "~SD0", "^MMP,N"}},
                    Setting{{{"PostAction", "Rewind"}}, {"^MNN", "^PON", "~SD0"}}));

INSTANTIATE_TEST_SUITE_P(All, SetupBlockOf,
                         testing::Values(Setting{
                             {{"PaperType", "LabelMark"},
                              {"GapsHeight", "2"},
                              {"Origin", "Rotation180"},
                              {"PrintSpeed", "6"},
                              {"Darkness", "22"},
                              {"MediaMethod", "Transfer"},
                              {"PostAction", "TearOff"}},
                             {"^MNM", "^POI", "^PR6", "~SD22", "^MTT", "^MMT,N"}}));

// Only the commands are looked at: blank pages of a real label's size.
TEST(SetupBlockSize, FollowsTheRasterAndNotThePaperOfThePpd) {
    struct Case {
        unsigned width, height;
        SetupBlock setup;
    };
    // Dots × 25.4 / 203 in single precision and back, cut to whole dots: 812 becomes 811.99995 and
    // 1218 becomes 1217.99997, while 400, 240 and 100 come back exactly.
    const std::vector<Case> cases{
        {812, 1218, {.size = "101.6 mm, 152.4 mm", .width = 811, .length = 1217}},
        {400, 240, {.size = "50.0 mm, 30.0 mm", .width = 400, .length = 240}},
        {100, 40, {.size = "12.5 mm, 5.0 mm", .width = 100, .length = 40}},
        {1, 1, {.size = "0.1 mm, 0.1 mm", .width = 1, .length = 1}}};
    for (const Case& size : cases) {
        Page page;
        page.width = size.width;
        page.height = size.height;
        const JobResult result = run_job(job_of({page}));
        const std::string expected = preamble() + size.setup.text();
        EXPECT_EQ(result.output.substr(0, expected.size()), expected) << size.width;
    }
}

TEST(SetupBlockSize, FiftyByThirtyMillimetresLoseTheirFractionsOfADot) {
    // At 254 dpi, ten dots a millimetre: 203 × 50 / 25.4 = 399.6 and 203 × 30 / 25.4 = 239.8.
    Page page;
    page.width = 500;
    page.height = 300;
    page.resolution_x = page.resolution_y = 254;
    const SetupBlock setup{.size = "50.0 mm, 30.0 mm", .width = 399, .length = 239};
    const JobResult result = run_job(job_of({page}));
    const std::string expected = preamble() + setup.text();
    EXPECT_EQ(result.output.substr(0, expected.size()), expected);
}

TEST(SetupBlock, IsRepeatedBeforeEveryPage) {
    Job job = job_of({tiny_page(), tiny_page(), tiny_page()});
    job.ppd = bare_ppd().option("Darkness", {"9"}).text();
    SetupBlock setup;
    setup.commands = {"^MNN", "^PON", "~SD9"};
    const std::string page = setup.text() + Graphic().text();
    EXPECT_EQ(run_job(job).output, preamble() + page + page + page);
}

}  // namespace
}  // namespace kelp_test
