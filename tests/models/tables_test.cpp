// The tables against what libcups reads from the PPD files.

#include <cups/ppd.h>

#include <algorithm>
#include <array>
#include <cstring>
#include <set>
#include <string>
#include <vector>

#include "models/model.h"
#include "tests/drivers/ppds.h"

namespace kelp_test {
namespace {

using kelp_models::Model;

class Tables : public testing::TestWithParam<std::string> {
  protected:
    void SetUp() override { ASSERT_NE(model_, nullptr); }

    OpenPpd ppd_ = open_ppd(GetParam());
    const Model* model_ = kelp_models::findModel("kelp-" + GetParam());
};

INSTANTIATE_TEST_SUITE_P(All, Tables, testing::ValuesIn(every_model()), test_name);

bool is_of_the_page(const std::string& option) {
    return option == "PageSize" || option == "PageRegion" || option == "Resolution" ||
           option == "ColorModel";
}

TEST(Tables, AreOfEveryModelInOrder) {
    Strings names;
    for (const Model& model : kelp_models::models()) {
        names.emplace_back(model.name);
        EXPECT_EQ(kelp_models::findModel(model.name), &model);
    }
    Strings expected;
    for (const std::string& model : every_model()) {
        expected.push_back("kelp-" + model);
    }
    EXPECT_EQ(names, expected);
}

TEST(Tables, KnowNoOtherModel) {
    for (const char* name : {"", "label-4inch", "kelp-label-4inch.ppd", "Kelp-label-4inch"}) {
        EXPECT_EQ(kelp_models::findModel(name), nullptr) << name;
    }
}

TEST_P(Tables, NameTheDevice) {
    EXPECT_STREQ(model_->makeAndModel, ppd_->modelname);
    EXPECT_EQ(model_->deviceId, attribute(ppd_.get(), "1284DeviceID"));
    EXPECT_EQ(std::string(model_->makeAndModel).rfind("Kelp ", 0), 0U) << model_->makeAndModel;
}

TEST(Tables, SayHowPeopleKnowTheWidestLabelPrinter) {
    const Model* model = kelp_models::findModel("kelp-label-4inch");
    ASSERT_NE(model, nullptr);
    EXPECT_STREQ(model->makeAndModel, "Kelp Label Printer 4 inch");
    EXPECT_STREQ(model->deviceId, "MFG:Kelp;MDL:Label Printer 4 inch;CMD:ZPL;");
}

TEST_P(Tables, HaveLabelsInBlackSpaceAndStencilsInWhiteSpace) {
    const bool is_label = GetParam().rfind("label", 0) == 0;
    EXPECT_EQ(model_->polarity, is_label ? Polarity::kBlackSpace : Polarity::kWhiteSpace);
}

TEST_P(Tables, HaveTheSizes) {
    ASSERT_EQ(model_->sizes.size() + 1, static_cast<std::size_t>(ppd_->num_sizes));
    for (std::size_t i = 0; i < model_->sizes.size(); ++i) {
        const kelp_models::PageSize& size = model_->sizes[i];
        EXPECT_STREQ(size.name, ppd_->sizes[i].name);
        EXPECT_EQ(static_cast<float>(size.width), ppd_->sizes[i].width) << size.name;
        EXPECT_EQ(static_cast<float>(size.length), ppd_->sizes[i].length) << size.name;
        EXPECT_EQ(size.text, label(ppd_.get(), "PageSize", size.name));
        EXPECT_EQ(model_->findSize(size.name), &size);
    }
    EXPECT_STREQ(ppd_->sizes[model_->sizes.size()].name, "Custom");
    ASSERT_LT(model_->defaultSize, model_->sizes.size());
    EXPECT_EQ(model_->sizes[model_->defaultSize].name, default_choice(ppd_.get(), "PageSize"));
}

TEST_P(Tables, HaveNoOtherSizes) {
    for (const char* name : {"", "Custom", "a4", "4x6"}) {
        EXPECT_EQ(model_->findSize(name), nullptr) << name;
    }
}

TEST_P(Tables, HaveTheLimitsOfCustomSizes) {
    EXPECT_EQ(static_cast<float>(model_->minWidth), ppd_->custom_min[0]);
    EXPECT_EQ(static_cast<float>(model_->minLength), ppd_->custom_min[1]);
    EXPECT_EQ(static_cast<float>(model_->maxWidth), ppd_->custom_max[0]);
    EXPECT_EQ(static_cast<float>(model_->maxLength), ppd_->custom_max[1]);
}

TEST_P(Tables, HaveTheResolution) {
    EXPECT_EQ(choice_names(ppd_.get(), "Resolution"), Strings{model_->resolution});
}

TEST_P(Tables, HaveEveryOptionAndChoice) {
    std::size_t known = 0;
    for (int i = 0; i < ppd_->num_groups; ++i) {
        for (int j = 0; j < ppd_->groups[i].num_options; ++j) {
            const ppd_option_t& expected = ppd_->groups[i].options[j];
            if (is_of_the_page(expected.keyword)) {
                EXPECT_EQ(model_->findOption(expected.keyword), nullptr) << expected.keyword;
                continue;
            }
            ASSERT_LT(known, model_->options.size());
            const kelp_models::Option& option = model_->options[known++];
            EXPECT_STREQ(option.name, expected.keyword);
            EXPECT_STREQ(option.text, expected.text) << option.name;
            EXPECT_EQ(model_->findOption(option.name), &option);
            ASSERT_EQ(option.choices.size(), static_cast<std::size_t>(expected.num_choices))
                << option.name;
            for (std::size_t k = 0; k < option.choices.size(); ++k) {
                EXPECT_STREQ(option.choices[k].name, expected.choices[k].choice) << option.name;
                EXPECT_STREQ(option.choices[k].text, expected.choices[k].text) << option.name;
                EXPECT_EQ(option.find(option.choices[k].name), &option.choices[k]);
            }
            ASSERT_LT(option.defaultChoice, option.choices.size());
            EXPECT_STREQ(option.choices[option.defaultChoice].name, expected.defchoice)
                << option.name;
        }
    }
    EXPECT_EQ(known, model_->options.size());
}

TEST_P(Tables, HaveNoOtherOptionsAndChoices) {
    for (const char* name : {"", "papertype", "Occurrence", "PaperType "}) {
        EXPECT_EQ(model_->findOption(name), nullptr) << name;
    }
    const kelp_models::Option* paper = model_->findOption("PaperType");
    ASSERT_NE(paper, nullptr);
    for (const char* name : {"", "Label", "labelgaps", "Labels on the roll"}) {
        EXPECT_EQ(paper->find(name), nullptr) << name;
    }
}

using Pair = std::set<std::string>;  // "option choice", in either order

TEST_P(Tables, HaveEachConflictOnce) {
    std::set<Pair> expected;
    for (int i = 0; i < ppd_->num_consts; ++i) {
        const ppd_const_t& one = ppd_->consts[i];
        expected.insert(Pair{std::string(one.option1) + ' ' + one.choice1,
                             std::string(one.option2) + ' ' + one.choice2});
    }
    std::set<Pair> known;
    for (const kelp_models::Conflict& one : model_->conflicts) {
        const Pair pair{std::string(one.option) + ' ' + one.choice,
                        std::string(one.otherOption) + ' ' + one.otherChoice};
        EXPECT_TRUE(known.insert(pair).second) << *pair.begin() << ", " << *pair.rbegin();
    }
    EXPECT_EQ(known, expected);
    // A gap of 0 with gaps or marks, eight gaps of endless material; and of label printers peeling
    // endless material. The stencil printers do not peel.
    const bool is_label = GetParam().rfind("label", 0) == 0;
    EXPECT_EQ(known.size(), is_label ? 11U : 10U);
}

}  // namespace
}  // namespace kelp_test
