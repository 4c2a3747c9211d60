#pragma once

#include <cups/raster.h>

#include "tests/reference/job/page.h"
#include "tests/reference/job/settings.h"

namespace reference {

// Prints every page of the stream; returns the exit status. Null: a stream that
// could not be opened.
int printPages(cups_raster_t* raster, Printer& printer, Settings& settings);

}  // namespace reference
