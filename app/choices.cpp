#include "app/choices.h"

#include <algorithm>
#include <string>

#include "app/units.h"
#include "app/vendor_attributes.h"

namespace kelp_app {

namespace {

constexpr int kWholeDarkness = 100;  // per cent
constexpr int kDarkest = 30;         // steps of the print head

constexpr LabelMode kLabelModes[] = {{PAPPL_LABEL_MODE_TEAR_OFF, "TearOff"},
                                     {PAPPL_LABEL_MODE_PEEL_OFF, "PeelOff"},
                                     {PAPPL_LABEL_MODE_CUTTER, "Cut"}};

void chooseTracking(pappl_media_tracking_t tracking, kelp_models::JobChoices& choices) {
    if ((tracking & PAPPL_MEDIA_TRACKING_CONTINUOUS) != 0) {
        choices.choose("PaperType", "Continue");
        choices.choose("GapsHeight", "0");
    } else if ((tracking & (PAPPL_MEDIA_TRACKING_GAP | PAPPL_MEDIA_TRACKING_MARK)) != 0) {
        const bool hasGaps = (tracking & PAPPL_MEDIA_TRACKING_GAP) != 0;
        choices.choose("PaperType", hasGaps ? "LabelGaps" : "LabelMark");
        // The printer measures the gap itself; the setup block only tells 0 from more.
        choices.choose("GapsHeight", "3");
    }
}

void chooseMode(pappl_label_mode_t mode, kelp_models::JobChoices& choices) {
    for (const LabelMode& each : kLabelModes) {
        if ((mode & each.mode) != 0) {
            choices.choose("PostAction", each.choice);
            return;
        }
    }
}

void chooseDarkness(int configured, int added, kelp_models::JobChoices& choices) {
    if (configured != kPrinterDarkness || added != kPrinterDarkness) {
        const int percent = std::clamp(configured + added, 0, kWholeDarkness);
        const int steps = (percent * kDarkest + kWholeDarkness / 2) / kWholeDarkness;
        choices.choose("Darkness", std::to_string(steps));
    }
}

void chooseSpeed(int speed, kelp_models::JobChoices& choices) {
    if (speed != kPrinterSpeed) {
        choices.choose("PrintSpeed",
                       std::to_string((speed + kHundredthsPerInch / 2) / kHundredthsPerInch));
    }
}

/// The framework puts no defaults of ours into a job. Empty where there is none.
std::string printersDefault(ipp_t* attributes, const VendorAttribute& attribute) {
    const std::string name = std::string(attribute.name) + "-default";
    ipp_attribute_t* found = ippFindAttribute(attributes, name.c_str(), IPP_TAG_ZERO);
    char text[128] = "";
    if (found != nullptr) {
        ippAttributeString(found, text, sizeof text);
    }
    return text;
}

}  // namespace

std::span<const LabelMode> labelModes() {
    return kLabelModes;
}

int speedOf(int inchesPerSecond) {
    return inchesPerSecond * kHundredthsPerInch;
}

kelp_models::JobChoices choicesOf(const kelp_models::Model& model,
                                  const pappl_pr_options_t& options,
                                  const pappl_pr_driver_data_t& printer, ipp_t* attributes) {
    kelp_models::JobChoices choices(model);
    chooseTracking(options.media.tracking, choices);
    chooseMode(printer.mode_configured, choices);
    chooseDarkness(options.darkness_configured, options.print_darkness, choices);
    chooseSpeed(options.print_speed, choices);
    if (options.orientation_requested == IPP_ORIENT_REVERSE_PORTRAIT) {
        choices.choose("Origin", "Rotation180");
    }
    for (const VendorAttribute& attribute : vendorAttributes()) {
        if (!hasAttribute(model, attribute)) {
            continue;
        }
        chooseByAttribute(model, attribute, printersDefault(attributes, attribute), choices);
        if (const char* value = cupsGetOption(attribute.name, options.num_vendor, options.vendor)) {
            chooseByAttribute(model, attribute, value, choices);
        }
    }
    return choices;
}

}  // namespace kelp_app
