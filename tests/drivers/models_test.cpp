// What every model's PPD promises.

#include <algorithm>
#include <cstdlib>
#include <utility>

#include "tests/drivers/ppds.h"

namespace kelp_test {
namespace {

class EveryModel : public testing::TestWithParam<std::string> {
  protected:
    OpenPpd ppd_ = open_ppd(GetParam());
};

INSTANTIATE_TEST_SUITE_P(Drivers, EveryModel, testing::ValuesIn(every_model()), test_name);

TEST_P(EveryModel, SendsItsFittedRasterToTheFilter) {
    ASSERT_EQ(ppd_->num_filters, 1);
    EXPECT_STREQ(ppd_->filters[0], "application/vnd.kelp-raster 0 rastertokelp");
    EXPECT_EQ(attribute(ppd_.get(), "cupsSNMPSupplies"), "False");
}

TEST_P(EveryModel, LeavesCopiesToThePrinter) {
    EXPECT_EQ(ppd_->manual_copies, 0);
    EXPECT_EQ(attribute(ppd_.get(), "cupsManualCopies"), "False");
}

TEST_P(EveryModel, IsMadeByKelp) {
    EXPECT_STREQ(ppd_->manufacturer, "Kelp");
    EXPECT_EQ(std::string(ppd_->nickname).rfind("Kelp ", 0), 0U) << ppd_->nickname;
}

// The nickname without maker and version is the model in the device's own answer.
TEST_P(EveryModel, HasADeviceIdWithItsLanguage) {
    std::string model = ppd_->nickname;
    model = model.substr(5, model.find(',') - 5);
    EXPECT_EQ(attribute(ppd_.get(), "1284DeviceID"), "MFG:Kelp;MDL:" + model + ";CMD:ZPL;");
}

TEST_P(EveryModel, HasOneResolutionAndOneColourModel) {
    EXPECT_EQ(choice_names(ppd_.get(), "Resolution"), Strings{"203dpi"});
    EXPECT_EQ(choice_names(ppd_.get(), "ColorModel"), Strings{"Gray"});
    EXPECT_EQ(ppd_->color_device, 0);
}

TEST_P(EveryModel, LeavesThePrinterAndThePageAloneByDefault) {
    const std::vector<std::pair<const char*, const char*>> defaults = {
        {"Darkness", "-1"},       {"PrintSpeed", "Normal"},       {"MediaMethod", "Normal"},
        {"PostAction", "Normal"}, {"Origin", "Normal"},           {"MirrorImage", "False"},
        {"Brightness", "0"},      {"RecordPrinterCommands", "0"}, {"Resolution", "203dpi"},
        {"ColorModel", "Gray"},
    };
    for (const auto& [option, choice] : defaults) {
        EXPECT_EQ(default_choice(ppd_.get(), option), choice) << option;
    }
}

// The filter sends nothing for these choices; "Normal" would be darkness 0, the lightest print.
TEST_P(EveryModel, OffersThePrinterDefaultWhereNothingNeedsToBeSent) {
    for (const char* option : {"PrintSpeed", "MediaMethod", "PaperType", "PostAction"}) {
        EXPECT_EQ(label(ppd_.get(), option, "Normal"), "Printer default") << option;
    }
    EXPECT_EQ(label(ppd_.get(), "Darkness", "-1"), "Printer default");
}

// The words the filter looks for in the choice names, and numbers where it reads a number.
TEST_P(EveryModel, OffersChoicesThatTheFilterKnows) {
    EXPECT_EQ(choice_names(ppd_.get(), "Origin"), (Strings{"Normal", "Rotation180"}));
    EXPECT_EQ(choice_names(ppd_.get(), "MirrorImage"), (Strings{"False", "True"}));
    EXPECT_EQ(choice_names(ppd_.get(), "MediaMethod"), (Strings{"Normal", "Direct", "Transfer"}));
    EXPECT_EQ(choice_names(ppd_.get(), "PaperType"),
              (Strings{"Normal", "LabelGaps", "LabelMark", "Continue"}));
    EXPECT_EQ(choice_names(ppd_.get(), "PrintSpeed"), (Strings{"Normal", "2", "3", "4", "5", "6"}));
    // "True" would read as 0.
    EXPECT_EQ(choice_names(ppd_.get(), "RecordPrinterCommands"), (Strings{"0", "1"}));
    EXPECT_EQ(attribute(ppd_.get(), "kelpFilterOutputFile"), "/var/spool/cups/tmp/kelp");
    EXPECT_EQ(choice_names(ppd_.get(), "GapsHeight"),
              (Strings{"0", "1", "2", "3", "4", "5", "6", "8", "10"}));
    Strings darkness{"-1"};
    for (int value = 0; value <= 30; ++value) {
        darkness.push_back(std::to_string(value));
    }
    EXPECT_EQ(choice_names(ppd_.get(), "Darkness"), darkness);
    Strings brightness;
    for (int value = -10; value <= 10; ++value) {
        brightness.push_back(std::to_string(value));
    }
    EXPECT_EQ(choice_names(ppd_.get(), "Brightness"), brightness);
}

TEST_P(EveryModel, ShowsItsOptionsInGroups) {
    Strings groups;
    for (int i = 0; i < ppd_->num_groups; ++i) {
        groups.emplace_back(ppd_->groups[i].text);
    }
    EXPECT_EQ(groups, (Strings{"General", "Layout", "Print quality", "Troubleshooting",
                               "Labels and sheets"}));
}

// Read by the raster driver, not by our filter.
TEST_P(EveryModel, HasShapesPaintedByTheCentresOfDots) {
    EXPECT_EQ(attribute(ppd_.get(), "DefaultCenterOfPixel"), "True");
}

TEST_P(EveryModel, HasFullBleedPages) {
    ASSERT_GT(ppd_->num_sizes, 0);
    for (int i = 0; i < ppd_->num_sizes; ++i) {
        const ppd_size_t& size = ppd_->sizes[i];
        EXPECT_EQ(size.left, 0.0F) << size.name;
        EXPECT_EQ(size.bottom, 0.0F) << size.name;
        EXPECT_EQ(size.right, size.width) << size.name;
        EXPECT_EQ(size.top, size.length) << size.name;
    }
}

// In points: 10 mm to 1 m long, and as wide as the head.
TEST_P(EveryModel, TakesCustomSizes) {
    ASSERT_NE(ppd_->variable_sizes, 0);
    EXPECT_EQ(ppd_->custom_min[0], 28.0F);
    EXPECT_EQ(ppd_->custom_min[1], 28.0F);
    EXPECT_EQ(ppd_->custom_max[1], 2834.0F);
    const std::vector<std::pair<std::string, float>> widths = {{"label-2inch", 162.0F},
                                                               {"label-3inch", 227.0F},
                                                               {"label-4inch", 295.0F},
                                                               {"stencil-a5", 420.0F},
                                                               {"stencil-a4", 612.0F}};
    const auto width = std::find_if(widths.begin(), widths.end(),
                                    [](const auto& entry) { return entry.first == GetParam(); });
    EXPECT_EQ(ppd_->custom_max[0], width->second);
    for (int i = 0; i < ppd_->num_sizes; ++i) {
        EXPECT_LE(ppd_->sizes[i].width, width->second) << ppd_->sizes[i].name;
    }
}

}  // namespace
}  // namespace kelp_test
