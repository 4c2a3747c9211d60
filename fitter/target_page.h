#ifndef KELP_FITTER_TARGET_PAGE_H
#define KELP_FITTER_TARGET_PAGE_H

#include <cups/raster.h>

#include "fitter/row_converter.h"

/// The page that every page of the job is fitted to.
struct TargetPage {
    unsigned int width;  // in dots, safe for rastertokelp
    unsigned int height;
    Polarity polarity;
    cups_page_header2_t header;  // as libcups fills it from the PPD
};

/// The page of a PPD with its defaults and the job's options marked. Throws FitError.
/// @param ppdPath null when the spooler gave none
TargetPage readTargetPage(const char* ppdPath, const char* jobOptions);

/// The page that the header of a PPD describes. Throws FitError when it cannot be printed.
TargetPage targetPageOf(const cups_page_header2_t& header);

/// Throws FitError for a size of its own, width and length in points, that is beyond the smallest
/// or largest of a printer by more than half a point.
void checkCustomSize(const float (&size)[2], const float (&smallest)[2], const float (&largest)[2]);

#endif
