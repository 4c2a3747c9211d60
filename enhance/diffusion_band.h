#ifndef KELP_ENHANCE_DIFFUSION_BAND_H
#define KELP_ENHANCE_DIFFUSION_BAND_H

#include <cstddef>
#include <cstdint>

/// The vector form of the stencil diffusion: many rows at a time.
namespace diffusion {

/// Rows that one call takes in the form in use.
std::ptrdiff_t bandRows();

/// What a call may touch on either side of a row, of the pixels and of the errors, in elements.
/// What it writes there means nothing, but for the errors, which stay 0.
constexpr std::ptrdiff_t kBandMargin = 160;

struct Band {
    /// Pixel 0 of the first row; its stride is at least width + kBandMargin, and the row above, of
    /// black and white, is at -stride.
    unsigned char* pixels;
    std::ptrdiff_t stride;
    std::int32_t width;
    float threshold;
    /// Error of the row above at each column, and on return of the last row.
    float* errors;
    /// The rows whose pixels look at their neighbours: those from firstInner to before endInner.
    std::int32_t firstInner;
    std::int32_t endInner;
};

/// Turns bandRows() rows of levels into black and white, in place.
void diffuseBand(const Band& band);

}  // namespace diffusion

#endif
