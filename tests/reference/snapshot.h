#pragma once

#include <vector>

namespace reference {

// The bytes of a bitmap file of one byte-per-pixel image. bitsPerPixel 8 or 1.
std::vector<unsigned char> snapshotBytes(const unsigned char* data, unsigned long bytesPerLine,
                                         unsigned long height, unsigned long width,
                                         unsigned short bitsPerPixel);

}  // namespace reference
