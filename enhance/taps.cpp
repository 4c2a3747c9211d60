#include "enhance/taps.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <stdexcept>

#include "enhance/numeric.h"
#include "simd/forms.h"

namespace {

constexpr std::size_t kVectorTaps = 11;
constexpr std::size_t kMostFineTaps = 25;  // more would add up rounding of doubles

unsigned char roundedSum(double sum) {
    return lowByte(my_round(static_cast<float>(sum)));
}

// Let w be a weight times 2^bits, rounded, and d what that added to it. The sum F of levels weighed
// with all w is off the true sum X * 2^bits by the sum of level * d: at most 255 times the sum of
// the positive d too high, at most 255 times the sum of the negative |d| too low. The level wanted
// is X + 1/2 cut to a whole number, where X and the sum have been rounded in between: in double
// precision by less than 2^-40 in all; to a float below 256 by up to 2^-17; after the addition of
// the half, to one below 512, by up to 2^-16. That is less than 4 * 2^-17 either way. So the true
// value is at most `above` below F + 2^bits / 2 and at most `below` above it. Where no whole number
// lies between those ends, both are cut to the same one.
template <typename Weight, typename Sum, int kBits>
void makeWhole(const std::vector<double>& weights, Taps::Whole<Weight, Sum, kBits>& whole) {
    const double one = std::ldexp(1.0, kBits);
    // Both are exact as doubles where they are the least.
    const double mostWeight =
        std::min(one, static_cast<double>(std::numeric_limits<Weight>::max()));
    double above = 0.0;
    double below = 0.0;
    double total = 0.0;
    for (const double weight : weights) {
        const double exact = weight * one;
        const double rounded = std::nearbyint(exact);
        if (!(rounded >= 0.0 && rounded <= mostWeight)) {
            return;
        }
        (rounded > exact ? above : below) += 255.0 * std::abs(rounded - exact);
        total += rounded;
        whole.weights.push_back(static_cast<Weight>(rounded));
    }
    const double rounding = std::ldexp(4.0, kBits - 17);
    above = std::ceil(above) + rounding;
    below = std::ceil(below) + rounding;
    whole.bias = static_cast<Sum>(one / 2 + below);
    whole.doubtful = static_cast<Sum>(above + below);
    // From level 256 on no byte is left of a sum.
    whole.isUsable = 255.0 * total + one / 2 + below < 256.0 * one;
}

bool isSymmetrical(const std::vector<double>& weights) {
    return std::equal(weights.begin(), weights.end(), weights.rbegin());
}

}  // namespace

Taps::Taps(const double* given, int size) {
    if (size <= 0 || size % 2 == 0) {
        throw std::invalid_argument("Gaussian kernel size must be odd and positive");
    }
    weights.assign(given, given + size);
    if (weights.size() == kVectorTaps && isSymmetrical(weights)) {
        makeWhole(weights, coarse);
    }
    if (weights.size() <= kMostFineTaps) {
        makeWhole(weights, fine);
    }
}

unsigned char weighPixel(const unsigned char* const* rows, const Taps& taps, std::size_t x) {
    if (taps.fine.isUsable) {
        constexpr std::int64_t kFraction = (std::int64_t{1} << Taps::kFineBits) - 1;
        std::int64_t sum = taps.fine.bias;
        for (std::size_t i = 0; i < taps.fine.weights.size(); ++i) {
            sum += rows[i][x] * taps.fine.weights[i];
        }
        if ((sum & kFraction) >= taps.fine.doubtful) {
            return static_cast<unsigned char>(sum >> Taps::kFineBits);
        }
    }
    double sum = 0.0;
    for (std::size_t i = 0; i < taps.weights.size(); ++i) {
        sum += static_cast<double>(rows[i][x]) * taps.weights[i];
    }
    return roundedSum(sum);
}

namespace {

constexpr std::size_t kBlock = 16;

// The loops below are over one tap and several pixels, so that the compiler can work on these at
// once.
void weighBlockWhole(const unsigned char* const* rows, const Taps& taps, std::size_t x,
                     unsigned char* out) {
    constexpr std::int32_t kFraction = (1 << Taps::kCoarseBits) - 1;
    std::int32_t sums[kBlock];
    std::fill_n(sums, kBlock, taps.coarse.bias);
    for (std::size_t i = 0; i < kVectorTaps; ++i) {
        const unsigned char* pixels = rows[i] + x;
        const std::int16_t weight = taps.coarse.weights[i];
        for (std::size_t j = 0; j < kBlock; ++j) {
            sums[j] += static_cast<std::int16_t>(pixels[j]) * weight;
        }
    }
    std::int32_t least = kFraction;
    for (std::size_t j = 0; j < kBlock; ++j) {
        out[x + j] = static_cast<unsigned char>(sums[j] >> Taps::kCoarseBits);
        least = std::min(least, sums[j] & kFraction);
    }
    for (std::size_t j = 0; least < taps.coarse.doubtful && j < kBlock; ++j) {
        if ((sums[j] & kFraction) < taps.coarse.doubtful) {
            out[x + j] = weighPixel(rows, taps, x + j);
        }
    }
}

void weighBlock(const unsigned char* const* rows, const Taps& taps, std::size_t x,
                unsigned char* out) {
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

}  // namespace

void weighRows(const unsigned char* const* rows, const Taps& taps, std::size_t width,
               unsigned char* out) {
    if (taps.coarse.isUsable && width >= kLeastWidth && !simd::isPlain()) {
        weighRowsByVector(rows, taps, width, out);
        return;
    }
    std::size_t x = 0;
    for (; x + kBlock <= width; x += kBlock) {
        if (taps.coarse.isUsable) {
            weighBlockWhole(rows, taps, x, out);
        } else {
            weighBlock(rows, taps, x, out);
        }
    }
    for (; x < width; ++x) {
        out[x] = weighPixel(rows, taps, x);
    }
}
