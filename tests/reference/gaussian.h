#pragma once

#include <vector>

#include "tests/reference/images.h"

namespace reference {

// size is the number of taps across; every function here throws
// std::invalid_argument for a size that is even or below 1.
std::vector<double> gaussianKernel1D(int size, double sigma);
// size x size entries, row after row.
std::vector<double> gaussianKernel2D(int size, double sigmaX, double sigmaY);

GrayImage convolve1D(const GrayImage& src, const std::vector<double>& kernel, int size,
                     bool horizontal);
GrayImage gaussianFilterFast(const GrayImage& src, int size, double sigma);
GrayImage gaussianFilter(const GrayImage& src, int size, double sigmaX, double sigmaY);
GrayImage addWeighted(const GrayImage& src, const GrayImage& blurred, float weight);
GrayImage unsharpMask(const GrayImage& src, float amount, int size);

}  // namespace reference
