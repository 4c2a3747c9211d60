#include "app/drawn_document.h"

#include <algorithm>
#include <memory>
#include <stdexcept>
#include <utility>

#include "app/abort_job.h"
#include "app/job_pages.h"
#include "app/picture_page.h"
#include "app/running_job.h"
#include "pictures/placed_picture.h"

namespace kelp_app {

namespace {

struct Canceled {};

}  // namespace

bool printPages(pappl_job_t* job, pappl_device_t* device, const std::string& path,
                unsigned int count, const std::function<void()>& whileItRuns) {
    papplJobSetImpressions(job, static_cast<int>(count));
    const JobOptions options = optionsFor(job, count);
    const cups_page_header2_t& header = options->header;
    const unsigned int quarters = quarterTurns(options->orientation_requested);
    PictureSize size{header.cupsWidth, header.cupsHeight};
    if (quarters != 0) {
        std::swap(size.width, size.height);
    }
    const std::unique_ptr<PageJob> pages = pagesFor(job, *options);
    for (unsigned int page = options->first_page; page <= std::min(options->last_page, count);
         ++page) {
        GreyPicture picture = pictureOfDocument(path, page, size, whileItRuns, kDrawingLimits);
        if (quarters != 0) {
            picture = turned(picture, quarters);
        }
        whileItRuns();
        if (!printCentred(job, device, header, picture, *pages)) {
            return false;
        }
    }
    return true;
}

bool printDrawn(pappl_job_t* job,
                const std::function<bool(const std::function<void()>& whileItRuns)>& print) {
    beginOnce(job);
    return guarded(job, [&] {
        try {
            return print([job] {
                if (papplJobIsCanceled(job)) {
                    throw Canceled();
                }
            });
        } catch (const Canceled&) {
            return true;
        } catch (const PictureError& error) {
            return abortJob(job, PAPPL_JREASON_DOCUMENT_FORMAT_ERROR, error.what());
        } catch (const std::runtime_error& error) {
            return abortJob(job, PAPPL_JREASON_ABORTED_BY_SYSTEM, error.what());
        }
    });
}

}  // namespace kelp_app
