#ifndef KELP_IMAGE_ORDERED_DITHER_H
#define KELP_IMAGE_ORDERED_DITHER_H

#include <array>
#include <cstddef>
#include <cstdint>

// Halftones that decide each pixel by itself, one row at a time.
//
// Each takes `width` grey values and writes them as bits, most significant first, 1 for white:
// (width + 7) / 8 bytes, unused low bits 0.

/// White above 128.
void thresholdRow(const std::uint8_t* grey, std::size_t width, std::uint8_t* packed);

/// Ordered dither with the fixed 4 x 4 matrix; y is the row's number in the image.
void orderedRow(const std::uint8_t* grey, std::size_t width, std::size_t y, std::uint8_t* packed);

/// Ordered dither with the matrix of bayerMatrix (Bayer, 1973).
void bayerRow(const std::uint8_t* grey, std::size_t width, std::size_t y, std::uint8_t* packed);

/// The computed matrix, entry x + 4 * y, of values 0 to 255.
std::array<std::uint8_t, 16> bayerMatrix();

#endif
