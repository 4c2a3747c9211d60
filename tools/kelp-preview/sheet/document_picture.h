#ifndef KELP_TOOLS_KELP_PREVIEW_SHEET_DOCUMENT_PICTURE_H
#define KELP_TOOLS_KELP_PREVIEW_SHEET_DOCUMENT_PICTURE_H

#include <chrono>
#include <functional>
#include <string>

#include "pictures/grey_picture.h"
#include "tools/kelp-preview/sheet/page_size.h"

/// A document is a program: it may never end.
constexpr std::chrono::milliseconds kDocumentPatience = std::chrono::minutes(2);

/// A page of a PDF or PostScript document as ghostscript draws it, enlarged or reduced to fit the
/// size, never turned. Throws PictureError, with ghostscript's own words, where there is no such
/// page, and where it is not drawn in time.
/// @param page from 1; PostScript has its first page only
/// @param whileItRuns is called several times a second
GreyPicture pictureOfDocument(const std::string& path, unsigned page, const PageSize& size,
                              const std::function<void()>& whileItRuns,
                              std::chrono::milliseconds patience = kDocumentPatience);

#endif
