#ifndef KELP_ENHANCE_TAPS_H
#define KELP_ENHANCE_TAPS_H

#include <cstddef>
#include <cstdint>
#include <vector>

/// The taps of a convolution in one direction.
struct Taps {
    /// Copies `size` weights; size must be odd and positive, else it throws std::invalid_argument.
    Taps(const double* given, int size);

    std::vector<double> weights;

    /// The weights as whole numbers. A sum of levels weighed with them tells the rounded level for
    /// nearly all pixels, and tells for which ones it does not.
    template <typename Weight, typename Sum, int kBits>
    struct Whole {
        bool isUsable = false;
        std::vector<Weight> weights;
        Sum bias = 0;      ///< what to add to a sum
        Sum doubtful = 0;  ///< a sum whose lowest kBits are below it tells nothing
    };
    /// For vectors; usable where a tap weighs less than a quarter.
    static constexpr int kCoarseBits = 17;
    Whole<std::int16_t, std::int32_t, kCoarseBits> coarse;
    /// For the pixels that `coarse` leaves.
    static constexpr int kFineBits = 44;
    Whole<std::int64_t, std::int64_t, kFineBits> fine;
};

/// out[x] = the low eight bits of the sum of rows[i][x] * weights[i], rounded half away from zero,
/// for x of 0 ... width - 1. The sum is taken in double precision from the first tap to the last
/// and rounded to single precision first. `out` must not overlap the rows.
void weighRows(const unsigned char* const* rows, const Taps& taps, std::size_t width,
               unsigned char* out);

/// The same in vectors: for eleven symmetrical taps with usable coarse weights and a width of at
/// least kLeastWidth.
void weighRowsByVector(const unsigned char* const* rows, const Taps& weights, std::size_t width,
                       unsigned char* out);
constexpr std::size_t kLeastWidth = 16;

/// One pixel of it.
unsigned char weighPixel(const unsigned char* const* rows, const Taps& taps, std::size_t x);

#endif
