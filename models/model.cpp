#include "models/model.h"

#include <algorithm>
#include <span>
#include <tuple>

#include "models/tables.h"

namespace kelp_models {

namespace {

template <typename Named>
const Named* findNamed(std::span<const Named> all, std::string_view name) {
    const auto found =
        std::find_if(all.begin(), all.end(), [name](const Named& one) { return name == one.name; });
    return found != all.end() ? &*found : nullptr;
}

const char* findText(std::span<const Text> texts, std::string_view option,
                     std::string_view choice) {
    using Key = std::tuple<std::string_view, std::string_view>;
    const Key key(option, choice);
    const auto keyOf = [](const Text& text) { return Key(text.option, text.choice); };
    const auto found =
        std::lower_bound(texts.begin(), texts.end(), key,
                         [&](const Text& text, const Key& wanted) { return keyOf(text) < wanted; });
    return found != texts.end() && keyOf(*found) == key ? found->text : nullptr;
}

}  // namespace

const Choice* Option::find(std::string_view choice) const {
    return findNamed(choices, choice);
}

const Option* Model::findOption(std::string_view option) const {
    return findNamed(options, option);
}

const PageSize* Model::findSize(std::string_view size) const {
    return findNamed(sizes, size);
}

std::span<const Model> models() {
    return kModels;
}

const Model* findModel(std::string_view name) {
    return findNamed(kModels, name);
}

std::span<const char* const> languages() {
    return kLanguages;
}

const char* translated(const Model& model, std::string_view language, std::string_view option,
                       std::string_view choice) {
    for (const std::string_view wanted : {language, std::string_view("en")}) {
        for (const Texts& texts : kTexts) {
            if (model.name == std::string_view(texts.model) && wanted == texts.language) {
                if (const char* text = findText(texts.texts, option, choice)) {
                    return text;
                }
            }
        }
    }
    return nullptr;
}

}  // namespace kelp_models
