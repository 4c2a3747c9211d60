#ifndef KELP_TOOLS_KELP_PREVIEW_SHEET_CAPTION_H
#define KELP_TOOLS_KELP_PREVIEW_SHEET_CAPTION_H

#include <cstdint>
#include <string>
#include <vector>

#include "preview/bitmap.h"

/// Lines of text in dots, the first one bold, in the system's sans-serif font. Throws
/// std::runtime_error where the text cannot be drawn.
/// @param lines UTF-8
/// @param size of the font in dots
kelp_preview::Bitmap drawCaption(const std::vector<std::string>& lines, std::uint32_t size);

#endif
