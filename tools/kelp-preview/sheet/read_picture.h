#ifndef KELP_TOOLS_KELP_PREVIEW_SHEET_READ_PICTURE_H
#define KELP_TOOLS_KELP_PREVIEW_SHEET_READ_PICTURE_H

#include <cstdint>
#include <functional>
#include <string>

#include "pictures/grey_picture.h"
#include "tools/kelp-preview/sheet/page_size.h"

struct PictureSource {
    std::string path;
    unsigned page = 1;            ///< of a document
    PageSize fit;                 ///< that a picture is scaled to and a document drawn in
    bool pixelsAreDots = false;   ///< a picture is taken as it is
    std::uint64_t maxPixels = 0;  ///< of the picture, and of what it is scaled to or drawn in
};

/// Reads a PNG, JPEG, PGM, PDF or PostScript file, told by its first bytes, and brings it to the
/// size. Throws PictureError, or std::system_error where the file cannot be read.
/// @param whileItWaits is called several times a second while another program works
GreyPicture readPicture(const PictureSource& source, const std::function<void()>& whileItWaits);

#endif
