#ifndef KELP_PREVIEW_PNG_WRITER_H
#define KELP_PREVIEW_PNG_WRITER_H

#include <string>

#include "preview/bitmap.h"

namespace kelp_preview {

/// 203 dots per inch, the resolution of every printer of these drivers.
constexpr unsigned kDotsPerMetre = 7992;

/// A PNG file of one bit per pixel, dots black, with the resolution. Throws std::runtime_error.
std::string pngOf(const Bitmap& bitmap);

}  // namespace kelp_preview

#endif
