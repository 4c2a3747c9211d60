// What error diffusion does with vectors: included by its vector form, once for each target.

#if defined(KELP_IMAGE_DIFFUSION_VECTORS_H) == defined(HWY_TARGET_TOGGLE)
#ifdef KELP_IMAGE_DIFFUSION_VECTORS_H
#undef KELP_IMAGE_DIFFUSION_VECTORS_H
#else
#define KELP_IMAGE_DIFFUSION_VECTORS_H
#endif

#include <hwy/highway.h>

#include <bit>
#include <cstddef>
#include <cstdint>
#include <numeric>
#include <utility>

#include "image/diffusion_kernels.h"
#include "image/diffusion_streams.h"

// Vectors whose length is known when this is compiled: they stand in structs and arrays.
#undef KELP_DIFFUSION_HAS_VECTORS
#define KELP_DIFFUSION_HAS_VECTORS \
    (HWY_TARGET != HWY_SCALAR && HWY_TARGET != HWY_EMU128 && !HWY_HAVE_SCALABLE)

HWY_BEFORE_NAMESPACE();
namespace diffusion::HWY_NAMESPACE {

#if KELP_DIFFUSION_HAS_VECTORS

namespace hn = hwy::HWY_NAMESPACE;

using D = hn::CappedTag<std::uint8_t, 32>;
using D16 = hn::Repartition<std::uint16_t, D>;
using DSigned = hn::Repartition<std::int8_t, D>;
using V = hn::Vec<D>;
constexpr std::size_t kLanes = hn::MaxLanes(D());

HWY_INLINE V all(std::uint8_t value) {
    return hn::Set(D(), value);
}

// Greys are held less 128, so that an addition of signed bytes clamps where it should.
HWY_INLINE V addClamped(V grey, V term) {
    return hn::BitCast(
        D(), hn::SaturatedAdd(hn::BitCast(DSigned(), grey), hn::BitCast(DSigned(), term)));
}

// Moves what each row gives to the row dy further down, which is the lane dy lower.
template <int dy>
HWY_INLINE V rowsDown(V term) {
    if constexpr (dy == 0) {
        return term;
    } else if constexpr (kLanes == 16) {
        return hn::ShiftRightBytes<dy>(D(), term);
    } else {
        const V upper = hn::ConcatUpperUpper(D(), hn::Zero(D()), term);
        return hn::CombineShiftRightBytes<dy>(D(), upper, term);
    }
}

// One pixel of each row, and the forms of its error that shares are worked out from.
struct Pixels {
    HWY_INLINE explicit Pixels(V grey) {
        const auto isWhite = hn::Gt(hn::BitCast(DSigned(), grey), hn::Zero(DSigned()));
        white = hn::BitCast(D(), hn::VecFromMask(DSigned(), isWhite));
        // For halving. Plus 127, the error of a white is its grey as held here, that of a black is
        // one less than its grey.
        zero = hn::Sub(all(126), white);
        error = hn::Add(grey, hn::AndNot(white, all(0xFE)));
        // For multiplying.
        const V size = hn::Xor(hn::Xor(grey, all(0x80)), white);
        evenSizes = hn::And(hn::BitCast(D16(), size), hn::Set(D16(), 0x00FF));
        oddSizes = hn::And(hn::BitCast(D16(), size), hn::Set(D16(), 0xFF00));
    }

    V white;  // all bits of the whites
    V zero;   // 0 and the error, plus 127, less one in blacks
    V error;
    hn::Vec<D16> evenSizes;  // the error without its sign
    hn::Vec<D16> oddSizes;
};

// error * multiplier / 2^steps. Each halving adds the error or nothing, by a bit of the multiplier,
// and drops a half, which is the same as dropping all of them in the end. An average of bytes
// rounds up: toward zero for whites, whose errors are negative, and for blacks as well, as one
// operand is one less there.
template <unsigned steps, unsigned multiplier>
HWY_INLINE V halve(V share, const Pixels& pixels) {
    if constexpr (steps == 0) {
        return share;
    } else {
        const V& bit = (multiplier & 1) != 0 ? pixels.error : pixels.zero;
        return halve<steps - 1, (multiplier >> 1)>(hn::AverageRound(share, bit), pixels);
    }
}

// weight / divisor * 2^16, rounded up.
template <int weight, int divisor>
constexpr int reciprocal() {
    return ((weight << 16) + divisor - 1) / divisor;
}

template <int weight, int divisor>
constexpr bool reciprocalIsExact() {
    for (int error = 0; error <= kBlackError; ++error) {
        if (error * reciprocal<weight, divisor>() >> 16 != error * weight / divisor) {
            return false;
        }
    }
    return true;
}

// error * weight / divisor, truncated toward zero.
template <int weight, int divisor>
HWY_INLINE V shareOf(const Pixels& pixels) {
    constexpr int common = std::gcd(weight, divisor);
    constexpr unsigned part = divisor / common;
    if constexpr (std::has_single_bit(part)) {
        return hn::Sub(halve<std::countr_zero(part), weight / common>(all(127), pixels), all(127));
    } else {
        static_assert(kWhiteError <= kBlackError && reciprocalIsExact<weight, divisor>());
        const auto factor = hn::Set(D16(), std::uint16_t{reciprocal<weight, divisor>()});
        const auto even = hn::MulHigh(pixels.evenSizes, factor);
        const auto odd = hn::And(hn::MulHigh(pixels.oddSizes, factor), hn::Set(D16(), 0xFF00));
        const V size = hn::BitCast(D(), hn::Or(even, odd));
        return hn::Sub(hn::Xor(size, pixels.white), pixels.white);
    }
}

// What one pixel of each row gives for each weight.
template <const auto& kernel>
struct Shares {
    V of[kWeights<kernel>.count];

    HWY_INLINE explicit Shares(const Pixels& pixels) {
        fill(pixels, std::make_index_sequence<kWeights<kernel>.count>());
    }
    template <std::size_t... I>
    HWY_INLINE void fill(const Pixels& pixels, std::index_sequence<I...>) {
        ((of[I] = shareOf<kWeights<kernel>.list[I], kernel.divisor>(pixels)), ...);
    }
};

// A perfect shuffle of 16 vectors would put from[i] and from[i + 8] byte by byte into to[2 * i] and
// to[2 * i + 1]; four of them exchange rows and columns of 16 x 16 bytes. Two are made at a time:
// they concern four vectors only, which fit into the registers.
template <std::size_t i>
HWY_INLINE void shuffleTwice(const V* from, V* to) {
    const V a = hn::InterleaveLower(D(), from[i], from[i + 8]);
    const V b = hn::InterleaveUpper(D(), from[i], from[i + 8]);
    const V c = hn::InterleaveLower(D(), from[i + 4], from[i + 12]);
    const V d = hn::InterleaveUpper(D(), from[i + 4], from[i + 12]);
    to[4 * i] = hn::InterleaveLower(D(), a, c);
    to[4 * i + 1] = hn::InterleaveUpper(D(), a, c);
    to[4 * i + 2] = hn::InterleaveLower(D(), b, d);
    to[4 * i + 3] = hn::InterleaveUpper(D(), b, d);
}

template <std::size_t... I>
HWY_INLINE void transpose(V* v, std::index_sequence<I...>) {
    V other[16];
    (shuffleTwice<I>(v, other), ...);
    (shuffleTwice<I>(other, v), ...);
}

template <std::size_t i, std::size_t lag>
HWY_INLINE V loadChunk(const std::uint8_t* const* rows, std::ptrdiff_t x) {
    constexpr auto behind = [](std::size_t lane) {
        return static_cast<std::ptrdiff_t>((kLanes - 1 - lane) * lag);
    };
    if constexpr (kLanes == 16) {
        return hn::LoadU(D(), rows[i] + (x - behind(i)));
    } else {
        const hn::Half<D> half;
        return hn::Combine(D(), hn::LoadU(half, rows[i + 16] + (x - behind(i + 16))),
                           hn::LoadU(half, rows[i] + (x - behind(i))));
    }
}

template <std::size_t lag, std::size_t... I>
HWY_INLINE void loadTransposed(const std::uint8_t* const* rows, std::ptrdiff_t x, std::uint8_t* to,
                               std::index_sequence<I...>) {
    V v[16] = {loadChunk<I, lag>(rows, x)...};
    transpose(v, std::make_index_sequence<4>());
    (hn::Store(hn::Xor(v[I], all(0x80)), D(), to + I * kLanes), ...);
}

// 16 greys of the row of each lane become 16 vectors. The last lane's begin at column x, those of
// each lane before it `lag` columns further back.
template <std::size_t lag>
HWY_INLINE void loadTransposed(const std::uint8_t* const* rows, std::ptrdiff_t x,
                               std::uint8_t* to) {
    loadTransposed<lag>(rows, x, to, std::make_index_sequence<16>());
}

template <std::size_t i>
HWY_INLINE void storeChunk(V v, std::uint8_t* to, std::size_t stride) {
    if constexpr (kLanes == 16) {
        hn::StoreU(v, D(), to + i * stride);
    } else {
        const hn::Half<D> half;
        hn::StoreU(hn::LowerHalf(half, v), half, to + i * stride);
        hn::StoreU(hn::UpperHalf(half, v), half, to + (i + 16) * stride);
    }
}

template <std::size_t... I>
HWY_INLINE void storeTransposed(const std::uint8_t* from, std::uint8_t* to, std::size_t stride,
                                std::index_sequence<I...>) {
    V v[16] = {hn::LoadU(D(), from + I * kLanes)...};
    transpose(v, std::make_index_sequence<4>());
    (storeChunk<I>(v[I], to, stride), ...);
}

// 16 vectors become 16 bytes for each lane, `stride` from lane to lane.
HWY_INLINE void storeTransposed(const std::uint8_t* from, std::uint8_t* to, std::size_t stride) {
    storeTransposed(from, to, stride, std::make_index_sequence<16>());
}

#endif

}  // namespace diffusion::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#endif
