#ifndef KELP_FILTER_PAGE_HEADER_H
#define KELP_FILTER_PAGE_HEADER_H

#include <cups/raster.h>

/// Whether a page with this header can be printed; if not, an error line names the field and its
/// value. The header has height and bytes per line above 0.
///
/// Refused: rows shorter than their pixels, no resolution, pages of 2^31 bytes and more.
bool isPrintablePage(const cups_page_header2_t& header);

/// Logs the page's number in the job, its copies and the header's fields.
void logPageHeader(const cups_page_header2_t& header, int page);

#endif
