#include "fitter/page_fitter.h"

#include <algorithm>
#include <string>
#include <vector>

#include "filter/log.h"
#include "fitter/fit_error.h"
#include "fitter/row_fitter.h"

namespace {

void fitPage(RasterInput& input, const cups_page_header2_t& header, const TargetPage& target,
             RasterOutput& output, int page) {
    const RowFitter fitter(header, target);
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
            fitter.fit(row.data(), output.nextRow());
        }
    }
    for (unsigned int y = header.cupsHeight; y < target.height; ++y) {
        fitter.makeWhite(output.nextRow());
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
        checkPage(header, target);
        kelpLogCommon(0, " Page %d: %u x %u dots fitted to %u x %u", page, header.cupsWidth,
                      header.cupsHeight, target.width, target.height);
        fitPage(input, header, target, output, page);
    }
}
