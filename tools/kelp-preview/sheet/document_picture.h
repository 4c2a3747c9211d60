#ifndef KELP_TOOLS_KELP_PREVIEW_SHEET_DOCUMENT_PICTURE_H
#define KELP_TOOLS_KELP_PREVIEW_SHEET_DOCUMENT_PICTURE_H

#include <cstdint>
#include <string>

#include "tools/kelp-preview/sheet/grey_picture.h"

/// A page of a PDF or PostScript document as ghostscript draws it at 203 dots per inch, fitted into
/// the given size. Throws PictureError, with ghostscript's own words, where there is no such page.
/// @param page from 1; PostScript has its first page only
GreyPicture pictureOfDocument(const std::string& path, unsigned page, std::uint32_t width,
                              std::uint32_t height);

#endif
