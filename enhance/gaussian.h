#ifndef KELP_ENHANCE_GAUSSIAN_H
#define KELP_ENHANCE_GAUSSIAN_H

#include "enhance/row_source.h"
#include "enhance/tq_image.h"
#include "enhance/unsharp_rows.h"

// Gaussian blur and unsharp mask of one-channel images.
//
// `size` is the number of taps across a kernel and must be odd and positive: with any other every
// function throws std::invalid_argument before anything is allocated or written. Each may throw
// std::bad_alloc. Pixels past an edge repeat the edge pixel. Every result is a new image of the
// source's size.

/// Fills kernel[0 ... size - 1] with a Gaussian whose sum is 1; the array is the caller's.
void generateGaussianKernel1D(int size, double sigma, double* kernel);

/// Fills kernel[0 ... size * size - 1], row by row, with a Gaussian whose sum is 1; the array is
/// the caller's.
void generateGaussianKernel(int size, double sigmaX, double sigmaY, double* kernel);

/// Convolves rows (horizontal) or columns with `size` taps, rounded to whole grey levels.
TQImage convolve1D(const TQImage& src, const double* kernel, int size, bool horizontal);

/// Separable blur: rows, then columns, rounded to whole grey levels in between.
TQImage enh_gaussian_filter_fast(const TQImage& src, int size, double sigma);

/// Direct two-dimensional blur.
TQImage enh_gaussian_filter(const TQImage& src, int size, double sigmaX, double sigmaY);

/// src * (1 + weight) - blurred * weight, rounded and held to 0 ... 255. Both images have the same
/// size.
TQImage add_Weighted(const TQImage& src, const TQImage& blurred, float weight);

/// Unsharp mask with a blur of sigma 3, whatever its size.
/// @param amount weight of the mask in percent
TQImage enh_unsharp_mask(const TQImage& src, float amount, int size);

/// enh_unsharp_mask, one row after another, of an image with pixels that is handed over so.
UnsharpRows unsharpRows(std::int32_t width, std::int32_t height, float amount, int size,
                        RowSource rows);

#endif
