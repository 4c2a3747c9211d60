#include "app/job_callbacks.h"

#include <algorithm>
#include <memory>
#include <string>
#include <string_view>

#include "app/abort_job.h"
#include "app/document_file.h"
#include "app/job_pages.h"
#include "app/running_job.h"
#include "app/running_step.h"
#include "app/test_label.h"

namespace kelp_app {

namespace {

/// A raster as it comes.
struct RasterJob {
    RunningStep running;
    std::unique_ptr<PageJob> pages;
};

RasterJob* rasterOf(pappl_job_t* job) {
    return static_cast<RasterJob*>(papplJobGetData(job));
}

PageJob& pagesOf(pappl_job_t* job) {
    return *rasterOf(job)->pages;
}

bool startJob(pappl_job_t* job, pappl_pr_options_t* options, pappl_device_t* /*device*/) {
    return guarded(job, [&] {
        auto raster = std::make_unique<RasterJob>();
        raster->pages = pagesFor(job, *options);
        // The printer makes the copies; the framework would send each page again.
        options->copies = 1;
        papplJobSetData(job, raster.release());
        return true;
    });
}

bool startPage(pappl_job_t* job, pappl_pr_options_t* options, pappl_device_t* /*device*/,
               unsigned int /*page*/) {
    return guarded(job, [&] {
        pagesOf(job).startPage(options->header);
        return true;
    });
}

bool writeRow(pappl_job_t* job, pappl_pr_options_t* /*options*/, pappl_device_t* /*device*/,
              unsigned int y, const unsigned char* row) {
    pagesOf(job).writeRow(y, row);
    return true;
}

bool endPage(pappl_job_t* job, pappl_pr_options_t* /*options*/, pappl_device_t* device,
             unsigned int /*page*/) {
    // The rest of a cancelled page is made up.
    if (papplJobIsCanceled(job)) {
        return true;
    }
    return guarded(job, [&] { return deliverOrAbort(job, device, pagesOf(job).endPage()); });
}

bool endJob(pappl_job_t* job, pappl_pr_options_t* /*options*/, pappl_device_t* /*device*/) {
    std::unique_ptr<RasterJob>(rasterOf(job)).reset();
    papplJobSetData(job, nullptr);
    return true;
}

bool printCommands(pappl_job_t* job, pappl_pr_options_t* options, pappl_device_t* device) {
    beginOnce(job);
    return guarded(job, [&] {
        DocumentFile file(papplJobGetFilename(job));
        int copies = std::max(options->copies, 1);
        return deliverOrAbort(job, device, [&] {
            std::string_view piece = file.next();
            if (piece.empty() && --copies > 0) {
                file.rewind();
                piece = file.next();
            }
            return piece;
        });
    });
}

/// Raster is printed as it comes, in the client's thread. Only the thread of a job that is started
/// a second time asks for a way from its file.
bool endSecondThread(pappl_job_t* job, pappl_device_t* /*device*/, void* /*unused*/) {
    leaveToOtherThread(job);
}

}  // namespace

const char* recognizeCommands(const unsigned char* header, size_t size, void* /*unused*/) {
    const std::string_view begin(reinterpret_cast<const char*>(header), size);
    if (begin.starts_with(kTestLabelDocument)) {
        return kTestLabelFormat;
    }
    for (const char* command : {"^XA", "^XX", "~DG", "SIZE "}) {
        if (begin.starts_with(command)) {
            return kCommandsFormat;
        }
    }
    return nullptr;
}

void addRasterFilters(pappl_system_t* system) {
    for (const char* format : {"image/pwg-raster", "image/urf"}) {
        papplSystemAddMIMEFilter(system, format, kCommandsFormat, endSecondThread, nullptr);
    }
}

void setJobCallbacks(pappl_pr_driver_data_t& printer) {
    printer.format = kCommandsFormat;
    printer.printfile_cb = printCommands;
    printer.rstartjob_cb = startJob;
    printer.rstartpage_cb = startPage;
    printer.rwriteline_cb = writeRow;
    printer.rendpage_cb = endPage;
    printer.rendjob_cb = endJob;
}

}  // namespace kelp_app
