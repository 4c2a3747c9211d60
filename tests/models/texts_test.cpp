// The translations against what libcups shows in each language.

#include <cups/ppd.h>

#include <string>

#include "models/model.h"
#include "tests/drivers/ppds.h"

namespace kelp_test {
namespace {

using kelp_models::Model;
using kelp_models::translated;

constexpr const char* every_language[] = {"de", "es", "fr", "ja", "zh_CN"};

class Texts : public testing::TestWithParam<std::string> {
  protected:
    void SetUp() override { ASSERT_NE(model_, nullptr); }
    // Every text of the model in a language is what the PPD shows; its number is given.
    int compare(const OpenPpd& ppd, const char* language) const {
        int texts = 0;
        for (const ppd_option_t* option = ppdFirstOption(ppd.get()); option != nullptr;
             option = ppdNextOption(ppd.get())) {
            const std::string name = option->keyword;
            if (name == "PageRegion" || name == "Resolution" || name == "ColorModel") {
                EXPECT_EQ(translated(*model_, language, name, ""), nullptr) << name;
                continue;
            }
            EXPECT_STREQ(translated(*model_, language, name, ""), option->text) << name;
            ++texts;
            for (int i = 0; i < option->num_choices; ++i) {
                const ppd_choice_t& choice = option->choices[i];
                if (std::string(choice.choice) != "Custom") {
                    EXPECT_STREQ(translated(*model_, language, name, choice.choice), choice.text)
                        << name << ' ' << choice.choice;
                    ++texts;
                }
            }
        }
        return texts;
    }

    const Model* model_ = kelp_models::findModel("kelp-" + GetParam());
};

INSTANTIATE_TEST_SUITE_P(All, Texts, testing::ValuesIn(every_model()), test_name);

TEST(Texts, AreInFiveLanguages) {
    Strings languages;
    for (const char* language : kelp_models::languages()) {
        languages.emplace_back(language);
    }
    EXPECT_EQ(languages, Strings(std::begin(every_language), std::end(every_language)));
}

TEST_P(Texts, AreTheDialogsInEveryLanguage) {
    // Every option, choice and size, and the option of the sizes.
    std::size_t expected = 1 + model_->sizes.size();
    for (const kelp_models::Option& option : model_->options) {
        expected += 1 + option.choices.size();
    }
    for (const char* language : every_language) {
        SCOPED_TRACE(language);
        EXPECT_EQ(compare(open_ppd(GetParam(), language), language), static_cast<int>(expected));
    }
}

TEST_P(Texts, AreEnglishInOtherLanguages) {
    const OpenPpd english = open_ppd(GetParam());
    for (const char* language : {"", "en", "it", "d", "zh", "DE"}) {
        SCOPED_TRACE(language);
        EXPECT_GT(compare(english, language), 0);
    }
}

TEST_P(Texts, AreNoneOfWhatTheModelDoesNotOffer) {
    for (const char* language : {"de", "en", "it"}) {
        EXPECT_EQ(translated(*model_, language, "Occurrence", ""), nullptr);
        EXPECT_EQ(translated(*model_, language, "", ""), nullptr);
        EXPECT_EQ(translated(*model_, language, "PaperType", "Marble"), nullptr);
        EXPECT_EQ(translated(*model_, language, "PageSize", "Custom"), nullptr);
        EXPECT_EQ(translated(*model_, language, "ZZZ", "ZZZ"), nullptr);
    }
}

// From the catalogues.
TEST(Texts, AreTranslated) {
    const Model* model = kelp_models::findModel("kelp-label-2inch");
    ASSERT_NE(model, nullptr);
    EXPECT_STREQ(translated(*model, "de", "MediaMethod", "Normal"), "Druckervorgabe");
    EXPECT_STREQ(translated(*model, "zh_CN", "MediaMethod", "Normal"), "打印机默认设置");
    EXPECT_STREQ(translated(*model, "en", "MediaMethod", "Normal"), "Printer default");
}

}  // namespace
}  // namespace kelp_test
