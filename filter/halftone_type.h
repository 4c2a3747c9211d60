#ifndef KELP_FILTER_HALFTONE_TYPE_H
#define KELP_FILTER_HALFTONE_TYPE_H

#include <cstdint>

/// The halftones by the names that the "HalftoneType" job option uses. The values 0 to 7 are passed
/// on as method numbers of CxImage::Dither, whose order differs by one: the method that runs is
/// the one noted here, not the one named.
enum DitherType : std::int32_t {
    DitherNone = 0,               ///< runs the fixed threshold
    DitherFloydSteinberg = 1,     ///< runs the ordered dither
    DitherOrdered = 2,            ///< runs Burkes
    DitherBurkes = 3,             ///< runs Stucki
    DitherStucki = 4,             ///< runs Jarvis, Judice and Ninke
    DitherJarvisJudiceNinke = 5,  ///< runs Sierra
    DitherSierra = 6,             ///< runs Stevenson and Arce
    DitherStevensonArce = 7,      ///< runs the Bayer ordered dither
    DitherTattoo = 8,
    DitherTattooX8 = 9,
};

/// The option name of a halftone; "None" for a value that is none of them. A constant text.
const char* kelpHalftoneTypeToStr(int type);

/// The halftone of an option name, compared exactly; 0 for a name that is none of them.
DitherType kelpHalftoneTypeFromStr(const char* name);

#endif
