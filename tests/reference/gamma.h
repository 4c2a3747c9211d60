#pragma once

#include <array>

#include "tests/reference/images.h"

namespace reference {

std::array<unsigned char, 256> piecewiseGammaTable(int knee, float gammaLow, float gammaHigh);
GrayImage piecewiseGamma(const GrayImage& image, int knee, float gammaLow, float gammaHigh);

}  // namespace reference
