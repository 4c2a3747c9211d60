#pragma once

#include <string>
#include <vector>

#include "tests/reference/images.h"

namespace kelp_test {

// What one stage of the driver makes of an image, and what the literal reference makes of it.
struct Stage {
    std::string name;
    std::string bytes;
    std::string reference;
};

// Every halftone, each stage of the stencil halftones, packing, encoding and snapshots.
std::vector<Stage> stages_of(const reference::GrayImage& image);

// What takes no image: the approximations of powers and roots, Gaussian kernels and the tables of
// brightness and gamma, to the last bit.
std::vector<Stage> stages_of_numbers();

}  // namespace kelp_test
