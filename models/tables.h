#ifndef KELP_MODELS_TABLES_H
#define KELP_MODELS_TABLES_H

#include <span>

#include "models/model.h"

// What make_tables prints; model.h says how it is read.
namespace kelp_models {

/// A text of an option, where `choice` is empty, or of a choice.
struct Text {
    const char* option;
    const char* choice;
    const char* text;
};

/// The texts of a model in a language, in the order of their options and choices as strings.
struct Texts {
    const char* model;
    const char* language;
    std::span<const Text> texts;
};

extern const std::span<const Model> kModels;
extern const std::span<const char* const> kLanguages;
/// Of every model in every language and in English, "en".
extern const std::span<const Texts> kTexts;

}  // namespace kelp_models

#endif
