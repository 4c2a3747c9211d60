#include "enhance/taps.h"

#include <algorithm>
#include <cmath>
#include <stdexcept>

#include "enhance/numeric.h"
#include "simd/forms.h"

namespace {

constexpr std::size_t kWholeSize = 11;

unsigned char roundedSum(double sum) {
    return lowByte(my_round(static_cast<float>(sum)));
}

// Let w be a weight times 2^17, rounded, and d what that added to it. The sum F of levels weighed
// with all w is off the true sum X * 2^17 by the sum of level * d, which is at least -255 times the
// sum of the negative |d| and at most 255 times the sum of the positive d. The level is X + 1/2 cut
// to a whole number, where X and the sum have been rounded in between: in double precision by less
// than 2^-40 in all; to a float below 256 by up to 2^-17; after the addition of the half, to one
// below 512, by up to 2^-16. With the products, that is less than 4 units of 2^-17. So F + 2^16 is
// at most `above` too high and `below` too low, and F + 2^16 + below is the end of an interval of
// above + below that has the true value in it. Where no whole number is inside, both ends are cut
// to the same one.
Taps::Whole wholeOf(const std::vector<double>& weights) {
    Taps::Whole whole;
    if (weights.size() != kWholeSize) {
        return whole;
    }
    const double one = std::ldexp(1.0, Taps::Whole::kBits);
    double above = 0.0;
    double below = 0.0;
    double total = 0.0;
    for (std::size_t i = 0; i < kWholeSize; ++i) {
        const double exact = weights[i] * one;
        const double rounded = std::nearbyint(exact);
        if (!(rounded >= 0.0 && rounded <= 32767.0) || weights[i] != weights[kWholeSize - 1 - i]) {
            return whole;
        }
        (rounded > exact ? above : below) += 255.0 * std::abs(rounded - exact);
        total += rounded;
        const std::size_t middle = kWholeSize / 2;
        whole.weights[i < middle ? middle - i : i - middle] = static_cast<std::int16_t>(rounded);
    }
    constexpr double kRounding = 4.0;
    above = std::ceil(above) + kRounding;
    below = std::ceil(below) + kRounding;
    whole.bias = static_cast<std::int32_t>(one / 2 + below);
    whole.doubtful = static_cast<std::int32_t>(above + below);
    // A sum must stay below level 256, of which no byte is left.
    whole.isUsable = 255.0 * total + whole.bias < 256.0 * one;
    return whole;
}

}  // namespace

Taps::Taps(const double* given, int size) {
    if (size <= 0 || size % 2 == 0) {
        throw std::invalid_argument("Gaussian kernel size must be odd and positive");
    }
    weights.assign(given, given + size);
    whole = wholeOf(weights);
}

unsigned char weighPixel(const unsigned char* const* rows, const Taps& taps, std::size_t x) {
    double sum = 0.0;
    for (std::size_t i = 0; i < taps.weights.size(); ++i) {
        sum += static_cast<double>(rows[i][x]) * taps.weights[i];
    }
    return roundedSum(sum);
}

void weighRows(const unsigned char* const* rows, const Taps& taps, std::size_t width,
               unsigned char* out) {
    if (taps.whole.isUsable && width >= kLeastWidth && !simd::isPlain()) {
        weighRowsByVector(rows, taps, width, out);
        return;
    }
    // One tap over several pixels at a time, so that the compiler can work on them at once while
    // each pixel still receives its taps in order.
    constexpr std::size_t kBlock = 16;
    std::size_t x = 0;
    for (; x + kBlock <= width; x += kBlock) {
        double sums[kBlock] = {};
        for (std::size_t i = 0; i < taps.weights.size(); ++i) {
            const unsigned char* pixels = rows[i] + x;
            const double weight = taps.weights[i];
            for (std::size_t j = 0; j < kBlock; ++j) {
                sums[j] += static_cast<double>(pixels[j]) * weight;
            }
        }
        for (std::size_t j = 0; j < kBlock; ++j) {
            out[x + j] = roundedSum(sums[j]);
        }
    }
    for (; x < width; ++x) {
        out[x] = weighPixel(rows, taps, x);
    }
}
