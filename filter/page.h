#ifndef KELP_FILTER_PAGE_H
#define KELP_FILTER_PAGE_H

#include <cups/raster.h>

#include "filter/settings.h"
#include "printer/kelp_printer.h"

// One page, in two steps: the commands that set the printer up, then the graphic. Both print
// through sPrinter, which must be `printer`, and take a header that isPrintablePage() accepts.

/// Sends the line feeds that stand before the first page of a job.
void startPages(KelpPrinter& printer);

/// Sends the setup block and gives the printer its parameters.
/// @param settings of the job; the page size is replaced by the header's
/// @param header borrowed until the page is printed
/// @param page number in the job, from 1
void setUpPage(Settings& settings, KelpPrinter& printer, const cups_page_header2_t& header,
               int page);

/// Sends the page's graphic. Throws std::bad_alloc.
/// @param pixels cupsHeight rows of cupsBytesPerLine bytes; may be overwritten
void printPixels(KelpPrinter& printer, const cups_page_header2_t& header, unsigned char* pixels);

#endif
