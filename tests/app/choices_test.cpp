#include "app/choices.h"

#include <gtest/gtest.h>

#include "app/vendor_attributes.h"

namespace kelp_app {
namespace {

const kelp_models::Model& label() {
    return *kelp_models::findModel("kelp-label-4inch");
}

class Choices : public testing::Test {
  protected:
    std::string chosen(const char* option) const {
        return choicesOf(label(), options, printer, attributes.get()).chosen(option);
    }
    pappl_pr_options_t options{};
    pappl_pr_driver_data_t printer{};
    std::unique_ptr<ipp_t, decltype(&ippDelete)> attributes{describeVendorAttributes(label()),
                                                            ippDelete};
};

TEST_F(Choices, LeaveWhatIsNotAskedForAsTheModelHasIt) {
    const kelp_models::JobChoices choices = choicesOf(label(), options, printer, attributes.get());
    for (const kelp_models::Option& option : label().options) {
        EXPECT_STREQ(choices.chosen(option.name), option.choices[option.defaultChoice].name);
    }
}

TEST_F(Choices, DarknessIsWhatIsConfiguredAndWhatTheJobAdds) {
    struct Row {
        int configured;
        int added;
        const char* choice;
    };
    // Of 100, in 30 steps: 3.33 a step, halves up.
    for (const Row& row :
         {Row{0, 0, "-1"}, Row{0, 1, "0"}, Row{1, 0, "0"}, Row{0, 2, "1"}, Row{50, 0, "15"},
          Row{50, -50, "0"}, Row{50, 100, "30"}, Row{50, -100, "0"}, Row{5, 0, "2"}, Row{4, 0, "1"},
          Row{100, 0, "30"}, Row{98, 0, "29"}, Row{99, 0, "30"}}) {
        options.darkness_configured = row.configured;
        options.print_darkness = row.added;
        EXPECT_EQ(chosen("Darkness"), row.choice) << row.configured << " + " << row.added;
    }
}

TEST_F(Choices, SpeedIsTheNearestInch) {
    for (const auto& [speed, choice] :
         {std::pair(0, "Normal"), std::pair(5080, "2"), std::pair(6349, "2"), std::pair(6350, "3"),
          std::pair(15240, "6"), std::pair(99999, "Normal")}) {
        options.print_speed = speed;
        EXPECT_EQ(chosen("PrintSpeed"), choice) << speed;
    }
}

TEST_F(Choices, TrackingNeverContradictsTheGap) {
    for (const unsigned tracking :
         {PAPPL_MEDIA_TRACKING_CONTINUOUS, PAPPL_MEDIA_TRACKING_GAP, PAPPL_MEDIA_TRACKING_MARK}) {
        for (const kelp_models::Model& model : kelp_models::models()) {
            options.media.tracking = static_cast<pappl_media_tracking_t>(tracking);
            EXPECT_TRUE(choicesOf(model, options, printer, attributes.get()).conflicts().empty())
                << model.name << " " << tracking;
        }
    }
}

TEST_F(Choices, AVendorsAttributeIsChosenLast) {
    options.media.tracking = PAPPL_MEDIA_TRACKING_MARK;
    options.num_vendor = static_cast<int>(
        cupsAddOption("media-sensing", "printer-default", options.num_vendor, &options.vendor));
    EXPECT_EQ(chosen("PaperType"), "Normal");
    cupsFreeOptions(options.num_vendor, options.vendor);
}

}  // namespace
}  // namespace kelp_app
