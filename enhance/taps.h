#ifndef KELP_ENHANCE_TAPS_H
#define KELP_ENHANCE_TAPS_H

#include <array>
#include <cstddef>
#include <cstdint>
#include <vector>

/// The taps of a convolution in one direction.
struct Taps {
    /// Copies `size` weights; size must be odd and positive, else it throws std::invalid_argument.
    Taps(const double* weights, int size);

    std::vector<double> weights;

    /// Eleven symmetrical weights as whole numbers, for vectors. Sums of levels weighed with them
    /// tell the rounded level for nearly all pixels, and for which ones they do not.
    struct Whole {
        static constexpr int kBits = 17;
        bool isUsable = false;
        std::array<std::int16_t, 6> weights{};  ///< of both pixels this far from the middle one
        std::int32_t bias = 0;                  ///< what to add to a sum
        std::int32_t doubtful = 0;  ///< a sum whose lowest kBits are below it tells nothing
    };
    Whole whole;
};

/// out[x] = the low eight bits of the sum of rows[i][x] * weights[i], rounded half away from zero,
/// for x of 0 ... width - 1. The sum is taken in double precision from the first tap to the last
/// and rounded to single precision first. `out` must not overlap the rows.
void weighRows(const unsigned char* const* rows, const Taps& taps, std::size_t width,
               unsigned char* out);

/// The same in vectors: for usable whole weights and a width of at least kLeastWidth.
void weighRowsByVector(const unsigned char* const* rows, const Taps& taps, std::size_t width,
                       unsigned char* out);
constexpr std::size_t kLeastWidth = 16;

/// One pixel of it.
unsigned char weighPixel(const unsigned char* const* rows, const Taps& taps, std::size_t x);

#endif
