#ifndef KELP_MODELS_JOB_CHOICES_H
#define KELP_MODELS_JOB_CHOICES_H

#include <cstddef>
#include <string_view>
#include <vector>

#include "filter/settings.h"
#include "models/model.h"

namespace kelp_models {

/// What a job chooses of a model's options: one choice of each, at first its default.
class JobChoices {
  public:
    /// @param model one of models(), or another that outlives this
    explicit JobChoices(const Model& model);

    /// False, and nothing changed, where the model has no such option or the option no such choice.
    bool choose(std::string_view option, std::string_view choice);

    /// The name of the option's choice; null where the model has no such option.
    const char* chosen(std::string_view option) const;

    /// The model's conflicts both of whose choices are chosen.
    std::vector<Conflict> conflicts() const;

  private:
    const Model* model_;
    std::vector<std::size_t> chosen_;  // of each option
};

/// The settings that parseSettings reads from the model's printer description and the same choices,
/// but for the recording, which gets no name.
/// @param choices made for this model
/// @param pageSizeName of another size than the model's, or null, the default size is taken;
/// "Custom" measures 0 by 0
Settings settingsOf(const Model& model, const JobChoices& choices, const char* pageSizeName);

/// The same on a size of the job's own, whether the model takes it or not.
Settings customSettingsOf(const Model& model, const JobChoices& choices, float widthPoints,
                          float lengthPoints);

}  // namespace kelp_models

#endif
