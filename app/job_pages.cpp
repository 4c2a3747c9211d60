#include "app/job_pages.h"

#include <algorithm>
#include <new>
#include <utility>

#include "app/abort_job.h"
#include "app/begun_jobs.h"
#include "app/choices.h"
#include "app/delivery.h"
#include "app/job_sender.h"
#include "app/media.h"
#include "app/running_job.h"
#include "app/socket_device.h"

namespace kelp_app {

namespace {

Settings settingsOfMedia(const kelp_models::Model& model, const kelp_models::JobChoices& choices,
                         const pappl_media_col_t& media) {
    const kelp_models::PageSize* size = sizeOfMedia(model, media.size_width, media.size_length);
    return kelp_models::settingsOf(model, choices, size != nullptr ? size->name : "Custom");
}

}  // namespace

JobOptions optionsFor(pappl_job_t* job, unsigned int pages) {
    JobOptions options(papplJobCreatePrintOptions(job, pages, false), papplJobDeletePrintOptions);
    if (!options) {
        throw std::bad_alloc();
    }
    return options;
}

std::unique_ptr<PageJob> pagesFor(pappl_job_t* job, const pappl_pr_options_t& options) {
    pappl_pr_driver_data_t printer;
    papplPrinterGetDriverData(papplJobGetPrinter(job), &printer);
    const auto& model = *static_cast<const kelp_models::Model*>(printer.extension);
    const pappl_media_col_t& media = options.media;
    const std::unique_ptr<ipp_t, decltype(&ippDelete)> attributes(
        papplPrinterGetDriverAttributes(papplJobGetPrinter(job)), ippDelete);
    const Settings settings =
        settingsOfMedia(model, choicesOf(model, options, printer, attributes.get()), media);
    return std::make_unique<PageJob>(settings,
                                     pageOfMedia(model, media.size_width, media.size_length),
                                     std::max(options.copies, 1));
}

bool deliverOrAbort(pappl_job_t* job, pappl_device_t* device,
                    const std::function<std::string_view()>& nextPiece) {
    pappl_printer_t* printer = papplJobGetPrinter(job);
    const std::unique_lock lock = senderLock(printer);
    PrinterSocket* socket = socketOf(printer, device);
    JobSender sender(job);
    for (std::string_view bytes = nextPiece(); !bytes.empty() && !papplJobIsCanceled(job);
         bytes = nextPiece()) {
        // Else when there is a connection.
        if (socket == nullptr || socket->isConnected()) {
            markBegun(job);
        }
        const bool isSent =
            socket != nullptr ? socket->send(bytes, sender) : deliver(device, bytes);
        if (!isSent && !papplJobIsCanceled(job)) {
            return abortJob(
                job, PAPPL_JREASON_ABORTED_BY_SYSTEM,
                "The printer was lost in the middle of the job; what was sent may have printed.");
        }
    }
    return true;
}

bool deliverOrAbort(pappl_job_t* job, pappl_device_t* device, Label label) {
    std::string_view commands = label.commands;
    const bool isSent =
        deliverOrAbort(job, device, [&] { return std::exchange(commands, std::string_view()); });
    if (isSent) {
        keepLastLabel(papplPrinterGetID(papplJobGetPrinter(job)), std::move(label));
    }
    return isSent;
}

}  // namespace kelp_app
