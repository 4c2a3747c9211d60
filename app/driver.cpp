#include "app/driver.h"

#include <algorithm>
#include <cstddef>
#include <cstdlib>
#include <iterator>
#include <map>
#include <string>
#include <string_view>
#include <thread>

#include "app/choices.h"
#include "app/job_callbacks.h"
#include "app/media.h"
#include "app/printer_status.h"
#include "app/running_step.h"
#include "app/test_label.h"
#include "app/vendor_attributes.h"
#include "filter/text.h"
#include "models/model.h"

namespace kelp_app {

namespace {

constexpr int kLabelsPerMinute = 30;
constexpr int kDarknessLevels = 31;

/// The media of each model; the framework keeps pointers to the names.
const std::vector<Media>& mediaOf(const kelp_models::Model& model) {
    static const std::map<const kelp_models::Model*, std::vector<Media>> all = [] {
        std::map<const kelp_models::Model*, std::vector<Media>> media;
        for (const kelp_models::Model& each : kelp_models::models()) {
            media.emplace(&each, supportedMedia(each));
        }
        return media;
    }();
    return all.at(&model);
}

bool isStencil(const kelp_models::Model& model) {
    return model.polarity == Polarity::kWhiteSpace;
}

std::string_view defaultChoice(const kelp_models::Model& model, const char* name) {
    const kelp_models::Option& option = *model.findOption(name);
    return option.choices[option.defaultChoice].name;
}

void copyText(char* field, std::size_t size, std::string_view text) {
    papplCopyString(field, std::string(text).c_str(), size);
}

pappl_media_tracking_t defaultTracking(const kelp_models::Model& model) {
    const std::string_view paper = defaultChoice(model, "PaperType");
    return paper == "Continue"    ? PAPPL_MEDIA_TRACKING_CONTINUOUS
           : paper == "LabelMark" ? PAPPL_MEDIA_TRACKING_MARK
                                  : PAPPL_MEDIA_TRACKING_GAP;
}

void describeMedia(const kelp_models::Model& model, pappl_pr_driver_data_t& printer) {
    const std::vector<Media>& media = mediaOf(model);
    printer.num_media = static_cast<int>(std::min<std::size_t>(media.size(), PAPPL_MAX_MEDIA));
    std::transform(media.begin(), media.begin() + printer.num_media, std::begin(printer.media),
                   [](const Media& each) { return each.name.c_str(); });
    printer.num_source = 1;
    printer.source[0] = isStencil(model) ? "main" : "main-roll";
    printer.num_type = 1;
    printer.type[0] = isStencil(model) ? "transfer" : "labels";
    printer.tracking_supported =
        PAPPL_MEDIA_TRACKING_CONTINUOUS | PAPPL_MEDIA_TRACKING_GAP | PAPPL_MEDIA_TRACKING_MARK;

    pappl_media_col_t& ready = printer.media_ready[0];
    const Media& first = media[model.defaultSize];
    copyText(ready.size_name, sizeof ready.size_name, first.name);
    ready.size_width = first.width;
    ready.size_length = first.length;
    copyText(ready.source, sizeof ready.source, printer.source[0]);
    copyText(ready.type, sizeof ready.type, printer.type[0]);
    ready.tracking = defaultTracking(model);
    printer.media_default = ready;
}

pappl_label_mode_t supportedModes(const kelp_models::Model& model) {
    const kelp_models::Option& action = *model.findOption("PostAction");
    unsigned int modes = 0;
    for (const LabelMode& each : labelModes()) {
        modes |= action.find(each.choice) != nullptr ? each.mode : 0U;
    }
    return static_cast<pappl_label_mode_t>(modes);
}

void describeVendor(const kelp_models::Model& model, pappl_pr_driver_data_t& printer) {
    for (const VendorAttribute& attribute : vendorAttributes()) {
        if (hasAttribute(model, attribute)) {
            printer.vendor[printer.num_vendor++] = attribute.name;
        }
    }
}

/// What IPP Everywhere requires besides and the framework leaves out.
void describeWhatTheStandardAsks(ipp_t* attributes) {
    ippAddBoolean(attributes, IPP_TAG_PRINTER, "preferred-attributes-supported", 0);
    for (const char* name :
         {"print-rendering-intent-default", "print-rendering-intent-supported"}) {
        ippAddString(attributes, IPP_TAG_PRINTER, IPP_CONST_TAG(IPP_TAG_KEYWORD), name, nullptr,
                     "auto");
    }
    ippAddString(attributes, IPP_TAG_PRINTER, IPP_CONST_TAG(IPP_TAG_KEYWORD),
                 "pwg-raster-document-sheet-back", nullptr, "normal");
}

/// The thread that asks first: the drivers are listed before anything else begins.
std::thread::id serversThread() {
    static const std::thread::id first = std::this_thread::get_id();
    return first;
}

/// Not the framework's "file:": whoever may add a printer would write into any file of the server's
/// user.
bool isPrinterDevice(std::string_view uri) {
    constexpr std::string_view kSchemes[] = {"socket:", "kelpip:", "usb:", "dnssd:", "snmp:"};
    return std::any_of(std::begin(kSchemes), std::end(kSchemes),
                       [&](std::string_view scheme) { return uri.starts_with(scheme); });
}

/// The framework frees all jobs when the server ends, those too that a thread still prints. What
/// waits is saved by then, so the process ends here. While the server runs no printer is removed by
/// its own thread. The framework is not asked: who removes a printer holds its lock.
void endWithRunningJobs(pappl_printer_t* /*printer*/, pappl_pr_driver_data_t* /*data*/) {
    if (std::this_thread::get_id() == serversThread() && RunningStep::areAny()) {
        std::_Exit(EXIT_SUCCESS);
    }
}

/// Nothing that the printer prints or does: who asked is in the log.
void identify(pappl_printer_t* printer, pappl_identify_actions_t /*actions*/, const char* message) {
    papplLogPrinter(printer, PAPPL_LOGLEVEL_INFO, "Identify: %s",
                    message != nullptr ? message : "no message");
}

}  // namespace

std::vector<pappl_pr_driver_t> driverList() {
    serversThread();
    std::vector<pappl_pr_driver_t> drivers;
    for (const kelp_models::Model& model : kelp_models::models()) {
        drivers.push_back({model.name, model.makeAndModel, model.deviceId, nullptr});
    }
    return drivers;
}

bool describePrinter(pappl_system_t* system, const char* driverName, const char* deviceUri,
                     const char* /*deviceId*/, pappl_pr_driver_data_t* printer, ipp_t** attributes,
                     void* /*unused*/) {
    const kelp_models::Model* model = kelp_models::findModel(driverName);
    if (model == nullptr) {
        papplLog(system, PAPPL_LOGLEVEL_ERROR, "There is no driver \"%s\".", driverName);
        return false;
    }
    if (deviceUri != nullptr && !isPrinterDevice(deviceUri)) {
        papplLog(system, PAPPL_LOGLEVEL_ERROR, "The device \"%s\" is no printer.", deviceUri);
        return false;
    }
    printer->extension = const_cast<kelp_models::Model*>(model);
    setJobCallbacks(*printer);
    printer->delete_cb = endWithRunningJobs;
    printer->status_cb = lookAtPrinter;
    printer->testpage_cb = makeTestLabelDocument;
    printer->identify_cb = identify;
    printer->identify_default = PAPPL_IDENTIFY_ACTIONS_SOUND;
    printer->identify_supported = PAPPL_IDENTIFY_ACTIONS_DISPLAY | PAPPL_IDENTIFY_ACTIONS_SOUND;

    copyText(printer->make_and_model, sizeof printer->make_and_model, model->makeAndModel);
    printer->kind = isStencil(*model) ? PAPPL_KIND_DOCUMENT | PAPPL_KIND_ROLL
                                      : PAPPL_KIND_LABEL | PAPPL_KIND_ROLL;
    printer->ppm = kLabelsPerMinute;
    printer->color_supported = PAPPL_COLOR_MODE_AUTO | PAPPL_COLOR_MODE_MONOCHROME;
    printer->color_default = PAPPL_COLOR_MODE_MONOCHROME;
    printer->raster_types = PAPPL_PWG_RASTER_TYPE_BLACK_8 | PAPPL_PWG_RASTER_TYPE_SGRAY_8;
    printer->quality_default = IPP_QUALITY_NORMAL;
    printer->scaling_default = PAPPL_SCALING_AUTO;
    // Pictures turn themselves; see picture_filter.
    printer->orient_default = IPP_ORIENT_PORTRAIT;
    printer->sides_supported = PAPPL_SIDES_ONE_SIDED;
    printer->sides_default = PAPPL_SIDES_ONE_SIDED;
    printer->num_resolution = 1;
    const int dotsPerInch = kelpTextToInt(model->resolution);
    printer->x_resolution[0] = printer->y_resolution[0] = dotsPerInch;
    printer->x_default = printer->y_default = dotsPerInch;
    // The head prints from edge to edge. Sizes without any margin alone would have names of their
    // own in the spooler's driverless queues, and the default none: those take a margin of no dot.
    printer->borderless = true;
    printer->left_right = printer->bottom_top = 1;  // hundredth of a millimetre

    describeMedia(*model, *printer);
    printer->mode_supported = supportedModes(*model);
    printer->speed_supported[0] = speedOf(2);
    printer->speed_supported[1] = speedOf(6);
    printer->speed_default = kPrinterSpeed;
    printer->darkness_supported = kDarknessLevels;
    printer->darkness_configured = kPrinterDarkness;
    printer->darkness_default = kPrinterDarkness;

    describeVendor(*model, *printer);
    *attributes = describeVendorAttributes(*model);
    describeWhatTheStandardAsks(*attributes);
    return true;
}

const char* recognizeDevice(const char* /*deviceInfo*/, const char* /*deviceUri*/,
                            const char* deviceId, void* /*unused*/) {
    if (deviceId == nullptr) {
        return nullptr;
    }
    for (const kelp_models::Model& model : kelp_models::models()) {
        const std::string_view own = model.deviceId;
        const std::size_t name = own.find("MDL:");
        const std::string_view field = own.substr(name, own.find(';', name) - name + 1);
        if (std::string_view(deviceId).find(field) != std::string_view::npos) {
            return model.name;
        }
    }
    return nullptr;
}

}  // namespace kelp_app
