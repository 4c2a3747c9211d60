#pragma once

#include <string>
#include <vector>

#include "tests/reference/images.h"

namespace kelp_test {

struct TestImage {
    std::string name;
    reference::GrayImage image;
};

// Pages of every kind, and an image of every width and every height from 1 to 70. Made with
// integers alone, so that they are the same on every machine.
std::vector<TestImage> test_images();

}  // namespace kelp_test
