#include "models/page.h"

#include "filter/text.h"

namespace kelp_models {

namespace {

/// As a raster driver counts them: to the nearest, in single precision.
unsigned int dotsOf(float points, unsigned int dotsPerInch) {
    return static_cast<unsigned int>(points * static_cast<float>(dotsPerInch) / 72.0F + 0.5F);
}

/// The header that a raster driver starts a page with; what is not set here is 0.
TargetPage makePage(const Model& model, const char* name, float width, float length) {
    const auto dotsPerInch = static_cast<unsigned int>(kelpTextToInt(model.resolution));
    cups_page_header2_t header{};
    header.NumCopies = 1;
    header.HWResolution[0] = header.HWResolution[1] = dotsPerInch;
    header.PageSize[0] = header.ImagingBoundingBox[2] = static_cast<unsigned int>(width);
    header.PageSize[1] = header.ImagingBoundingBox[3] = static_cast<unsigned int>(length);
    header.cupsPageSize[0] = header.cupsImagingBBox[2] = width;
    header.cupsPageSize[1] = header.cupsImagingBBox[3] = length;
    header.cupsWidth = header.cupsBytesPerLine = dotsOf(width, dotsPerInch);
    header.cupsHeight = dotsOf(length, dotsPerInch);
    header.cupsBitsPerColor = header.cupsBitsPerPixel = 8;
    header.cupsNumColors = 1;
    header.cupsColorOrder = CUPS_ORDER_CHUNKED;
    header.cupsColorSpace = model.polarity == Polarity::kBlackSpace ? CUPS_CSPACE_K : CUPS_CSPACE_W;
    header.cupsBorderlessScalingFactor = 1.0F;
    kelpStrCpy(header.cupsPageSizeName, name, sizeof header.cupsPageSizeName);
    return targetPageOf(header);
}

}  // namespace

TargetPage pageOf(const Model& model, const PageSize& size) {
    return makePage(model, size.name, static_cast<float>(size.width),
                    static_cast<float>(size.length));
}

TargetPage customPageOf(const Model& model, float widthPoints, float lengthPoints) {
    // First: what is far beyond the limits has no number of dots.
    checkCustomSize({widthPoints, lengthPoints},
                    {static_cast<float>(model.minWidth), static_cast<float>(model.minLength)},
                    {static_cast<float>(model.maxWidth), static_cast<float>(model.maxLength)});
    return makePage(model, "Custom", widthPoints, lengthPoints);
}

}  // namespace kelp_models
