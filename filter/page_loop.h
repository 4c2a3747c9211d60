#ifndef KELP_FILTER_PAGE_LOOP_H
#define KELP_FILTER_PAGE_LOOP_H

#include <cups/raster.h>

#include "filter/settings.h"
#include "printer/kelp_printer.h"

/// Prints the pages of a raster stream, each as its setup commands and its graphic, through
/// sPrinter, which must be `printer`. Throws std::bad_alloc.
/// @param raster the stream; null for one that could not be opened, which has no pages
/// @param settings of the job; the page size is replaced by each page's own
/// @return the exit status: 0 at the end of the stream and at a page without rows or bytes; 1 at a
///   page that cannot be printed, with what came before already sent
int printPages(cups_raster_t* raster, Settings& settings, KelpPrinter& printer);

#endif
