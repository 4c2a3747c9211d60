#pragma once

#include "tests/reference/images.h"

namespace reference {

// The six-tap error diffusion; every byte of the result is 0 or 255.
GrayImage edfCus(const GrayImage& src, int threshold);

GrayImage tattooDithering(const GrayImage& page);
GrayImage tattooDitheringX8(const GrayImage& page);

// The same for any colour layout. An image without pixels comes back as it is.
ColorImage tattooDithering(const ColorImage& image);
ColorImage tattooDitheringX8(const ColorImage& image);

}  // namespace reference
