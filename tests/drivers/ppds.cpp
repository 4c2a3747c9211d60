#include "tests/drivers/ppds.h"

#include <cups/cups.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <sstream>

namespace kelp_test {

namespace {

std::string path_of(const std::string& model) {
    return KELP_PPD_DIR "/kelp-" + model + ".ppd";
}

}  // namespace

const Strings& every_model() {
    static const Strings models = {"label-2inch", "label-3inch", "label-4inch", "stencil-a5",
                                   "stencil-a4"};
    return models;
}

const Strings& label_models() {
    static const Strings models(every_model().begin(), every_model().begin() + 3);
    return models;
}

const Strings& stencil_models() {
    static const Strings models(every_model().begin() + 3, every_model().end());
    return models;
}

OpenPpd open_ppd(const std::string& model, const std::string& language) {
    OpenPpd ppd;
    if (language.empty()) {
        ppd.reset(ppdOpenFile(path_of(model).c_str()));
    } else {
        // libcups localises to the language of the environment.
        setenv("LANG", (language + ".UTF-8").c_str(), 1);
        cupsLangFlush();
        ppd.reset(ppdOpenFile(path_of(model).c_str()));
        if (ppd) {
            ppdLocalize(ppd.get());
        }
    }
    if (!ppd) {
        std::fprintf(stderr, "%s cannot be opened\n", path_of(model).c_str());
        std::abort();
    }
    ppdMarkDefaults(ppd.get());
    return ppd;
}

std::string ppd_text(const std::string& model) {
    std::ostringstream text;
    text << std::ifstream(path_of(model)).rdbuf();
    return text.str();
}

Strings choice_names(ppd_file_t* ppd, const char* option) {
    Strings names;
    const ppd_option_t* found = ppdFindOption(ppd, option);
    for (int i = 0; found != nullptr && i < found->num_choices; ++i) {
        names.emplace_back(found->choices[i].choice);
    }
    return names;
}

std::string default_choice(ppd_file_t* ppd, const char* option) {
    const ppd_choice_t* choice = ppdFindMarkedChoice(ppd, option);
    return choice != nullptr ? choice->choice : "(none)";
}

std::string label(ppd_file_t* ppd, const char* option, const char* choice) {
    const ppd_choice_t* found = ppdFindChoice(ppdFindOption(ppd, option), choice);
    return found != nullptr ? found->text : "(none)";
}

std::string attribute(ppd_file_t* ppd, const char* name) {
    const ppd_attr_t* found = ppdFindAttr(ppd, name, nullptr);
    return found != nullptr && found->value != nullptr ? found->value : "(none)";
}

std::string test_name(const testing::TestParamInfo<std::string>& model) {
    std::string name = model.param;
    std::replace(name.begin(), name.end(), '-', '_');
    return name;
}

}  // namespace kelp_test
