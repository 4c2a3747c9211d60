#pragma once

#include "tests/reference/images.h"

namespace reference {

int channelsOf(int color);
GrayImage cvtGray(const ColorImage& src);

}  // namespace reference
