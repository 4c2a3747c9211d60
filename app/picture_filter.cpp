#include "app/picture_filter.h"

#include <cstdint>
#include <string>
#include <string_view>

#include "app/abort_job.h"
#include "app/document_file.h"
#include "app/job_callbacks.h"
#include "app/job_pages.h"
#include "app/picture_page.h"
#include "app/running_job.h"
#include "pictures/picture_formats.h"
#include "pictures/placed_picture.h"

namespace kelp_app {

namespace {

constexpr std::uint64_t kMostPixels = std::uint64_t{1} << 26U;
/// A file that tells less knows nothing of it.
constexpr std::uint32_t kLeastDotsPerInch = 50;

bool hasMargins(const pappl_media_col_t& media) {
    return media.left_margin != 0 || media.right_margin != 0 || media.top_margin != 0 ||
           media.bottom_margin != 0;
}

/// As the standard has it for each "print-scaling" (PWG 5100.13), the page's edges for its margins:
/// the head reaches them.
PictureScaling scalingOf(const pappl_pr_options_t& options, bool fitsInOwnSize) {
    switch (options.print_scaling) {
        case PAPPL_SCALING_NONE:
            return PictureScaling::Own;
        case PAPPL_SCALING_FILL:
            return PictureScaling::Fill;
        case PAPPL_SCALING_FIT:
            return PictureScaling::Fit;
        case PAPPL_SCALING_AUTO_FIT:
            return fitsInOwnSize ? PictureScaling::Own : PictureScaling::Fit;
        default:
            return fitsInOwnSize               ? PictureScaling::Own
                   : hasMargins(options.media) ? PictureScaling::Fit
                                               : PictureScaling::Fill;
    }
}

/// A wide picture is turned on a long label, unless the job or its printer says how it lies.
unsigned int turnsOf(pappl_job_t* job, const GreyPicture& picture,
                     const pappl_pr_options_t& options) {
    const ipp_orient_t asked = options.orientation_requested;
    const bool isUprightByDefault = asked == IPP_ORIENT_PORTRAIT &&
                                    papplJobGetAttribute(job, "orientation-requested") == nullptr;
    if (asked != IPP_ORIENT_NONE && !isUprightByDefault) {
        return quarterTurns(asked);
    }
    const cups_page_header2_t& page = options.header;
    return picture.width > picture.height && page.cupsWidth < page.cupsHeight
               ? quarterTurns(IPP_ORIENT_LANDSCAPE)
               : 0;
}

/// Not by the framework's own way: it takes one pixel of many, which loses thin lines, and divides
/// by a side that is smaller than a dot.
bool printPixels(pappl_job_t* job, pappl_device_t* device, GreyPicture picture) {
    papplJobSetImpressions(job, 1);
    const JobOptions options = optionsFor(job, 1);
    const cups_page_header2_t& page = options->header;
    if (const unsigned int quarters = turnsOf(job, picture, *options); quarters != 0) {
        picture = turned(picture, quarters);
    }
    if (picture.dotsPerInch < kLeastDotsPerInch) {
        picture.dotsPerInch = 0;
    }
    const PictureSize size{page.cupsWidth, page.cupsHeight};
    const std::uint32_t dotsPerInch = page.HWResolution[0];
    picture = placed(picture, size, dotsPerInch,
                     scalingOf(*options, fitsInOwnSize(picture, size, dotsPerInch)));
    return printCentred(job, device, page, picture, *pagesFor(job, *options));
}

bool printPicture(pappl_job_t* job, pappl_device_t* device, void* /*unused*/) {
    beginOnce(job);
    return guarded(job, [&] {
        const std::string file = wholeDocument(papplJobGetFilename(job));
        const bool isJpeg = std::string_view(papplJobGetFormat(job)) == "image/jpeg";
        try {
            return printPixels(
                job, device,
                isJpeg ? pictureOfJpeg(file, kMostPixels) : pictureOfPng(file, kMostPixels));
        } catch (const PictureError& error) {
            return abortJob(job, PAPPL_JREASON_DOCUMENT_FORMAT_ERROR, error.what());
        }
    });
}

}  // namespace

void addPictureFilters(pappl_system_t* system) {
    // The framework asks for a way to the printer's own format before its own ways to raster.
    papplSystemAddMIMEFilter(system, "image/png", kCommandsFormat, printPicture, nullptr);
    papplSystemAddMIMEFilter(system, "image/jpeg", kCommandsFormat, printPicture, nullptr);
}

}  // namespace kelp_app
