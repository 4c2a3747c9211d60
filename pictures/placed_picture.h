#ifndef KELP_PICTURES_PLACED_PICTURE_H
#define KELP_PICTURES_PLACED_PICTURE_H

#include "pictures/grey_picture.h"

/// How large a picture is printed.
enum class PictureScaling {
    Fit,   ///< as large as it can be with all of it on the page
    Fill,  ///< as small as it can be with no part of the page left; the rest is cut off evenly
    Own,   ///< in its own resolution, or a pixel a dot; what is over the page is cut off evenly
};

/// The picture turned counterclockwise.
/// @param quarters of a turn, 0 to 3
GreyPicture turned(const GreyPicture& picture, unsigned quarters);

/// Whether a picture that tells its resolution lies on a page in its own size.
/// @param page in dots
bool fitsInOwnSize(const GreyPicture& picture, const PictureSize& page, std::uint32_t dotsPerInch);

/// What of a picture is printed on a page, in its dots: of at least one dot and at most the page's
/// size each way, to be laid in the page's middle. Throws PictureError for sides over 20,000 pixels
/// that must be scaled.
/// @param page in dots, at least 1 each way
/// @param dotsPerInch of the page
GreyPicture placed(const GreyPicture& picture, const PictureSize& page, std::uint32_t dotsPerInch,
                   PictureScaling scaling);

#endif
