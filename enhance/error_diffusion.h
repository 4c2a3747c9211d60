#ifndef KELP_ENHANCE_ERROR_DIFFUSION_H
#define KELP_ENHANCE_ERROR_DIFFUSION_H

#include "enhance/row_source.h"
#include "enhance/tq_image.h"

/// Error diffusion for stencils: six neighbours, two of them with negative weights, all summing to
/// 0.940002, so that a little error is lost at every pixel and tones clear up. A white pixel next
/// to a black one on its left or above counts as less than full white, which thins single dots.
/// @param src one channel
/// @param threshold levels strictly above it come out white; any int
/// @return a grey image of the same size, every byte 0 or 255. Throws std::bad_alloc.
TQImage edf_cus(const TQImage& src, int threshold);

/// edf_cus of an image that is handed over row by row.
TQImage diffuseRows(std::int32_t width, std::int32_t height, int threshold, const RowSource& rows);

/// Whether 0 <= x < width and 0 <= y < height.
bool isWithinBounds(int x, int y, int width, int height);

#endif
