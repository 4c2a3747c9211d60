// What each language's dialog shows. That no message is missing is for translations_test.sh: the
// compiler of the drivers silently puts English in its place.

#include <map>

#include "tests/drivers/ppds.h"

namespace kelp_test {
namespace {

constexpr std::size_t kLongestText = 80;  // bytes; libcups cuts or refuses longer ones

class Translations : public testing::TestWithParam<std::string> {};

INSTANTIATE_TEST_SUITE_P(Drivers, Translations, testing::Values("de", "es", "fr", "ja", "zh_CN"),
                         test_name);

// What libcups offers to a dialog, choice by choice and language by language.
TEST_P(Translations, ReachTheDialog) {
    const std::map<std::string, std::string> printer_default = {
        {"de", "Druckervorgabe"},
        {"es", "Predeterminado de la impresora"},
        {"fr", "Réglage par défaut de l’imprimante"},
        {"ja", "プリンターの既定値"},
        {"zh_CN", "打印机默认设置"}};
    for (const std::string& model : every_model()) {
        const OpenPpd ppd = open_ppd(model, GetParam());
        for (const char* option : {"PaperType", "PrintSpeed", "MediaMethod", "PostAction"}) {
            EXPECT_EQ(label(ppd.get(), option, "Normal"), printer_default.at(GetParam()))
                << model << ' ' << option;
        }
    }
}

// Two choices with one text could not be told apart.
TEST_P(Translations, AreShortAndDifferWithinAnOption) {
    for (const std::string& model : every_model()) {
        const OpenPpd english = open_ppd(model);
        const std::string text = ppd_text(model);
        for (const ppd_option_t* option = ppdFirstOption(english.get()); option != nullptr;
             option = ppdNextOption(english.get())) {
            std::map<std::string, std::string> choices;
            for (int i = 0; i < option->num_choices; ++i) {
                const std::string choice = option->choices[i].choice;
                const std::string start =
                    std::string("\n*") + GetParam() + '.' + option->keyword + ' ' + choice + '/';
                const std::size_t found = text.find(start);
                if (choice == "Custom" || std::string(option->keyword) == "PageRegion") {
                    continue;  // ppdc translates neither
                }
                ASSERT_NE(found, std::string::npos) << start;
                const std::size_t begin = found + start.size();
                const std::string shown = text.substr(begin, text.find(':', begin) - begin);
                EXPECT_FALSE(shown.empty()) << start;
                EXPECT_LE(shown.size(), kLongestText) << shown;
                EXPECT_TRUE(choices.emplace(shown, choice).second)
                    << start << shown << " is also " << choices[shown];
            }
        }
    }
}

}  // namespace
}  // namespace kelp_test
