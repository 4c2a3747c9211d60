#include "app/vendor_attributes.h"

#include <gtest/gtest.h>

#include <set>

namespace kelp_app {
namespace {

using kelp_models::JobChoices;
using kelp_models::Model;

const VendorAttribute& attribute(const char* name) {
    for (const VendorAttribute& each : vendorAttributes()) {
        if (std::string_view(each.name) == name) {
            return each;
        }
    }
    throw std::out_of_range(name);
}

TEST(VendorAttributes, EveryHalftoneOfEveryModelHasAKeyword) {
    for (const Model& model : kelp_models::models()) {
        std::set<std::string> choices;
        for (const Keyword& keyword : attribute("halftone").keywords) {
            choices.insert(keyword.choice);
        }
        for (const kelp_models::Choice& choice : model.findOption("HalftoneType")->choices) {
            EXPECT_TRUE(choices.contains(choice.name)) << model.name << " " << choice.name;
        }
    }
}

TEST(VendorAttributes, DefaultsAreTheModels) {
    for (const Model& model : kelp_models::models()) {
        for (const VendorAttribute& each : vendorAttributes()) {
            if (!hasAttribute(model, each)) {
                continue;
            }
            JobChoices changed(model);
            ASSERT_TRUE(chooseByAttribute(model, each, defaultValue(model, each), changed));
            EXPECT_STREQ(changed.chosen(each.option), JobChoices(model).chosen(each.option))
                << model.name << " " << each.name;
        }
    }
}

TEST(VendorAttributes, AModelHasThoseThatItsOptionsHave) {
    const Model& label = *kelp_models::findModel("kelp-label-4inch");
    const Model& stencil = *kelp_models::findModel("kelp-stencil-a4");
    EXPECT_FALSE(hasAttribute(label, attribute("negative")));
    EXPECT_TRUE(hasAttribute(stencil, attribute("negative")));
    EXPECT_TRUE(hasAttribute(label, attribute("mirror")));
    EXPECT_TRUE(hasAttribute(label, attribute("brightness")));
}

TEST(VendorAttributes, BrighterIsLighterOnEveryModel) {
    for (const auto& [name, choice] :
         {std::pair("kelp-label-4inch", "-3"), std::pair("kelp-stencil-a4", "3")}) {
        const Model& model = *kelp_models::findModel(name);
        JobChoices choices(model);
        EXPECT_TRUE(chooseByAttribute(model, attribute("brightness"), "3", choices));
        EXPECT_STREQ(choices.chosen("Brightness"), choice);
    }
}

TEST(VendorAttributes, ValuesThatThereAreNotChangeNothing) {
    const Model& label = *kelp_models::findModel("kelp-label-4inch");
    for (const auto& [name, value] :
         {std::pair("halftone", "stencil-light"), std::pair("halftone", ""),
          std::pair("brightness", "11"), std::pair("brightness", "1x"), std::pair("brightness", ""),
          std::pair("brightness", "99999999999"), std::pair("mirror", "yes")}) {
        JobChoices choices(label);
        EXPECT_FALSE(chooseByAttribute(label, attribute(name), value, choices)) << name << value;
        EXPECT_STREQ(choices.chosen(attribute(name).option),
                     JobChoices(label).chosen(attribute(name).option));
    }
}

}  // namespace
}  // namespace kelp_app
