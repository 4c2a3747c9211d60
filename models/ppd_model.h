#ifndef KELP_MODELS_PPD_MODEL_H
#define KELP_MODELS_PPD_MODEL_H

#include <cstddef>
#include <map>
#include <string>
#include <utility>
#include <vector>

#include "fitter/row_converter.h"

/// A printer model as its PPD has it: what make_tables makes tables of. The same as in model.h
/// where nothing else is said.
namespace kelp_models::ppd {

struct Choice {
    std::string name;
    std::string text;
};

struct Option {
    Choice self;
    std::vector<Choice> choices;
    std::size_t defaultChoice;
};

struct PageSize {
    Choice self;
    unsigned int width;
    unsigned int length;
};

struct Conflict {
    Choice first;  ///< option and choice
    Choice second;
};

/// By option and choice; in one language.
using Texts = std::map<std::pair<std::string, std::string>, std::string>;

struct Model {
    std::string name;
    std::string makeAndModel;
    std::string deviceId;
    Polarity polarity;
    std::vector<PageSize> sizes;
    std::size_t defaultSize;
    unsigned int least[2];  ///< of custom sizes: width and length
    unsigned int most[2];
    std::string resolution;
    std::vector<Option> options;
    std::vector<Conflict> conflicts;
    std::vector<std::string> languages;  ///< without English
    std::map<std::string, Texts> texts;  ///< by language, with English
};

/// Throws std::runtime_error for a PPD that says more than a Model can hold.
Model readModel(const std::string& path);

}  // namespace kelp_models::ppd

#endif
