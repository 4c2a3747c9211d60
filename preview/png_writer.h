#ifndef KELP_PREVIEW_PNG_WRITER_H
#define KELP_PREVIEW_PNG_WRITER_H

#include <string>

#include "preview/bitmap.h"

namespace kelp_preview {

/// 203 dots per inch, the resolution of every printer of these drivers.
constexpr unsigned kDotsPerMetre = 7992;

/// A PNG file of one bit per pixel, dots black, with the resolution. Throws std::runtime_error.
std::string pngOf(const Bitmap& bitmap);

/// A PNG file of what makes two labels differ, as large as the larger of each side: dots that both
/// have are grey, those that only `before` has red, those that only `after` has blue. Throws
/// std::runtime_error. Takes a byte a pixel of one row besides the file.
std::string differencePng(const Bitmap& before, const Bitmap& after);

}  // namespace kelp_preview

#endif
