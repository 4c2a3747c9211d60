#include "models/job_choices.h"

#include <algorithm>
#include <cstddef>
#include <iterator>

#include "filter/halftone_type.h"
#include "filter/ppd_lookup.h"
#include "filter/text.h"

namespace kelp_models {

namespace {

constexpr const char* kCustom = "Custom";

/// What the filter reads where the model has no such option.
const char* textOf(const JobChoices& choices, const char* option) {
    const char* choice = choices.chosen(option);
    return choice != nullptr ? choice : "";
}

template <std::size_t Size>
void setText(char (&field)[Size], const char* text) {
    kelpStrCpy(field, text, Size);
}

Settings settingsOn(const Model& model, const JobChoices& choices, const char* pageSize,
                    float width, float length) {
    const auto text = [&](const char* option) { return textOf(choices, option); };
    Settings settings = {};
    setText(settings.PageSize, pageSize);
    settings.pageWidth = kelpPointsToMillimetres(width);
    settings.pageHeight = kelpPointsToMillimetres(length);
    setText(settings.Resolution, model.resolution);
    setText(settings.MediaMethod, text("MediaMethod"));
    setText(settings.PaperType, text("PaperType"));
    settings.GapsHeight = kelpTextToInt(text("GapsHeight"));
    setText(settings.PostAction, text("PostAction"));
    setText(settings.Occurrence, text("Occurrence"));
    setText(settings.Origin, text("Origin"));
    settings.MirrorImage = kelpChoiceToBool(text("MirrorImage"));
    settings.NegativeImage = kelpChoiceToBool(text("NegativeImage"));
    settings.halftoneType = kelpHalftoneTypeFromStr(text("HalftoneType"));
    setText(settings.PrintSpeed, text("PrintSpeed"));
    settings.Darkness = kelpTextToInt(text("Darkness"));
    settings.Brightness = kelpTextToInt(text("Brightness"));
    settings.ForceRotation = kelpTextToInt(text("ForceRotation"));
    return settings;
}

}  // namespace

JobChoices::JobChoices(const Model& model) : model_(&model) {
    chosen_.reserve(model.options.size());
    std::transform(model.options.begin(), model.options.end(), std::back_inserter(chosen_),
                   [](const Option& option) { return option.defaultChoice; });
}

bool JobChoices::choose(std::string_view option, std::string_view choice) {
    const Option* known = model_->findOption(option);
    const Choice* found = known != nullptr ? known->find(choice) : nullptr;
    if (found == nullptr) {
        return false;
    }
    const auto index = static_cast<std::size_t>(known - model_->options.data());
    chosen_[index] = static_cast<std::size_t>(found - known->choices.data());
    return true;
}

const char* JobChoices::chosen(std::string_view option) const {
    const Option* known = model_->findOption(option);
    if (known == nullptr) {
        return nullptr;
    }
    const auto index = static_cast<std::size_t>(known - model_->options.data());
    return known->choices[chosen_[index]].name;
}

std::vector<Conflict> JobChoices::conflicts() const {
    const auto isChosen = [this](const char* option, const char* choice) {
        const char* name = chosen(option);
        return name != nullptr && std::string_view(name) == choice;
    };
    std::vector<Conflict> found;
    std::copy_if(model_->conflicts.begin(), model_->conflicts.end(), std::back_inserter(found),
                 [&](const Conflict& conflict) {
                     return isChosen(conflict.option, conflict.choice) &&
                            isChosen(conflict.otherOption, conflict.otherChoice);
                 });
    return found;
}

Settings settingsOf(const Model& model, const JobChoices& choices, const char* pageSizeName) {
    const std::string_view name = pageSizeName != nullptr ? pageSizeName : "";
    if (name == kCustom) {
        return customSettingsOf(model, choices, 0.0F, 0.0F);
    }
    const PageSize* known = model.findSize(name);
    const PageSize& size = known != nullptr ? *known : model.sizes[model.defaultSize];
    return settingsOn(model, choices, size.name, static_cast<float>(size.width),
                      static_cast<float>(size.length));
}

Settings customSettingsOf(const Model& model, const JobChoices& choices, float widthPoints,
                          float lengthPoints) {
    return settingsOn(model, choices, kCustom, widthPoints, lengthPoints);
}

}  // namespace kelp_models
