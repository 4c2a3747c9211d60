#ifndef KELP_TOOLS_KELP_PREVIEW_SHEET_HALFTONE_PRINT_H
#define KELP_TOOLS_KELP_PREVIEW_SHEET_HALFTONE_PRINT_H

#include <string>

#include "pictures/grey_picture.h"
#include "preview/bitmap.h"
#include "tools/kelp-preview/sheet/halftones.h"

struct PrintOptions {
    int brightness = 0;
    bool mirror = false;
    bool negative = false;  ///< the other way round than the drivers print by themselves
};

/// The commands that the filter sends for a page from the driver of such a halftone's printers, by
/// the filter's own page processing and encoding. Without the set-up block.
/// @param page its width should be 4 more than a multiple of 8, as the page fitter's is
std::string printStream(GreyPicture page, const Halftone& halftone, const PrintOptions& options);

/// The dots that these commands print.
kelp_preview::Bitmap printHalftone(const GreyPicture& page, const Halftone& halftone,
                                   const PrintOptions& options);

#endif
