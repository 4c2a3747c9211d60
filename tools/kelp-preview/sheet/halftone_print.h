#ifndef KELP_TOOLS_KELP_PREVIEW_SHEET_HALFTONE_PRINT_H
#define KELP_TOOLS_KELP_PREVIEW_SHEET_HALFTONE_PRINT_H

#include "preview/bitmap.h"
#include "tools/kelp-preview/sheet/grey_picture.h"
#include "tools/kelp-preview/sheet/halftones.h"

struct PrintOptions {
    int brightness = 0;
    bool mirror = false;
    bool negative = false;  ///< the other way round than the drivers print by themselves
};

/// What the filter prints of a page that the driver of such a halftone's printers sends: the
/// filter's own page processing and encoding, decoded as the printer does.
/// @param page its width should be 4 more than a multiple of 8, as the page fitter's is
kelp_preview::Bitmap printHalftone(const GreyPicture& page, const Halftone& halftone,
                                   const PrintOptions& options);

#endif
