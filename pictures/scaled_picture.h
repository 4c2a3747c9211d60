#ifndef KELP_PICTURES_SCALED_PICTURE_H
#define KELP_PICTURES_SCALED_PICTURE_H

#include "pictures/grey_picture.h"

/// The picture in another size, smoothly. The same size gives the same pixels. Throws PictureError
/// for sides over 20,000 pixels.
/// @param size at least 1 pixel each way
GreyPicture scaled(const GreyPicture& picture, const PictureSize& size);

#endif
