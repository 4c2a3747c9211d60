#pragma once

#include <array>
#include <optional>

#include "tests/reference/images.h"

namespace reference {

// Bytes of an 8-bit row padded to a multiple of four.
int stridedRowBytes(int width);

// A new 8-bit image, pixels and padding zero.
StridedImage newStrided(int width, int height);

// A grey page loaded from rows bytesPerLine apart. Bytes behind the width come
// along as far as the padding reaches. Nothing for a page that cannot be held.
std::optional<StridedImage> loadStrided(const unsigned char* pixels, int width, int height,
                                        int bytesPerLine);

std::array<unsigned char, 256> lightTable(int brightness, int contrast);
StridedImage light(const StridedImage& image, int brightness, int contrast);
StridedImage rotate180(const StridedImage& image);
StridedImage mirror(const StridedImage& image);
StridedImage negative(const StridedImage& image);

// Dithered to one bit and raised back to a byte per pixel: 0 and 1, padding zero.
StridedImage ditherToIndices(const StridedImage& image, long method);

}  // namespace reference
