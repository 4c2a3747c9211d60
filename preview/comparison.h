#ifndef KELP_PREVIEW_COMPARISON_H
#define KELP_PREVIEW_COMPARISON_H

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "preview/bitmap.h"
#include "preview/label.h"

namespace kelp_preview {

struct Place {
    std::uint64_t column = 0;  ///< from 0, at the left
    std::uint64_t row = 0;     ///< from 0, at the top
};

/// What has changed from one picture to another. Where only one of them reaches, the other is
/// white.
struct DotDifference {
    std::uint64_t added = 0;     ///< dots that only the second has
    std::uint64_t missing = 0;   ///< dots that only the first has
    std::optional<Place> first;  ///< of these, in reading order

    std::uint64_t count() const { return added + missing; }
};

DotDifference compareDots(const Bitmap& before, const Bitmap& after);

/// A line for each setting, and for the copies, that is not the same: "copies: 1 and 3".
std::vector<std::string> compareSettings(const Label& before, const Label& after);

}  // namespace kelp_preview

#endif
