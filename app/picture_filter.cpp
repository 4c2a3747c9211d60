#include "app/picture_filter.h"

#include <algorithm>
#include <cstdint>
#include <limits>
#include <string>
#include <string_view>

#include "app/abort_job.h"
#include "app/document_file.h"
#include "app/job_callbacks.h"
#include "app/job_pages.h"
#include "app/running_job.h"
#include "pictures/picture_formats.h"

namespace kelp_app {

namespace {

constexpr std::uint64_t kMostPixels = std::uint64_t{1} << 26U;
constexpr std::uint64_t kLongestSide = 16384;  // pixels
constexpr unsigned int kLeastDotsPerInch = 50;

/// Whether the framework's arithmetic, in int, can place the picture: whole, or so that it fills
/// the page, or in its own resolution.
bool canBePlaced(const GreyPicture& picture, const cups_page_header2_t& page) {
    const std::uint64_t longer = std::max(picture.width, picture.height);
    const std::uint64_t shorter = std::min(picture.width, picture.height);
    const std::uint64_t side = std::max(page.cupsWidth, page.cupsHeight);
    const std::uint64_t largest =
        std::max(side * longer / shorter, longer * page.HWResolution[0] / kLeastDotsPerInch);
    return longer <= kLongestSide && largest * longer < std::numeric_limits<int>::max();
}

/// 0, for unknown, where it is none that a picture has.
int resolutionOf(const GreyPicture& picture) {
    return picture.dotsPerInch < kLeastDotsPerInch ? 0 : static_cast<int>(picture.dotsPerInch);
}

bool printPixels(pappl_job_t* job, pappl_device_t* device, const GreyPicture& picture,
                 bool isPhoto) {
    const JobOptions options = optionsFor(job, 1);
    // A wide picture is turned on a long label, unless the job says how it lies.
    if (papplJobGetAttribute(job, "orientation-requested") == nullptr) {
        options->orientation_requested = IPP_ORIENT_NONE;
    }
    if (!canBePlaced(picture, options->header)) {
        throw FitError("A picture of " + std::to_string(picture.width) + " x " +
                       std::to_string(picture.height) + " pixels cannot be put on the page.");
    }
    return papplJobFilterImage(job, device, options.get(), picture.pixels.data(),
                               static_cast<int>(picture.width), static_cast<int>(picture.height), 1,
                               resolutionOf(picture), isPhoto);
}

bool printPicture(pappl_job_t* job, pappl_device_t* device, void* /*unused*/) {
    beginOnce(job);
    const bool isPhoto = std::string_view(papplJobGetFormat(job)) == "image/jpeg";
    return guarded(job, [&] {
        const std::string file = wholeDocument(papplJobGetFilename(job));
        GreyPicture picture;
        try {
            picture = isPhoto ? pictureOfJpeg(file, kMostPixels) : pictureOfPng(file, kMostPixels);
        } catch (const PictureError& error) {
            return abortJob(job, PAPPL_JREASON_DOCUMENT_FORMAT_ERROR, error.what());
        }
        return printPixels(job, device, picture, isPhoto);
    });
}

}  // namespace

void addPictureFilters(pappl_system_t* system) {
    // The framework asks for a way to the printer's own format before its own ways to raster.
    papplSystemAddMIMEFilter(system, "image/png", kCommandsFormat, printPicture, nullptr);
    papplSystemAddMIMEFilter(system, "image/jpeg", kCommandsFormat, printPicture, nullptr);
}

}  // namespace kelp_app
