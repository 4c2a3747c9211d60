#ifndef KELP_TOOLS_KELP_PREVIEW_SHEET_CONTACT_SHEET_H
#define KELP_TOOLS_KELP_PREVIEW_SHEET_CONTACT_SHEET_H

#include <cstdint>
#include <vector>

#include "preview/bitmap.h"

/// A print and what stands above it.
struct SheetCell {
    kelp_preview::Bitmap print;
    kelp_preview::Bitmap caption;
};

/// Where the prints of a sheet lie.
struct SheetLayout {
    std::uint64_t width = 0;  ///< of the sheet
    std::uint64_t height = 0;
    std::uint64_t columns = 0;
    std::uint64_t cellWidth = 0;  ///< from print to print
    std::uint64_t cellHeight = 0;
    std::uint64_t printLeft = 0;  ///< of the first print
    std::uint64_t printTop = 0;
};

/// Lays prints of one size out in rows, so that the sheet is near the shape of a screen.
SheetLayout layOutSheet(const std::vector<SheetCell>& cells);

/// The prints dot by dot, each in a frame of one dot, with their captions.
/// @param cells at least one, their prints of one size
kelp_preview::Bitmap drawSheet(const std::vector<SheetCell>& cells);

#endif
