#include "app/drawn_document.h"

#include <algorithm>
#include <cstddef>
#include <cstring>
#include <memory>
#include <stdexcept>
#include <vector>

#include "app/abort_job.h"
#include "app/job_pages.h"
#include "app/running_job.h"

namespace kelp_app {

namespace {

struct Canceled {};

/// Puts a picture that is not larger in the middle of a white page.
void writeCentred(const GreyPicture& picture, const cups_page_header2_t& page, PageJob& pages) {
    constexpr unsigned char kWhite = 255;
    const unsigned int left = (page.cupsWidth - picture.width) / 2;
    const unsigned int top = (page.cupsHeight - picture.height) / 2;
    const std::vector<unsigned char> white(page.cupsBytesPerLine, kWhite);
    std::vector<unsigned char> row = white;
    for (unsigned int y = 0; y < page.cupsHeight; ++y) {
        if (y < top || y - top >= picture.height) {
            pages.writeRow(y, white.data());
            continue;
        }
        std::memcpy(row.data() + left, &picture.pixels[std::size_t{y - top} * picture.width],
                    picture.width);
        pages.writeRow(y, row.data());
    }
}

}  // namespace

bool printPages(pappl_job_t* job, pappl_device_t* device, const std::string& path,
                unsigned int count, const std::function<void()>& whileItRuns) {
    papplJobSetImpressions(job, static_cast<int>(count));
    const JobOptions options = optionsFor(job, count);
    const cups_page_header2_t& header = options->header;
    const std::unique_ptr<PageJob> pages = pagesFor(job, *options);
    for (unsigned int page = options->first_page; page <= std::min(options->last_page, count);
         ++page) {
        const GreyPicture picture = pictureOfDocument(
            path, page, {header.cupsWidth, header.cupsHeight}, whileItRuns, kDrawingLimits);
        pages->startPage(header);
        writeCentred(picture, header, *pages);
        whileItRuns();
        if (!deliverOrAbort(job, device, pages->endPage())) {
            return false;
        }
        papplJobSetImpressionsCompleted(job, 1);
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
