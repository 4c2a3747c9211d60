#ifndef KELP_FITTER_ROW_CONVERTER_H
#define KELP_FITTER_ROW_CONVERTER_H

#include <cups/raster.h>

#include <cstddef>

/// What a sample of 0 means: white paper in black-space, black in white-space.
enum class Polarity { kBlackSpace, kWhiteSpace };

constexpr unsigned char whiteSample(Polarity polarity) {
    return polarity == Polarity::kBlackSpace ? 0 : 255;
}

/// Turns the first `dots` pixels of a row into 8-bit samples.
using RowConverter = void (*)(const unsigned char* row, std::size_t dots, unsigned char* samples);

/// The converter from a page's kind of pixels to the polarity. Throws FitError, naming what came,
/// for kinds that cannot be converted.
RowConverter rowConverter(const cups_page_header2_t& header, Polarity polarity);

#endif
