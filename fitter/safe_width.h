#ifndef KELP_FITTER_SAFE_WIDTH_H
#define KELP_FITTER_SAFE_WIDTH_H

/// The widest raster that fits the page and that rastertokelp prints as it is: 4 dots more than a
/// multiple of 8. The filter packs rows as if their stride were a multiple of 4 bytes, so other
/// widths shear; and in a multiple of 8 a wholly black row is sent as "repeat the row before".
/// @return 0 when the page is narrower than 4 dots
constexpr unsigned int safeWidth(unsigned int pageWidth) {
    return pageWidth < 4 ? 0 : (pageWidth - 4) / 8 * 8 + 4;
}

#endif
