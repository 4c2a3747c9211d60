#ifndef KELP_APP_LAST_LABEL_H
#define KELP_APP_LAST_LABEL_H

#include <cups/raster.h>

#include <memory>
#include <string>
#include <vector>

#include "filter/settings.h"

namespace kelp_app {

/// A page and what was printed of it.
struct Label {
    Settings settings;
    cups_page_header2_t header{};  ///< of the fitted page
    std::vector<unsigned char>
        pixels;            ///< before the halftone: cupsHeight rows of cupsBytesPerLine
    std::string commands;  ///< that the printer was sent
};

/// Keeps the last label of a printer, by its number, instead of the one before. Throws
/// std::bad_alloc.
void keepLastLabel(int printer, Label label);

/// Null where nothing was kept since the server was started.
std::shared_ptr<const Label> lastLabel(int printer);

/// A PNG of what the printer prints of the commands; empty where that is nothing. Throws
/// std::bad_alloc, std::runtime_error.
std::string pictureOf(const std::string& commands);

/// A PNG of the label as it would print with another halftone. Throws as pictureOf().
std::string pictureInHalftone(const Label& label, DitherType halftone);

}  // namespace kelp_app

#endif
