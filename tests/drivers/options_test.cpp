// What label printers and stencil printers offer of their own.

#include <utility>

#include "tests/drivers/ppds.h"

namespace kelp_test {
namespace {

class LabelModel : public testing::TestWithParam<std::string> {
  protected:
    OpenPpd ppd_ = open_ppd(GetParam());
};
class StencilModel : public LabelModel {};

INSTANTIATE_TEST_SUITE_P(Drivers, LabelModel, testing::ValuesIn(label_models()), test_name);
INSTANTIATE_TEST_SUITE_P(Drivers, StencilModel, testing::ValuesIn(stencil_models()), test_name);

TEST_P(LabelModel, OffersTheEightPictureHalftonesOnly) {
    EXPECT_EQ(choice_names(ppd_.get(), "HalftoneType"),
              (Strings{"None", "FloydSteinberg", "Ordered", "Burkes", "Stucki", "JarvisJudiceNinke",
                       "Sierra", "StevensonArce"}));
    EXPECT_EQ(default_choice(ppd_.get(), "HalftoneType"), "Ordered");
}

// Each name but the first runs the method that its right-hand neighbour is called after.
TEST_P(LabelModel, LabelsEachHalftoneWithWhatReallyPrints) {
    const std::vector<std::pair<const char*, const char*>> runs = {
        {"None", "Threshold ("},        {"FloydSteinberg", "Ordered dither 4 x 4 ("},
        {"Ordered", "Burkes ("},        {"Burkes", "Stucki ("},
        {"Stucki", "Jarvis, Judice"},   {"JarvisJudiceNinke", "Sierra ("},
        {"Sierra", "Stevenson-Arce ("}, {"StevensonArce", "Bayer "},
    };
    for (const auto& [name, method] : runs) {
        EXPECT_EQ(label(ppd_.get(), "HalftoneType", name).rfind(method, 0), 0U)
            << name << ": " << label(ppd_.get(), "HalftoneType", name);
    }
}

TEST_P(LabelModel, HasNoNegativeForItWouldPrintASolidPage) {
    EXPECT_EQ(ppdFindOption(ppd_.get(), "NegativeImage"), nullptr);
}

TEST_P(LabelModel, SensesGapsByDefault) {
    EXPECT_EQ(default_choice(ppd_.get(), "PaperType"), "LabelGaps");
    EXPECT_EQ(default_choice(ppd_.get(), "GapsHeight"), "3");
    EXPECT_EQ(choice_names(ppd_.get(), "PostAction"),
              (Strings{"Normal", "TearOff", "PeelOff", "Cut"}));
}

// In black-space grey more is darker.
TEST_P(LabelModel, LabelsAHigherBrightnessAsDarker) {
    EXPECT_EQ(label(ppd_.get(), "Brightness", "5"), "5 steps darker");
    EXPECT_EQ(label(ppd_.get(), "Brightness", "-1"), "1 step lighter");
}

TEST_P(StencilModel, OffersTheTwoStencilHalftonesOnly) {
    EXPECT_EQ(choice_names(ppd_.get(), "HalftoneType"), (Strings{"Tattoo", "Tattoo_X8"}));
    EXPECT_EQ(default_choice(ppd_.get(), "HalftoneType"), "Tattoo");
}

TEST_P(StencilModel, PrintsBlackOnWhiteByDefault) {
    EXPECT_EQ(default_choice(ppd_.get(), "NegativeImage"), "True");
    EXPECT_EQ(label(ppd_.get(), "NegativeImage", "True"), "Black lines on white paper");
    EXPECT_EQ(label(ppd_.get(), "NegativeImage", "False"), "White lines on black (negative)");
}

// In white-space grey more is lighter.
TEST_P(StencilModel, LabelsAHigherBrightnessAsLighter) {
    EXPECT_EQ(label(ppd_.get(), "Brightness", "5"), "5 steps lighter");
    EXPECT_EQ(label(ppd_.get(), "Brightness", "-1"), "1 step darker");
}

TEST_P(StencilModel, TakesMediaWithoutGapsByDefault) {
    EXPECT_EQ(default_choice(ppd_.get(), "PaperType"), "Continue");
    EXPECT_EQ(default_choice(ppd_.get(), "GapsHeight"), "0");
    EXPECT_EQ(choice_names(ppd_.get(), "PostAction"), (Strings{"Normal", "TearOff", "Cut"}));
}

TEST(Models, HaveTheSizesOfTheirPaper) {
    const std::vector<std::pair<const char*, const char*>> defaults = {
        {"label-2inch", "2x1in"},    {"label-3inch", "3x2in"}, {"label-4inch", "4x6in"},
        {"stencil-a5", "Tattoo_A5"}, {"stencil-a4", "A4"},
    };
    for (const auto& [model, size] : defaults) {
        EXPECT_EQ(default_choice(open_ppd(model).get(), "PageSize"), size) << model;
    }
    EXPECT_EQ(choice_names(open_ppd("stencil-a4").get(), "PageSize"),
              (Strings{"A4", "Letter", "Tattoo_A5", "Tattoo_A6", "Custom"}));
    EXPECT_EQ(choice_names(open_ppd("label-4inch").get(), "PageSize"),
              (Strings{"4x6in", "4x4in", "4x3in", "4x2in", "4x1in", "3x2in", "3x1in", "2.25x1.25in",
                       "2x1in", "100x150mm", "100x100mm", "100x50mm", "80x50mm", "62x29mm",
                       "60x40mm", "57x32mm", "50x30mm", "40x30mm", "Custom"}));
}

}  // namespace
}  // namespace kelp_test
