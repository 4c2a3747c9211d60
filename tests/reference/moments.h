#pragma once

#include "tests/reference/images.h"

namespace reference {

// 0 .. 255; 128 where the moment equations have no real, finite solution; -1
// where the cumulative histogram never exceeds the share of the dark level.
int thresholdGlobalMoments(const GrayImage& image);

}  // namespace reference
