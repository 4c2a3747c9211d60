#include "fitter/row_fitter.h"

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <string>

#include "fitter/fit_error.h"

namespace {

constexpr unsigned int kLongestRow = 1U << 24U;  // in bytes; a wider page is no page

std::string resolutionText(const cups_page_header2_t& header) {
    const std::string across = std::to_string(header.HWResolution[0]);
    const std::string down = std::to_string(header.HWResolution[1]);
    return (across == down ? across : across + "x" + down) + "dpi";
}

void checkResolution(const cups_page_header2_t& header, const TargetPage& target) {
    if (header.HWResolution[0] != target.header.HWResolution[0] ||
        header.HWResolution[1] != target.header.HWResolution[1]) {
        const std::string wanted = resolutionText(target.header);
        throw FitError("The page comes in " + resolutionText(header) + ", the printer prints " +
                       wanted + ". Choose Resolution=" + wanted + ".");
    }
}

void checkRows(const cups_page_header2_t& header) {
    const std::uint64_t needed =
        (std::uint64_t{header.cupsWidth} * header.cupsBitsPerPixel + 7) / 8;
    if (header.cupsWidth == 0) {
        throw FitError("The raster to print is damaged: a page has a cupsWidth of 0.");
    }
    if (header.cupsBytesPerLine < needed) {
        throw FitError("The raster to print is damaged: a cupsBytesPerLine of " +
                       std::to_string(header.cupsBytesPerLine) + " is less than the " +
                       std::to_string(needed) + " that a cupsWidth of " +
                       std::to_string(header.cupsWidth) + " needs.");
    }
    if (header.cupsBytesPerLine > kLongestRow) {
        throw FitError("The page is too wide: a cupsBytesPerLine of " +
                       std::to_string(header.cupsBytesPerLine) + " is more than " +
                       std::to_string(kLongestRow) + ".");
    }
}

}  // namespace

void checkPage(const cups_page_header2_t& page, const TargetPage& target) {
    checkResolution(page, target);
    checkRows(page);
}

RowFitter::RowFitter(const cups_page_header2_t& page, const TargetPage& target)
    : convert_(rowConverter(page, target.polarity)),
      white_(whiteSample(target.polarity)),
      dots_(std::min(page.cupsWidth, target.width)),
      width_(target.width) {}

void RowFitter::fit(const unsigned char* row, unsigned char* samples) const {
    convert_(row, dots_, samples);
    std::memset(samples + dots_, white_, width_ - dots_);
}

void RowFitter::makeWhite(unsigned char* samples) const {
    std::memset(samples, white_, width_);
}
