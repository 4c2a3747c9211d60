// What each PPD offers and what a job without options gets.

#include <cups/ppd.h>
#include <gtest/gtest.h>

#include <cstdlib>
#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace {

using Strings = std::vector<std::string>;

struct PpdCloser {
    void operator()(ppd_file_t* ppd) const { ppdClose(ppd); }
};
using Ppd = std::unique_ptr<ppd_file_t, PpdCloser>;

const char* const kLabel = "kelp-label-4inch.ppd";
const char* const kStencil = "kelp-stencil-a4.ppd";

Ppd openPpd(const std::string& name) {
    Ppd ppd(ppdOpenFile((std::string(KELP_PPD_DIR "/") + name).c_str()));
    if (ppd) {
        ppdMarkDefaults(ppd.get());
    }
    return ppd;
}

Strings choiceNames(ppd_file_t* ppd, const char* keyword) {
    Strings names;
    const ppd_option_t* option = ppdFindOption(ppd, keyword);
    for (int i = 0; option != nullptr && i < option->num_choices; ++i) {
        names.emplace_back(option->choices[i].choice);
    }
    return names;
}

std::string defaultChoice(ppd_file_t* ppd, const char* keyword) {
    const ppd_choice_t* choice = ppdFindMarkedChoice(ppd, keyword);
    return choice != nullptr ? choice->choice : "(none)";
}

std::string label(ppd_file_t* ppd, const char* keyword, const char* choice) {
    const ppd_choice_t* found = ppdFindChoice(ppdFindOption(ppd, keyword), choice);
    return found != nullptr ? found->text : "(none)";
}

std::string attribute(ppd_file_t* ppd, const char* name) {
    const ppd_attr_t* found = ppdFindAttr(ppd, name, nullptr);
    return found != nullptr && found->value != nullptr ? found->value : "(none)";
}

class EveryModel : public testing::TestWithParam<const char*> {
  protected:
    void SetUp() override {
        ppd_ = openPpd(GetParam());
        ASSERT_NE(ppd_, nullptr) << GetParam();
    }
    Ppd ppd_;
};

TEST_P(EveryModel, SendsItsRasterToTheFilter) {
    ASSERT_EQ(ppd_->num_filters, 1);
    EXPECT_STREQ(ppd_->filters[0], "application/vnd.cups-raster 0 rastertokelp");
    EXPECT_EQ(ppd_->manual_copies, 0);
    EXPECT_EQ(attribute(ppd_.get(), "cupsSNMPSupplies"), "False");
}

TEST_P(EveryModel, IsMadeByKelp) {
    EXPECT_STREQ(ppd_->manufacturer, "Kelp");
    EXPECT_EQ(std::string(ppd_->nickname).rfind("Kelp ", 0), 0U) << ppd_->nickname;
}

TEST_P(EveryModel, CarriesEveryDarknessAndAMiddleDefault) {
    Strings every;
    for (int darkness = 0; darkness <= 30; ++darkness) {
        every.push_back(std::to_string(darkness));
    }
    EXPECT_EQ(choiceNames(ppd_.get(), "Darkness"), every);
    EXPECT_EQ(defaultChoice(ppd_.get(), "Darkness"), "15");
}

TEST_P(EveryModel, OffersNoGapThatWouldMeanContinuousMedia) {
    const Strings gaps = choiceNames(ppd_.get(), "GapsHeight");
    EXPECT_FALSE(gaps.empty());
    for (const std::string& gap : gaps) {
        EXPECT_GT(std::atoi(gap.c_str()), 0) << gap;
    }
    EXPECT_EQ(defaultChoice(ppd_.get(), "GapsHeight"), "3");
}

TEST_P(EveryModel, HasOneResolutionAndOneColourModel) {
    EXPECT_EQ(choiceNames(ppd_.get(), "Resolution"), Strings{"203dpi"});
    EXPECT_EQ(choiceNames(ppd_.get(), "ColorModel"), Strings{"Gray"});
    EXPECT_EQ(ppd_->color_device, 0);
}

TEST_P(EveryModel, PrintsThePageAsItStandsUnlessAskedOtherwise) {
    const std::vector<std::pair<const char*, const char*>> defaults = {
        {"Origin", "Normal"},   {"MirrorImage", "False"},       {"PrintSpeed", "Normal"},
        {"Brightness", "0"},    {"RecordPrinterCommands", "0"}, {"Resolution", "203dpi"},
        {"ColorModel", "Gray"}, {"MediaMethod", "Direct"},
    };
    for (const auto& [option, choice] : defaults) {
        EXPECT_EQ(defaultChoice(ppd_.get(), option), choice) << option;
    }
}

// The words the filter looks for in the choice names.
TEST_P(EveryModel, OffersChoicesThatTheFilterKnows) {
    EXPECT_EQ(choiceNames(ppd_.get(), "Origin"), (Strings{"Normal", "Rotation180"}));
    EXPECT_EQ(choiceNames(ppd_.get(), "MirrorImage"), (Strings{"False", "True"}));
    EXPECT_EQ(choiceNames(ppd_.get(), "MediaMethod"), (Strings{"Normal", "Direct", "Transfer"}));
    EXPECT_EQ(choiceNames(ppd_.get(), "PaperType"),
              (Strings{"Normal", "LabelGaps", "LabelMark", "Continue"}));
    EXPECT_EQ(choiceNames(ppd_.get(), "PrintSpeed"), (Strings{"Normal", "2", "3", "4", "5", "6"}));
    // A number: "True" would read as 0.
    EXPECT_EQ(choiceNames(ppd_.get(), "RecordPrinterCommands"), (Strings{"0", "1"}));
    EXPECT_EQ(attribute(ppd_.get(), "kelpFilterOutputFile"), "/var/spool/cups/tmp/kelp");
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
    EXPECT_EQ(ppd_->variable_sizes, 0);
}

INSTANTIATE_TEST_SUITE_P(Drivers, EveryModel, testing::Values(kLabel, kStencil),
                         [](const testing::TestParamInfo<const char*>& parameter) {
                             return std::string(parameter.param) == kLabel ? "Label" : "Stencil";
                         });

TEST(LabelModel, OffersTheEightPictureHalftonesOnly) {
    const Ppd ppd = openPpd(kLabel);
    ASSERT_NE(ppd, nullptr);
    EXPECT_EQ(choiceNames(ppd.get(), "HalftoneType"),
              (Strings{"None", "FloydSteinberg", "Ordered", "Burkes", "Stucki", "JarvisJudiceNinke",
                       "Sierra", "StevensonArce"}));
}

// Each name but the first runs the method that its right-hand neighbour is called after.
TEST(LabelModel, LabelsEachHalftoneWithWhatReallyPrints) {
    const Ppd ppd = openPpd(kLabel);
    ASSERT_NE(ppd, nullptr);
    const std::vector<std::pair<const char*, const char*>> runs = {
        {"None", "Threshold"},        {"FloydSteinberg", "Ordered dither, 4 x 4"},
        {"Ordered", "Burkes"},        {"Burkes", "Stucki"},
        {"Stucki", "Jarvis"},         {"JarvisJudiceNinke", "Sierra"},
        {"Sierra", "Stevenson-Arce"}, {"StevensonArce", "Bayer"},
    };
    for (const auto& [name, method] : runs) {
        EXPECT_EQ(label(ppd.get(), "HalftoneType", name).rfind(method, 0), 0U)
            << name << ": " << label(ppd.get(), "HalftoneType", name);
    }
}

TEST(LabelModel, HasNoNegativeForItWouldPrintASolidPage) {
    const Ppd ppd = openPpd(kLabel);
    ASSERT_NE(ppd, nullptr);
    EXPECT_EQ(ppdFindOption(ppd.get(), "NegativeImage"), nullptr);
}

TEST(LabelModel, SensesGapsByDefault) {
    const Ppd ppd = openPpd(kLabel);
    ASSERT_NE(ppd, nullptr);
    EXPECT_EQ(defaultChoice(ppd.get(), "PaperType"), "LabelGaps");
    EXPECT_EQ(defaultChoice(ppd.get(), "PostAction"), "TearOff");
    EXPECT_EQ(defaultChoice(ppd.get(), "PageSize"), "4x6in");
}

// In black-space grey more is darker.
TEST(LabelModel, LabelsAHigherBrightnessAsDarker) {
    const Ppd ppd = openPpd(kLabel);
    ASSERT_NE(ppd, nullptr);
    EXPECT_EQ(label(ppd.get(), "Brightness", "5"), "5 steps darker");
    EXPECT_EQ(label(ppd.get(), "Brightness", "-1"), "1 step lighter");
}

TEST(StencilModel, OffersTheTwoStencilHalftonesOnly) {
    const Ppd ppd = openPpd(kStencil);
    ASSERT_NE(ppd, nullptr);
    EXPECT_EQ(choiceNames(ppd.get(), "HalftoneType"), (Strings{"Tattoo", "Tattoo_X8"}));
    EXPECT_EQ(defaultChoice(ppd.get(), "HalftoneType"), "Tattoo");
}

TEST(StencilModel, PrintsBlackOnWhiteByDefault) {
    const Ppd ppd = openPpd(kStencil);
    ASSERT_NE(ppd, nullptr);
    EXPECT_EQ(defaultChoice(ppd.get(), "NegativeImage"), "True");
    EXPECT_EQ(label(ppd.get(), "NegativeImage", "True").rfind("Positive", 0), 0U);
    EXPECT_EQ(label(ppd.get(), "NegativeImage", "False").rfind("Negative", 0), 0U);
}

TEST(StencilModel, LabelsAHigherBrightnessAsLighter) {
    const Ppd ppd = openPpd(kStencil);
    ASSERT_NE(ppd, nullptr);
    EXPECT_EQ(label(ppd.get(), "Brightness", "5"), "5 steps lighter");
    EXPECT_EQ(label(ppd.get(), "Brightness", "-1"), "1 step darker");
}

TEST(StencilModel, TakesMediaWithoutGapsByDefault) {
    const Ppd ppd = openPpd(kStencil);
    ASSERT_NE(ppd, nullptr);
    EXPECT_EQ(defaultChoice(ppd.get(), "PaperType"), "Continue");
    EXPECT_EQ(defaultChoice(ppd.get(), "PostAction"), "Normal");
    EXPECT_EQ(defaultChoice(ppd.get(), "PageSize"), "A4");
}

}  // namespace
