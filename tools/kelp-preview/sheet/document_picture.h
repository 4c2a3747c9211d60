#ifndef KELP_TOOLS_KELP_PREVIEW_SHEET_DOCUMENT_PICTURE_H
#define KELP_TOOLS_KELP_PREVIEW_SHEET_DOCUMENT_PICTURE_H

#include <string>

#include "tools/kelp-preview/sheet/grey_picture.h"
#include "tools/kelp-preview/sheet/page_size.h"

/// A page of a PDF or PostScript document as ghostscript draws it at 203 dots per inch, enlarged or
/// reduced to fit the size, never turned. Throws PictureError, with ghostscript's own words, where
/// there is no such page.
/// @param page from 1; PostScript has its first page only
GreyPicture pictureOfDocument(const std::string& path, unsigned page, const PageSize& size);

#endif
