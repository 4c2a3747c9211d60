#ifndef KELP_ENHANCE_PIECEWISE_GAMMA_H
#define KELP_ENHANCE_PIECEWISE_GAMMA_H

#include <array>
#include <cstddef>

#include "enhance/tq_image.h"

/// A new level for each grey level.
using ToneCurve = std::array<unsigned char, 256>;

/// The tone curve of enh_piecewise_gamma.
ToneCurve piecewiseGammaTable(int knee, float gammaLow, float gammaHigh);

/// out[i] = curve[levels[i]]; both may be the same.
void applyToneCurve(const ToneCurve& curve, const unsigned char* levels, std::size_t count,
                    unsigned char* out);

/// Reshapes the first width * height bytes of a one-channel image in place by two power laws that
/// meet at the grey level `knee`: gammaLow below it, gammaHigh from it up to white. An exponent
/// below 1 lifts its piece, one above 1 lowers it. A knee of 0 or less leaves the lower piece
/// empty.
void enh_piecewise_gamma(TQImage& img, int knee, float gammaLow, float gammaHigh);

#endif
