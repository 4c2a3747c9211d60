#include "app/pdf_filter.h"

#include <functional>
#include <string>

#include "app/drawn_document.h"
#include "app/job_callbacks.h"

namespace kelp_app {

namespace {

constexpr unsigned int kMostPages = 500;

unsigned int countPages(const std::string& path, const std::function<void()>& whileItRuns) {
    const unsigned int pages = pagesOfPdf(path, whileItRuns, kDrawingLimits);
    if (pages == 0) {
        throw PictureError("a broken PDF: ghostscript finds no page in it");
    }
    if (pages > kMostPages) {
        throw PictureError("a PDF of " + std::to_string(pages) + " pages is over the limit of " +
                           std::to_string(kMostPages));
    }
    return pages;
}

bool printPdf(pappl_job_t* job, pappl_device_t* device, void* /*unused*/) {
    return printDrawn(job, [&](const std::function<void()>& whileItRuns) {
        const std::string path = papplJobGetFilename(job);
        return printPages(job, device, path, countPages(path, whileItRuns), whileItRuns);
    });
}

}  // namespace

void addPdfFilter(pappl_system_t* system) {
    papplSystemAddMIMEFilter(system, "application/pdf", kCommandsFormat, printPdf, nullptr);
}

}  // namespace kelp_app
