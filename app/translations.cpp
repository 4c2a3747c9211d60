#include "app/translations.h"

#include <algorithm>

#include "app/vendor_attributes.h"

namespace kelp_app {

namespace {

/// Of the first model that has it; null where none has.
const char* textOf(std::string_view language, const char* option, const char* choice) {
    for (const kelp_models::Model& model : kelp_models::models()) {
        if (const char* text = kelp_models::translated(model, language, option, choice)) {
            return text;
        }
    }
    return nullptr;
}

void addLine(std::string& lines, const std::string& key, const char* text) {
    if (text == nullptr) {
        return;
    }
    lines += '"' + key + "\" = \"";
    for (const char* byte = text; *byte != '\0'; ++byte) {
        if (*byte == '"' || *byte == '\\') {
            lines += '\\';
        }
        lines += *byte;
    }
    lines += "\";\n";
}

/// The drivers' names for languages are a locale's, a browser's have a hyphen.
std::string tagOf(std::string language) {
    std::replace(language.begin(), language.end(), '_', '-');
    return language;
}

void add(pappl_system_t* system, const std::string& language) {
    const std::string path = "/kelp-" + language + ".strings";
    papplSystemAddStringsData(system, path.c_str(), tagOf(language).c_str(),
                              stringsOf(language).c_str());
    // The texts are copied by now. While there are such files, the framework (1.3) adds their
    // languages to the printer's attributes again for each client that asks.
    papplSystemRemoveResource(system, path.c_str());
}

}  // namespace

void addTranslations(pappl_system_t* system) {
    add(system, "en");
    for (const char* language : kelp_models::languages()) {
        add(system, language);
    }
}

std::string stringsOf(std::string_view language) {
    std::string lines;
    for (const VendorAttribute& attribute : vendorAttributes()) {
        addLine(lines, attribute.name, textOf(language, attribute.option, ""));
        if (attribute.kind != VendorAttribute::Kind::kKeyword) {
            continue;
        }
        for (const Keyword& keyword : attribute.keywords) {
            if (*keyword.choice != '\0') {
                addLine(lines, std::string(attribute.name) + '.' + keyword.keyword,
                        textOf(language, attribute.option, keyword.choice));
            }
        }
    }
    return lines;
}

}  // namespace kelp_app
