#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "image/cx_image.h"

namespace kelp_test {

using Rows = std::vector<std::vector<int>>;

/// A new image holding these indices; every row has the same length.
void makeImage(CxImage& image, std::uint32_t bpp, const Rows& indices);

/// The index of every pixel, read from the bytes by the packing rules and not by the accessors.
Rows indicesOf(const CxImage& image);

/// All pixel bytes, row padding included.
std::vector<int> pixelBytes(const CxImage& image);

/// One row of pixel bytes, padding included.
std::vector<int> rowBytes(const CxImage& image, std::uint32_t row);

/// "blue,green,red,reserved" of a colour.
std::string text(tagRGBQUAD colour);

/// A colour without alpha.
tagRGBQUAD rgb(int red, int green, int blue);

/// An image of 24 bits per pixel whose byte n, counted over all pixels, is first + n.
void makeTrueColour(CxImage& image, std::uint32_t width, std::uint32_t height, int first);

constexpr const char* kSizeText = "CxImage::Create : width and height must be greater than zero";
constexpr const char* kLimitText = "CXIMAGE_MAX_MEMORY exceeded";
constexpr const char* kMemoryText = "CxImage::Create can't allocate memory";

}  // namespace kelp_test
