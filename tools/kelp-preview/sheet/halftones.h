#ifndef KELP_TOOLS_KELP_PREVIEW_SHEET_HALFTONES_H
#define KELP_TOOLS_KELP_PREVIEW_SHEET_HALFTONES_H

#include <array>
#include <string_view>

#include "filter/halftone_type.h"

/// A halftone as people choose it.
struct Halftone {
    DitherType type;
    std::string_view runs;  ///< what the choice really runs
    /// One of the stencil printers': their raster is 255 for white, and what the filter calls the
    /// negative is their normal print.
    bool isStencil;

    const char* optionName() const { return kelpHalftoneTypeToStr(type); }
};

/// All there are. The names of the first eight stand one place off the methods that run.
inline constexpr std::array kHalftones{
    Halftone{DitherNone, "threshold", false},
    Halftone{DitherFloydSteinberg, "ordered dither 4 x 4", false},
    Halftone{DitherOrdered, "Burkes", false},
    Halftone{DitherBurkes, "Stucki", false},
    Halftone{DitherStucki, "Jarvis, Judice and Ninke", false},
    Halftone{DitherJarvisJudiceNinke, "Sierra", false},
    Halftone{DitherSierra, "Stevenson-Arce", false},
    Halftone{DitherStevensonArce, "Bayer ordered dither", false},
    Halftone{DitherTattoo, "stencil, light shading", true},
    Halftone{DitherTattooX8, "stencil, dense shading", true},
};

#endif
