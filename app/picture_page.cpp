#include "app/picture_page.h"

#include <cstddef>
#include <cstring>
#include <vector>

#include "app/job_pages.h"

namespace kelp_app {

namespace {

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

unsigned int quarterTurns(ipp_orient_t orientation) {
    return orientation == IPP_ORIENT_LANDSCAPE           ? 1
           : orientation == IPP_ORIENT_REVERSE_LANDSCAPE ? 3
                                                         : 0;
}

bool printCentred(pappl_job_t* job, pappl_device_t* device, const cups_page_header2_t& page,
                  const GreyPicture& picture, PageJob& pages) {
    pages.startPage(page);
    writeCentred(picture, page, pages);
    if (papplJobIsCanceled(job)) {
        return true;
    }
    if (!deliverOrAbort(job, device, pages.endPage())) {
        return false;
    }
    papplJobSetImpressionsCompleted(job, 1);
    return true;
}

}  // namespace kelp_app
