#ifndef KELP_TOOLS_KELP_PREVIEW_SHEET_PAGE_SIZE_H
#define KELP_TOOLS_KELP_PREVIEW_SHEET_PAGE_SIZE_H

#include <cstdint>
#include <optional>
#include <string>

/// Dots of a page at 203 dots per inch.
struct PageSize {
    std::uint32_t width = 0;
    std::uint32_t height = 0;
};

/// Reads "4x6in", "100x150mm", "812x1218" (dots) or "A4", "A5", "A6", "Letter". None for anything
/// else and for sides of less than 8 or more than 100,000 dots.
std::optional<PageSize> parsePageSize(const std::string& text);

/// The largest size of the same shape that fits the page; both sides at least 1.
PageSize fitted(std::uint32_t width, std::uint32_t height, const PageSize& page);

/// A page as wide as the picture or a little wider whose rows the filter prints as they are: 4 dots
/// more than a multiple of 8, as the page fitter makes them.
std::uint32_t paddedWidth(std::uint32_t width);

#endif
