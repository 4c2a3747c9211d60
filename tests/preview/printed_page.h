#pragma once

#include <string>

#include "preview/bitmap.h"

namespace kelp_test {

// The label that the driver sends for a page: without a job's set-up, one copy.
std::string printed(const kelp_preview::Bitmap& page);

}  // namespace kelp_test
