// The settings of a job against what the filter reads from the PPD file.

#include "filter/settings.h"

#include <cups/ppd.h>

#include <cstdlib>
#include <cstring>
#include <random>
#include <string>

#include "models/job_choices.h"
#include "tests/drivers/ppds.h"
#include "tests/unit/printer/support/stderr_capture.h"

namespace kelp_test {
namespace {

using kelp_models::customSettingsOf;
using kelp_models::JobChoices;
using kelp_models::Model;
using kelp_models::settingsOf;

template <std::size_t Size>
bool same_text(const char (&one)[Size], const char (&other)[Size]) {
    return std::memcmp(one, other, Size) == 0;
}

void expect_same(const Settings& settings, const Settings& expected, const std::string& job) {
    SCOPED_TRACE(job);
    EXPECT_TRUE(same_text(settings.PageSize, expected.PageSize)) << settings.PageSize;
    EXPECT_EQ(settings.pageWidth, expected.pageWidth);
    EXPECT_EQ(settings.pageHeight, expected.pageHeight);
    EXPECT_TRUE(same_text(settings.Resolution, expected.Resolution)) << settings.Resolution;
    EXPECT_TRUE(same_text(settings.MediaMethod, expected.MediaMethod)) << settings.MediaMethod;
    EXPECT_TRUE(same_text(settings.PaperType, expected.PaperType)) << settings.PaperType;
    EXPECT_EQ(settings.GapsHeight, expected.GapsHeight);
    EXPECT_TRUE(same_text(settings.PostAction, expected.PostAction)) << settings.PostAction;
    EXPECT_TRUE(same_text(settings.Occurrence, expected.Occurrence)) << settings.Occurrence;
    EXPECT_TRUE(same_text(settings.Origin, expected.Origin)) << settings.Origin;
    EXPECT_EQ(settings.MirrorImage, expected.MirrorImage);
    EXPECT_EQ(settings.NegativeImage, expected.NegativeImage);
    EXPECT_EQ(settings.halftoneType, expected.halftoneType);
    EXPECT_TRUE(same_text(settings.PrintSpeed, expected.PrintSpeed)) << settings.PrintSpeed;
    EXPECT_EQ(settings.Darkness, expected.Darkness);
    EXPECT_EQ(settings.Brightness, expected.Brightness);
    EXPECT_EQ(settings.DirectBuffer, expected.DirectBuffer);
    EXPECT_EQ(settings.StoredGraphics, expected.StoredGraphics);
    EXPECT_EQ(settings.OptionDisplayUnit, expected.OptionDisplayUnit);
    EXPECT_EQ(settings.ForceRotation, expected.ForceRotation);
    EXPECT_TRUE(same_text(settings.OutputFile, Settings{}.OutputFile)) << settings.OutputFile;
}

class JobSettings : public testing::TestWithParam<std::string> {
  protected:
    void SetUp() override {
        ASSERT_NE(model_, nullptr);
        setenv("PPD", (KELP_PPD_DIR "/kelp-" + GetParam() + ".ppd").c_str(), 1);
    }
    void TearDown() override { unsetenv("PPD"); }

    static Settings parsed(const std::string& job) {
        Settings settings;
        stderr_of([&] { parseSettings(settings, job.c_str()); });
        EXPECT_STRNE(settings.PageSize, "") << "no PPD";
        return settings;
    }

    const Model* model_ = kelp_models::findModel("kelp-" + GetParam());
};

INSTANTIATE_TEST_SUITE_P(All, JobSettings, testing::ValuesIn(every_model()), test_name);

TEST_P(JobSettings, AreTheFiltersByDefault) {
    expect_same(settingsOf(*model_, JobChoices(*model_), model_->sizes[model_->defaultSize].name),
                parsed(""), "");
}

TEST_P(JobSettings, AreTheFiltersForEveryChoice) {
    for (const kelp_models::Option& option : model_->options) {
        for (const kelp_models::Choice& choice : option.choices) {
            JobChoices choices(*model_);
            EXPECT_TRUE(choices.choose(option.name, choice.name));
            const std::string job = std::string(option.name) + '=' + choice.name;
            expect_same(settingsOf(*model_, choices, nullptr), parsed(job), job);
        }
    }
}

TEST_P(JobSettings, AreTheFiltersForEverySize) {
    const JobChoices defaults(*model_);
    for (const kelp_models::PageSize& size : model_->sizes) {
        const std::string job = std::string("PageSize=") + size.name;
        expect_same(settingsOf(*model_, defaults, size.name), parsed(job), job);
    }
    for (const char* unknown : {"Custom", "Unheard", "4x6"}) {
        const std::string job = std::string("PageSize=") + unknown;
        expect_same(settingsOf(*model_, defaults, unknown), parsed(job), job);
    }
    expect_same(settingsOf(*model_, defaults, nullptr), parsed(""), "no size");
}

TEST_P(JobSettings, AreTheFiltersForCustomSizes) {
    const JobChoices defaults(*model_);
    expect_same(customSettingsOf(*model_, defaults, 100.0F, 200.0F),
                parsed("PageSize=Custom.100x200"), "100x200");
    expect_same(customSettingsOf(*model_, defaults, 100.25F, 33.3F),
                parsed("PageSize=Custom.100.25x33.3"), "100.25x33.3");
    expect_same(customSettingsOf(*model_, defaults, 5000.0F, 1.0F),
                parsed("PageSize=Custom.5000x1"), "5000x1");
}

TEST_P(JobSettings, AreTheFiltersForAnyChoicesTogether) {
    std::mt19937 random(20230517U + static_cast<unsigned>(GetParam().size()));
    const auto below = [&](std::size_t end) { return random() % end; };
    for (int round = 0; round < 120; ++round) {
        JobChoices choices(*model_);
        const kelp_models::PageSize& size = model_->sizes[below(model_->sizes.size())];
        std::string job = std::string("PageSize=") + size.name;
        OpenPpd ppd = open_ppd(GetParam());
        for (const kelp_models::Option& option : model_->options) {
            const kelp_models::Choice& choice = option.choices[below(option.choices.size())];
            EXPECT_TRUE(choices.choose(option.name, choice.name));
            job += std::string(" ") + option.name + '=' + choice.name;
            ppdMarkOption(ppd.get(), option.name, choice.name);
        }
        expect_same(settingsOf(*model_, choices, size.name), parsed(job), job);
        EXPECT_EQ(choices.conflicts().empty(), ppdConflicts(ppd.get()) == 0) << job;
    }
}

}  // namespace
}  // namespace kelp_test
