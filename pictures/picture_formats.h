#ifndef KELP_PICTURES_PICTURE_FORMATS_H
#define KELP_PICTURES_PICTURE_FORMATS_H

#include <cstdint>
#include <string_view>

#include "pictures/grey_picture.h"

// The formats of pictures. Each takes a whole file and throws PictureError for one that is broken
// or has more pixels than allowed, before it allocates them.

/// Transparent parts lie on white.
GreyPicture pictureOfPng(std::string_view file, std::uint64_t maxPixels);

/// Grey, colour or CMYK. A picture that ends early is an error.
GreyPicture pictureOfJpeg(std::string_view file, std::uint64_t maxPixels);

/// Binary or plain, up to 65535 levels; the first picture of several.
GreyPicture pictureOfPgm(std::string_view file, std::uint64_t maxPixels);

/// What the beginning of such a file says.
PictureSize sizeOfPgm(std::string_view file);

#endif
