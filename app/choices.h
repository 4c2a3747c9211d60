#ifndef KELP_APP_CHOICES_H
#define KELP_APP_CHOICES_H

#include <pappl/pappl.h>

#include <span>

#include "models/job_choices.h"
#include "models/model.h"

namespace kelp_app {

// Values that leave a setting as it is in the printer itself.
constexpr int kPrinterSpeed = 0;     ///< of print-speed
constexpr int kPrinterDarkness = 0;  ///< of printer-darkness-configured and print-darkness, both

/// Speeds are hundredths of a millimetre a second.
int speedOf(int inchesPerSecond);

/// A label mode, and the choice of "PostAction" that it stands for.
struct LabelMode {
    unsigned int mode;
    const char* choice;
};
std::span<const LabelMode> labelModes();

/// The model's choices for a job: what its attributes ask for, the printer's defaults where they
/// ask for nothing or for what the model does not have.
///
/// Darkness is a percentage: what is configured in the printer's page and what the job adds to it,
/// held to 0 to 100, of the 30 steps of the print head.
/// @param printer of the job; its label mode has no attribute in a job
/// @param attributes of the printer; those of our own have their defaults there
kelp_models::JobChoices choicesOf(const kelp_models::Model& model,
                                  const pappl_pr_options_t& options,
                                  const pappl_pr_driver_data_t& printer, ipp_t* attributes);

}  // namespace kelp_app

#endif
