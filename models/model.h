#ifndef KELP_MODELS_MODEL_H
#define KELP_MODELS_MODEL_H

#include <cstddef>
#include <span>
#include <string_view>

#include "fitter/row_converter.h"

/// What each printer model offers, as constant tables: no printer description is read for it. Names
/// are compared exactly.
namespace kelp_models {

struct Choice {
    const char* name;  ///< as the filter reads it
    const char* text;  ///< English
};

/// A setting of the job other than its page size.
struct Option {
    const char* name;
    const char* text;
    std::span<const Choice> choices;
    std::size_t defaultChoice;

    /// Null where there is none of the name.
    const Choice* find(std::string_view choice) const;
};

/// Without margins, in points.
struct PageSize {
    const char* name;
    const char* text;
    unsigned int width;
    unsigned int length;
};

/// Two choices that cannot print sensibly together. Each pair stands once, in either order.
struct Conflict {
    const char* option;
    const char* choice;
    const char* otherOption;
    const char* otherChoice;
};

struct Model {
    const char* name;          ///< "kelp-label-4inch"
    const char* makeAndModel;  ///< "Kelp Label Printer 4 inch"
    const char* deviceId;      ///< as the device itself answers: "MFG:Kelp;MDL:...;CMD:ZPL;"
    Polarity polarity;
    std::span<const PageSize> sizes;
    std::size_t defaultSize;
    unsigned int minWidth;  ///< of custom sizes, in points; the other three likewise
    unsigned int minLength;
    unsigned int maxWidth;
    unsigned int maxLength;
    const char* resolution;  ///< the only one: "203dpi", the same both ways
    std::span<const Option> options;
    std::span<const Conflict> conflicts;

    /// Null where there is none of the name.
    const Option* findOption(std::string_view option) const;
    /// Null where there is none of the name; "Custom" is none.
    const PageSize* findSize(std::string_view size) const;
};

/// From the narrowest label printer to the widest stencil printer.
std::span<const Model> models();

/// Null where there is none of the name.
const Model* findModel(std::string_view name);

/// Those that the texts are translated to: "de", "es", "fr", "ja", "zh_CN".
std::span<const char* const> languages();

/// The text, in UTF-8, of an option, where `choice` is empty, or of one of its choices. Page sizes
/// are choices of the option "PageSize". English where the language has none; null where the model
/// has no such option or choice.
const char* translated(const Model& model, std::string_view language, std::string_view option,
                       std::string_view choice);

}  // namespace kelp_models

#endif
