#pragma once

#include <vector>

#include "enhance/tq_image.h"

namespace kelp_test {

using Rows = std::vector<std::vector<int>>;

/// A grey image of these levels; every row has the same length.
TQImage grey(const Rows& rows);

/// A grey image of one level.
TQImage uniform(int width, int height, int level);

/// A grey image without any pattern that an operation could map onto itself.
TQImage scattered(int width, int height);

/// The levels of a grey image.
Rows rowsOf(const TQImage& image);

/// All bytes of an image's pixels.
std::vector<int> bytesOf(const TQImage& image);

/// An image of any layout, from its bytes.
TQImage coloured(int width, int height, TQ_IMG_COLOR color, const std::vector<int>& bytes);

}  // namespace kelp_test
