#pragma once

#include "tests/reference/images.h"

namespace reference {

// 8-bit grey to one index per pixel, 0 black or 1 white. Methods: 0 threshold,
// 1 ordered 4 x 4, 2 Burkes, 3 Stucki, 4 Jarvis-Judice-Ninke, 5 Sierra,
// 6 Stevenson-Arce, 7 Bayer, every other number Floyd-Steinberg.
GrayImage dither(const GrayImage& image, long method);

}  // namespace reference
