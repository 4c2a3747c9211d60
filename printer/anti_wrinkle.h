#ifndef KELP_PRINTER_ANTI_WRINKLE_H
#define KELP_PRINTER_ANTI_WRINKLE_H

#include <cups/raster.h>

#include <cstdint>

// The geometry of the anti-wrinkle border, in dots. All arithmetic is unsigned, 32 bits, and wraps.

/// What the border frames. An unknown page size has a canvas of 0 x 0.
struct AntiWrinkleCanvas {
    const char* pageSizeName = nullptr;  ///< null for an unknown page size
    std::uint32_t width = 0;
    std::uint32_t height = 0;
    std::uint32_t lineH = 0;  ///< height of the top and bottom bars: 1 mm
    std::uint32_t lineV = 0;  ///< width of the left and right bars: the level in mm
};

/// @param resolution dots per inch
/// @param level width of the left and right bars in millimetres
AntiWrinkleCanvas antiWrinkleCanvas(std::int32_t resolution, std::uint32_t level,
                                    const cups_page_header2_t& header);

/// White added on either side of an image to centre it on a larger canvas.
struct AntiWrinkleMargins {
    std::uint32_t ex = 0;  ///< left and right
    std::uint32_t ey = 0;  ///< top and bottom
};
AntiWrinkleMargins antiWrinkleMargins(const AntiWrinkleCanvas& canvas, std::uint32_t width,
                                      std::uint32_t height);

#endif
