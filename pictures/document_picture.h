#ifndef KELP_PICTURES_DOCUMENT_PICTURE_H
#define KELP_PICTURES_DOCUMENT_PICTURE_H

#include <chrono>
#include <cstdint>
#include <functional>
#include <string>

#include "pictures/grey_picture.h"

/// A document is a program: it may never end, and ask for all the memory there is.
struct DocumentLimits {
    std::chrono::milliseconds patience = std::chrono::minutes(2);
    std::uint64_t memory = 0;  ///< bytes of ghostscript's address space; 0 for no limit
};

/// A page of a PDF or PostScript document as ghostscript draws it at 203 dots per inch, enlarged or
/// reduced to fit the size, never turned. Throws PictureError, with ghostscript's own words, where
/// there is no such page, and where it is not drawn within the limits.
/// @param page from 1; PostScript has its first page only
/// @param whileItRuns is called several times a second
GreyPicture pictureOfDocument(const std::string& path, unsigned page, const PictureSize& size,
                              const std::function<void()>& whileItRuns,
                              const DocumentLimits& limits = {});

/// How many pages a PDF document has, as ghostscript counts them; 0 for a broken one. Throws
/// PictureError where it does not count them within the limits.
unsigned pagesOfPdf(const std::string& path, const std::function<void()>& whileItRuns,
                    const DocumentLimits& limits = {});

#endif
