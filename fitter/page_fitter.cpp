#include "fitter/page_fitter.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string>
#include <vector>

#include "filter/log.h"
#include "fitter/fit_error.h"
#include "fitter/row_converter.h"

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

void fitPage(RasterInput& input, const cups_page_header2_t& header, const TargetPage& target,
             RasterOutput& output, int page) {
    const RowConverter convert = rowConverter(header, target.polarity);
    const unsigned char white = whiteSample(target.polarity);
    const std::size_t dots = std::min(header.cupsWidth, target.width);
    std::vector<unsigned char> row(header.cupsBytesPerLine);

    output.startPage(fittedHeader(header, target));
    for (unsigned int y = 0; y < header.cupsHeight; ++y) {
        if (!input.readRow(row.data(), header.cupsBytesPerLine)) {
            output.flush();
            throw FitError("The raster to print is cut short in row " + std::to_string(y + 1) +
                           " of the " + std::to_string(header.cupsHeight) + " of page " +
                           std::to_string(page) + ".");
        }
        if (y < target.height) {
            unsigned char* samples = output.nextRow();
            convert(row.data(), dots, samples);
            std::memset(samples + dots, white, target.width - dots);
        }
    }
    for (unsigned int y = header.cupsHeight; y < target.height; ++y) {
        std::memset(output.nextRow(), white, target.width);
    }
    output.flush();
}

}  // namespace

cups_page_header2_t fittedHeader(const cups_page_header2_t& input, const TargetPage& target) {
    cups_page_header2_t header = input;
    header.cupsWidth = target.width;
    header.cupsHeight = target.height;
    header.cupsBytesPerLine = target.width;
    header.cupsBitsPerColor = 8;
    header.cupsBitsPerPixel = 8;
    header.cupsColorOrder = CUPS_ORDER_CHUNKED;
    header.cupsColorSpace =
        target.polarity == Polarity::kBlackSpace ? CUPS_CSPACE_K : CUPS_CSPACE_W;
    header.cupsNumColors = 1;
    header.cupsCompression = 0;
    std::copy_n(target.header.PageSize, 2, header.PageSize);
    std::copy_n(target.header.cupsPageSize, 2, header.cupsPageSize);
    std::copy_n(target.header.ImagingBoundingBox, 4, header.ImagingBoundingBox);
    std::copy_n(target.header.cupsImagingBBox, 4, header.cupsImagingBBox);
    return header;
}

void fitPages(RasterInput& input, const TargetPage& target, RasterOutput& output) {
    cups_page_header2_t header;
    for (int page = 1; input.readHeader(header); ++page) {
        checkResolution(header, target);
        checkRows(header);
        kelpLogCommon(0, " Page %d: %u x %u dots fitted to %u x %u", page, header.cupsWidth,
                      header.cupsHeight, target.width, target.height);
        fitPage(input, header, target, output, page);
    }
}
