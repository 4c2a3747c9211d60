#ifndef KELP_APP_LABEL_ENCODER_H
#define KELP_APP_LABEL_ENCODER_H

#include <cups/raster.h>

#include <string>

#include "filter/settings.h"

namespace kelp_app {

/// What rastertokelp sends for one page: the setup block and the graphic, and before the first page
/// what starts a job. Writes no snapshot.
///
/// The core keeps its state for the whole process, so one page is encoded at a time, whoever calls.
/// Throws std::bad_alloc.
/// @param header of a page that isPrintablePage() accepts
/// @param pixels cupsHeight rows of cupsBytesPerLine bytes; may be overwritten
/// @param page number in the job, from 1
std::string encodeLabel(const Settings& settings, const cups_page_header2_t& header,
                        unsigned char* pixels, int page);

}  // namespace kelp_app

#endif
