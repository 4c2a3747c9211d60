#include "fitter/row_converter.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstring>
#include <string>

#include "fitter/fit_error.h"
#include "fitter/header_number.h"

namespace {

using Octet = std::array<unsigned char, 8>;

/// The eight samples of every byte of 1-bit pixels, leftmost pixel in the highest bit.
template <bool invert>
constexpr std::array<Octet, 256> expandedBytes() {
    std::array<Octet, 256> table{};
    for (unsigned int byte = 0; byte < 256; ++byte) {
        for (unsigned int pixel = 0; pixel < 8; ++pixel) {
            const bool bit = ((byte >> (7 - pixel)) & 1U) != 0;
            table[byte][pixel] = bit != invert ? 255 : 0;
        }
    }
    return table;
}

template <bool invert>
void convertBits(const unsigned char* row, std::size_t dots, unsigned char* samples) {
    static constexpr std::array<Octet, 256> kTable = expandedBytes<invert>();
    const std::size_t wholeBytes = dots / 8;
    for (std::size_t i = 0; i < wholeBytes; ++i) {
        std::memcpy(samples + 8 * i, kTable[row[i]].data(), 8);
    }
    if (dots % 8 != 0) {
        std::memcpy(samples + 8 * wholeBytes, kTable[row[wholeBytes]].data(), dots % 8);
    }
}

void copyBytes(const unsigned char* row, std::size_t dots, unsigned char* samples) {
    std::memcpy(samples, row, dots);
}

void invertBytes(const unsigned char* row, std::size_t dots, unsigned char* samples) {
    std::transform(row, row + dots, samples,
                   [](unsigned char value) { return static_cast<unsigned char>(255 - value); });
}

/// Rec. 601 luma, to the nearest.
template <bool invert>
void convertRgb(const unsigned char* row, std::size_t dots, unsigned char* samples) {
    for (std::size_t i = 0; i < dots; ++i) {
        const unsigned char* pixel = row + 3 * i;
        const unsigned int luma =
            (299U * pixel[0] + 587U * pixel[1] + 114U * pixel[2] + 500U) / 1000U;
        samples[i] = static_cast<unsigned char>(invert ? 255U - luma : luma);
    }
}

[[noreturn]] void refuse(const cups_page_header2_t& header) {
    throw FitError("Unable to fit raster of color space " +
                   std::to_string(headerNumber(header.cupsColorSpace)) + ", " +
                   std::to_string(header.cupsBitsPerColor) + " bits per color, " +
                   std::to_string(header.cupsBitsPerPixel) + " bits per pixel, color order " +
                   std::to_string(headerNumber(header.cupsColorOrder)) + ", " +
                   std::to_string(header.cupsNumColors) +
                   " colors; only 1-bit and 8-bit grey and 24-bit chunked RGB can be printed.");
}

}  // namespace

RowConverter rowConverter(const cups_page_header2_t& header, Polarity polarity) {
    const std::uint32_t space = headerNumber(header.cupsColorSpace);
    const std::uint32_t order = headerNumber(header.cupsColorOrder);
    const unsigned int bits = header.cupsBitsPerPixel;

    if (space == CUPS_CSPACE_RGB || space == CUPS_CSPACE_SRGB) {
        if (bits != 24 || header.cupsBitsPerColor != 8 || order != CUPS_ORDER_CHUNKED) {
            refuse(header);
        }
        return polarity == Polarity::kWhiteSpace ? convertRgb<false> : convertRgb<true>;
    }

    const bool black = space == CUPS_CSPACE_K;
    const bool white = space == CUPS_CSPACE_W || space == CUPS_CSPACE_SW;
    // With one color a pixel the orders are the same.
    const bool onePlane =
        order == CUPS_ORDER_CHUNKED || (order <= CUPS_ORDER_PLANAR && header.cupsNumColors == 1);
    if (!(black || white) || !onePlane || header.cupsBitsPerColor != bits ||
        (bits != 1 && bits != 8)) {
        refuse(header);
    }
    const bool invert = black != (polarity == Polarity::kBlackSpace);
    if (bits == 1) {
        return invert ? convertBits<true> : convertBits<false>;
    }
    return invert ? invertBytes : copyBytes;
}
