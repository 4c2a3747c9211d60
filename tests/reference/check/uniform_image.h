#pragma once

#include <cstddef>

#include "tests/reference/gray.h"

namespace reference {

// An image of one level.
inline GrayImage uniform(int width, int height, int value) {
    GrayImage image{width, height, {}};
    image.px.assign(static_cast<std::size_t>(width * height), static_cast<unsigned char>(value));
    return image;
}

}  // namespace reference
