#include "models/ppd_model.h"

#include <cups/cups.h>
#include <cups/language.h>
#include <cups/ppd.h>

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <memory>
#include <sstream>
#include <stdexcept>

#include "fitter/target_page.h"

namespace kelp_models::ppd {

namespace {

struct ClosePpd {
    void operator()(ppd_file_t* ppd) const { ppdClose(ppd); }
};
using OwnedPpd = std::unique_ptr<ppd_file_t, ClosePpd>;

[[noreturn]] void refuse(const std::string& what) {
    throw std::runtime_error(what);
}

void require(bool condition, const std::string& what) {
    if (!condition) {
        refuse(what);
    }
}

/// libcups keeps no translations but those to the language of the environment.
OwnedPpd openPpd(const std::string& path, const std::string& language) {
    for (const char* variable : {"LC_CTYPE", "LC_MESSAGES"}) {
        require(setenv(variable, (language + ".UTF-8").c_str(), 1) == 0, "no environment");
    }
    cupsLangFlush();
    OwnedPpd ppd(ppdOpenFile(path.c_str()));
    require(ppd != nullptr, "no PPD");
    return ppd;
}

std::string attribute(ppd_file_t* ppd, const char* name) {
    const ppd_attr_t* found = ppdFindAttr(ppd, name, nullptr);
    const char* value = found != nullptr ? found->value : nullptr;
    if (value == nullptr || *value == '\0') {
        refuse(std::string("no ") + name);
    }
    return value;
}

unsigned int wholePoints(float points, const std::string& what) {
    require(points >= 1.0F && points < 100000.0F && points == std::floor(points),
            what + " is no whole number of points");
    return static_cast<unsigned int>(points);
}

ppd_option_t* optionOf(ppd_file_t* ppd, const char* name) {
    ppd_option_t* found = ppdFindOption(ppd, name);
    require(found != nullptr, std::string("no option ") + name);
    return found;
}

bool isCustom(const char* choice) {
    return std::strcmp(choice, "Custom") == 0;
}

std::string onlyChoice(ppd_file_t* ppd, const char* option) {
    const ppd_option_t* found = optionOf(ppd, option);
    require(found->num_choices == 1, std::string("not one choice of ") + option);
    return found->choices[0].choice;
}

void readSizes(ppd_file_t* ppd, Model& model) {
    ppd_option_t* option = optionOf(ppd, "PageSize");
    for (int i = 0; i < option->num_choices; ++i) {
        const ppd_choice_t& choice = option->choices[i];
        if (isCustom(choice.choice)) {
            continue;
        }
        if (std::strcmp(choice.choice, option->defchoice) == 0) {
            model.defaultSize = model.sizes.size();
        }
        const ppd_size_t* size = ppdPageSize(ppd, choice.choice);
        const std::string name = choice.choice;
        if (size == nullptr) {
            refuse("no PaperDimension of " + name);
        }
        require(size->left == 0.0F && size->bottom == 0.0F && size->right == size->width &&
                    size->top == size->length,
                name + " has margins");
        model.sizes.push_back({{name, choice.text},
                               wholePoints(size->width, name + "'s width"),
                               wholePoints(size->length, name + "'s length")});
    }
    require(model.defaultSize < model.sizes.size(), "the default of PageSize is none of its sizes");

    require(ppd->variable_sizes != 0, "no custom sizes");
    require(std::all_of(ppd->custom_margins, ppd->custom_margins + 4,
                        [](float margin) { return margin == 0.0F; }),
            "custom sizes have margins");
    for (int i = 0; i < 2; ++i) {
        model.least[i] = wholePoints(ppd->custom_min[i], "the smallest custom size");
        model.most[i] = wholePoints(ppd->custom_max[i], "the largest custom size");
    }
}

Option readOption(ppd_file_t* ppd, const ppd_option_t& from) {
    const std::string name = from.keyword;
    require(from.ui == PPD_UI_PICKONE || from.ui == PPD_UI_BOOLEAN,
            name + " takes several choices at once");
    require(ppdFindCustomOption(ppd, from.keyword) == nullptr, name + " takes custom values");
    Option option{{name, from.text}, {}, static_cast<std::size_t>(from.num_choices)};
    for (int i = 0; i < from.num_choices; ++i) {
        if (std::strcmp(from.choices[i].choice, from.defchoice) == 0) {
            option.defaultChoice = static_cast<std::size_t>(i);
        }
        option.choices.push_back({from.choices[i].choice, from.choices[i].text});
    }
    require(option.defaultChoice < option.choices.size(),
            "the default of " + name + " is none of its choices");
    return option;
}

/// The options that the tables have in other places, or not at all.
bool isOfThePage(const std::string& option) {
    return option == "PageSize" || option == "PageRegion" || option == "PaperDimension" ||
           option == "ImageableArea" || option == "Resolution" || option == "ColorModel";
}

void readOptions(ppd_file_t* ppd, Model& model) {
    for (int i = 0; i < ppd->num_groups; ++i) {
        const ppd_group_t& group = ppd->groups[i];
        require(group.num_subgroups == 0, std::string(group.name) + " has groups of its own");
        for (int j = 0; j < group.num_options; ++j) {
            if (!isOfThePage(group.options[j].keyword)) {
                model.options.push_back(readOption(ppd, group.options[j]));
            }
        }
    }
}

void checkOffered(const Model& model, const Choice& chosen) {
    for (const Option& option : model.options) {
        if (option.self.name == chosen.name &&
            std::any_of(option.choices.begin(), option.choices.end(),
                        [&](const Choice& choice) { return choice.name == chosen.text; })) {
            return;
        }
    }
    throw std::runtime_error("UIConstraints name \"" + chosen.name + " " + chosen.text +
                             "\", which is no choice of an option");
}

void readConflicts(ppd_file_t* ppd, Model& model) {
    require(ppdFindAttr(ppd, "cupsUIConstraints", nullptr) == nullptr,
            "cupsUIConstraints are not understood");
    const auto same = [](const Choice& one, const Choice& other) {
        return one.name == other.name && one.text == other.text;
    };
    for (int i = 0; i < ppd->num_consts; ++i) {
        const ppd_const_t& from = ppd->consts[i];
        const Conflict conflict{{from.option1, from.choice1}, {from.option2, from.choice2}};
        checkOffered(model, conflict.first);
        checkOffered(model, conflict.second);
        const bool known = std::any_of(model.conflicts.begin(), model.conflicts.end(),
                                       [&](const Conflict& earlier) {
                                           return (same(earlier.first, conflict.first) &&
                                                   same(earlier.second, conflict.second)) ||
                                                  (same(earlier.first, conflict.second) &&
                                                   same(earlier.second, conflict.first));
                                       });
        if (!known) {
            model.conflicts.push_back(conflict);
        }
    }
}

void readLanguages(ppd_file_t* ppd, Model& model) {
    std::istringstream all(attribute(ppd, "cupsLanguages"));
    for (std::string language; all >> language;) {
        if (language != "en") {
            model.languages.push_back(language);
        }
    }
    std::sort(model.languages.begin(), model.languages.end());
}

Texts englishTexts(ppd_file_t* ppd, const Model& model) {
    Texts texts;
    texts[{"PageSize", ""}] = optionOf(ppd, "PageSize")->text;
    for (const PageSize& size : model.sizes) {
        texts[{"PageSize", size.self.name}] = size.self.text;
    }
    for (const Option& option : model.options) {
        texts[{option.self.name, ""}] = option.self.text;
        for (const Choice& choice : option.choices) {
            texts[{option.self.name, choice.name}] = choice.text;
        }
    }
    return texts;
}

/// Of the texts that the language has.
Texts translatedTexts(ppd_file_t* ppd, const std::string& language, const Texts& english) {
    Texts texts;
    for (const auto& [key, text] : english) {
        const auto& [option, choice] = key;
        const std::string name = language + '.' + (choice.empty() ? "Translation" : option);
        const ppd_attr_t* found =
            ppdFindAttr(ppd, name.c_str(), (choice.empty() ? option : choice).c_str());
        if (found != nullptr && *found->text != '\0') {
            texts[key] = found->text;
        }
    }
    return texts;
}

Polarity polarityOf(const std::string& path, const Model& model) {
    const TargetPage page = readTargetPage(path.c_str(), "");
    require(page.header.HWResolution[0] == page.header.HWResolution[1] &&
                model.resolution == std::to_string(page.header.HWResolution[0]) + "dpi",
            "the Resolution " + model.resolution + " is not named after what it sets");
    return page.polarity;
}

Model readNamed(const std::string& path) {
    const OwnedPpd ppd = openPpd(path, "en");
    Model model{};
    model.name = std::filesystem::path(path).stem().string();
    model.defaultSize = static_cast<std::size_t>(-1);
    require(ppd->modelname != nullptr, "no ModelName");
    model.makeAndModel = ppd->modelname;
    model.deviceId = attribute(ppd.get(), "1284DeviceID");
    model.resolution = onlyChoice(ppd.get(), "Resolution");
    onlyChoice(ppd.get(), "ColorModel");
    model.polarity = polarityOf(path, model);
    readSizes(ppd.get(), model);
    readOptions(ppd.get(), model);
    readConflicts(ppd.get(), model);
    readLanguages(ppd.get(), model);
    model.texts["en"] = englishTexts(ppd.get(), model);
    for (const std::string& language : model.languages) {
        const OwnedPpd translated = openPpd(path, language);
        model.texts[language] = translatedTexts(translated.get(), language, model.texts["en"]);
        require(!model.texts[language].empty(), "nothing is translated to " + language);
    }
    return model;
}

}  // namespace

Model readModel(const std::string& path) {
    try {
        return readNamed(path);
    } catch (const std::runtime_error& error) {
        throw std::runtime_error(path + ": " + error.what());
    }
}

}  // namespace kelp_models::ppd
