#ifndef KELP_TOOLS_KELP_PREVIEW_SHEET_SCALE_H
#define KELP_TOOLS_KELP_PREVIEW_SHEET_SCALE_H

#include "pictures/grey_picture.h"
#include "tools/kelp-preview/sheet/page_size.h"

/// The picture in another size, smoothly. The same size gives the same pixels. Throws PictureError
/// for sides over 20,000 pixels.
GreyPicture scaled(const GreyPicture& picture, const PageSize& size);

#endif
