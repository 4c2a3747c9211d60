#ifndef KELP_ENHANCE_TATTOO_H
#define KELP_ENHANCE_TATTOO_H

#include "enhance/tq_image.h"

// The two stencil halftones: grey, moments threshold, piecewise gamma, unsharp mask, error
// diffusion.
//
// Both take any colour layout with 255 as white, leave it unchanged and return a grey image of the
// same size whose every byte is 0 (black, printed) or 255. An image without pixels comes back as
// a copy. They throw std::bad_alloc.

/// Brightens shadows and the rest of the range alike, about grey 64.
TQImage tqTattooDithering(TQImage& img);

/// Stretches the contrast about the page's own threshold.
TQImage tqTattooDitheringX8(TQImage& img);

#endif
