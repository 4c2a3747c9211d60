#ifndef KELP_APP_VENDOR_ATTRIBUTES_H
#define KELP_APP_VENDOR_ATTRIBUTES_H

#include <cups/ipp.h>

#include <span>
#include <string>
#include <string_view>

#include "models/job_choices.h"
#include "models/model.h"

// The options that IPP has no attribute for, as attributes of our own: halftone, brightness,
// mirror, negative, print-method, media-sensing. Keywords say what happens, not what the driver's
// choice is called: the filter runs another halftone than most of its names say.

namespace kelp_app {

/// A keyword of an attribute, and the driver's choice that it stands for; empty where it leaves the
/// option as it is.
struct Keyword {
    const char* keyword;
    const char* choice;
};

struct VendorAttribute {
    enum class Kind { kKeyword, kBoolean, kInteger };

    const char* name;
    const char* option;  ///< of the model
    Kind kind;
    std::span<const Keyword> keywords;  ///< "false" and "true" for a boolean, none for an integer
};

/// All of them; a model has those whose option it has.
std::span<const VendorAttribute> vendorAttributes();

/// Whether a model has the attribute: its option, with at least two of the choices.
bool hasAttribute(const kelp_models::Model& model, const VendorAttribute& attribute);

/// The "-default" and "-supported" attributes of a model; the caller deletes them.
ipp_t* describeVendorAttributes(const kelp_models::Model& model);

/// Makes the choice that a value of an attribute stands for. False, with nothing chosen, for a
/// value that the model does not have.
bool chooseByAttribute(const kelp_models::Model& model, const VendorAttribute& attribute,
                       std::string_view value, kelp_models::JobChoices& choices);

/// The value that stands for the model's default choice, the first keyword where none does.
std::string defaultValue(const kelp_models::Model& model, const VendorAttribute& attribute);

}  // namespace kelp_app

#endif
