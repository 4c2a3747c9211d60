#ifndef KELP_FITTER_PAGE_FITTER_H
#define KELP_FITTER_PAGE_FITTER_H

#include <cups/raster.h>

#include "fitter/raster_input.h"
#include "fitter/raster_output.h"
#include "fitter/target_page.h"

/// The input page's header with what the page's new size and pixels change.
cups_page_header2_t fittedHeader(const cups_page_header2_t& input, const TargetPage& target);

/// Brings every page of the input to the target's size and polarity, row by row: the content at the
/// top left, white around it, cut where it is larger. Throws FitError; what was whole up to then is
/// written.
void fitPages(RasterInput& input, const TargetPage& target, RasterOutput& output);

#endif
