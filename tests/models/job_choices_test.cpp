#include "models/job_choices.h"

#include <gtest/gtest.h>

#include <string>
#include <string_view>
#include <utility>

namespace kelp_test {
namespace {

using kelp_models::JobChoices;
using kelp_models::Model;

class Choices : public testing::Test {
  protected:
    const Model& label_ = *kelp_models::findModel("kelp-label-4inch");
    const Model& stencil_ = *kelp_models::findModel("kelp-stencil-a4");
};

TEST_F(Choices, AreTheDefaultsAtFirst) {
    for (const Model& model : kelp_models::models()) {
        const JobChoices choices(model);
        for (const kelp_models::Option& option : model.options) {
            EXPECT_STREQ(choices.chosen(option.name), option.choices[option.defaultChoice].name);
        }
        EXPECT_TRUE(choices.conflicts().empty()) << model.name;
    }
}

TEST_F(Choices, AreMadeOneByOne) {
    JobChoices choices(label_);
    EXPECT_TRUE(choices.choose("Darkness", "30"));
    EXPECT_TRUE(choices.choose("PrintSpeed", "6"));
    EXPECT_STREQ(choices.chosen("Darkness"), "30");
    EXPECT_STREQ(choices.chosen("PrintSpeed"), "6");
    EXPECT_STREQ(choices.chosen("MediaMethod"), "Normal");
    EXPECT_TRUE(choices.choose("Darkness", "-1"));
    EXPECT_STREQ(choices.chosen("Darkness"), "-1");
    EXPECT_STREQ(choices.chosen("PrintSpeed"), "6");
}

TEST_F(Choices, AreTheFirstAndTheLastOfAnOption) {
    for (const Model& model : kelp_models::models()) {
        for (const kelp_models::Option& option : model.options) {
            JobChoices choices(model);
            EXPECT_TRUE(choices.choose(option.name, option.choices.front().name));
            EXPECT_STREQ(choices.chosen(option.name), option.choices.front().name);
            EXPECT_TRUE(choices.choose(option.name, option.choices.back().name));
            EXPECT_STREQ(choices.chosen(option.name), option.choices.back().name);
        }
    }
}

TEST_F(Choices, ThatAreUnknownChangeNothing) {
    JobChoices choices(label_);
    ASSERT_TRUE(choices.choose("Darkness", "7"));
    for (const auto& [option, choice] :
         {std::pair("Darkness", "31"), std::pair("Darkness", ""), std::pair("Darkness", "07"),
          std::pair("darkness", "8"), std::pair("", "8"), std::pair("Unheard", "8"),
          std::pair("PageSize", "4x4in"), std::pair("Resolution", "203dpi"),
          std::pair("NegativeImage", "True")}) {
        EXPECT_FALSE(choices.choose(option, choice)) << option << '=' << choice;
    }
    EXPECT_STREQ(choices.chosen("Darkness"), "7");
    for (const kelp_models::Option& option : label_.options) {
        if (std::string_view(option.name) != "Darkness") {
            EXPECT_STREQ(choices.chosen(option.name), option.choices[option.defaultChoice].name);
        }
    }
}

TEST_F(Choices, AreNoneWhereTheModelHasNoOption) {
    const JobChoices choices(label_);
    for (const char* option : {"", "NegativeImage", "PageSize", "Resolution", "darkness"}) {
        EXPECT_EQ(choices.chosen(option), nullptr) << option;
    }
    EXPECT_STREQ(JobChoices(stencil_).chosen("NegativeImage"), "True");
}

TEST_F(Choices, AreCopied) {
    JobChoices choices(label_);
    JobChoices copy = choices;
    EXPECT_TRUE(copy.choose("Darkness", "5"));
    EXPECT_STREQ(choices.chosen("Darkness"), "-1");
    EXPECT_STREQ(copy.chosen("Darkness"), "5");
}

TEST_F(Choices, TellEachConflict) {
    JobChoices choices(label_);
    // The default gap of 3 mm is none of endless material.
    ASSERT_TRUE(choices.choose("PaperType", "Continue"));
    ASSERT_EQ(choices.conflicts().size(), 1U);
    const kelp_models::Conflict gap = choices.conflicts().front();
    EXPECT_STREQ(gap.option, "PaperType");
    EXPECT_STREQ(gap.choice, "Continue");
    EXPECT_STREQ(gap.otherOption, "GapsHeight");
    EXPECT_STREQ(gap.otherChoice, "3");
    // Nor is there anything to peel it off.
    ASSERT_TRUE(choices.choose("PostAction", "PeelOff"));
    EXPECT_EQ(choices.conflicts().size(), 2U);
    ASSERT_TRUE(choices.choose("GapsHeight", "0"));
    EXPECT_EQ(choices.conflicts().size(), 1U);
    ASSERT_TRUE(choices.choose("PaperType", "LabelMark"));
    ASSERT_EQ(choices.conflicts().size(), 1U);
    EXPECT_STREQ(choices.conflicts().front().otherChoice, "LabelMark");
    ASSERT_TRUE(choices.choose("GapsHeight", "2"));
    EXPECT_TRUE(choices.conflicts().empty());
}

TEST_F(Choices, AreReadAsTheFilterReadsThem) {
    JobChoices choices(stencil_);
    ASSERT_TRUE(choices.choose("MirrorImage", "True"));
    ASSERT_TRUE(choices.choose("Brightness", "-10"));
    ASSERT_TRUE(choices.choose("HalftoneType", "Tattoo_X8"));
    ASSERT_TRUE(choices.choose("RecordPrinterCommands", "1"));
    const Settings settings = settingsOf(stencil_, choices, "A4");
    EXPECT_EQ(settings.MirrorImage, 1);
    EXPECT_EQ(settings.NegativeImage, 1);
    EXPECT_EQ(settings.Brightness, -10);
    EXPECT_EQ(settings.halftoneType, DitherTattooX8);
    EXPECT_STREQ(settings.OutputFile, "");
    // 595 x 842 points of 0.3528 mm
    EXPECT_EQ(settings.pageWidth, 209.916F);
    EXPECT_EQ(settings.pageHeight, 297.0576F);
}

}  // namespace
}  // namespace kelp_test
