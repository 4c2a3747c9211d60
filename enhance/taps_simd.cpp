#include "enhance/taps.h"

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "enhance/taps_simd.cpp"
#include <hwy/foreach_target.h>  // keep it before highway.h
//
#include <hwy/highway.h>

HWY_BEFORE_NAMESPACE();
namespace taps::HWY_NAMESPACE {

#if HWY_TARGET == HWY_EMU128 || HWY_TARGET == HWY_SCALAR

void weigh(const unsigned char* const* rows, const Taps& taps, std::size_t width,
           unsigned char* out) {
    for (std::size_t x = 0; x < width; ++x) {
        out[x] = weighPixel(rows, taps, x);
    }
}

#else

namespace hn = hwy::HWY_NAMESPACE;
using I16 = hn::ScalableTag<std::int16_t>;
using I32 = hn::RepartitionToWide<I16>;
using U8 = hn::Rebind<std::uint8_t, I16>;
constexpr I16 i16;
constexpr I32 i32;
constexpr U8 u8;
constexpr std::size_t kPixels = hn::MaxLanes(i16);
static_assert(kPixels <= kLeastWidth);

using Levels = hn::Vec<I16>;

/// The sums of as many pixels as Levels has, in two vectors.
struct Sums {
    hn::Vec<I32> low, high;
};

/// Adds a * weightA + b * weightB. On x86 the instruction adds neighbouring products, so that the
/// pixels of both stand by turns; elsewhere it multiplies one vector's halves.
HWY_INLINE void addProducts(Sums& sums, Levels a, Levels weightA, Levels b, Levels weightB) {
#if HWY_ARCH_X86
    auto unused = hn::Zero(i32);
    const Levels weights = hn::OddEven(weightB, weightA);
    sums.low = hn::ReorderWidenMulAccumulate(i32, hn::InterleaveLower(i16, a, b), weights, sums.low,
                                             unused);
    sums.high = hn::ReorderWidenMulAccumulate(i32, hn::InterleaveUpper(i16, a, b), weights,
                                              sums.high, unused);
#else
    sums.low = hn::ReorderWidenMulAccumulate(i32, a, weightA, sums.low, sums.high);
    sums.low = hn::ReorderWidenMulAccumulate(i32, b, weightB, sums.low, sums.high);
#endif
}

HWY_INLINE Levels levels(const unsigned char* pixels) {
    return hn::PromoteTo(i16, hn::LoadU(u8, pixels));
}

/// The pixels of two rows that have the same weight.
HWY_INLINE Levels both(const unsigned char* a, const unsigned char* b) {
    return hn::Add(levels(a), levels(b));
}

void weigh(const unsigned char* const* rows, const Taps& taps, std::size_t width,
           unsigned char* out) {
    const auto& whole = taps.coarse;
    constexpr int kBits = Taps::kCoarseBits;
    const auto bias = hn::Set(i32, whole.bias);
    const auto fraction = hn::Set(i32, (1 << kBits) - 1);
    const auto doubtful = hn::Set(i32, whole.doubtful);
    const Levels w0 = hn::Set(i16, whole.weights[5]);
    const Levels w1 = hn::Set(i16, whole.weights[6]);
    const Levels w2 = hn::Set(i16, whole.weights[7]);
    const Levels w3 = hn::Set(i16, whole.weights[8]);
    const Levels w4 = hn::Set(i16, whole.weights[9]);
    const Levels w5 = hn::Set(i16, whole.weights[10]);

    // By name, so that they stay in registers.
    const unsigned char *const r0 = rows[0], *const r1 = rows[1], *const r2 = rows[2],
                               *const r3 = rows[3], *const r4 = rows[4], *const r5 = rows[5],
                               *const r6 = rows[6], *const r7 = rows[7], *const r8 = rows[8],
                               *const r9 = rows[9], *const r10 = rows[10];
    for (std::size_t next = 0; next < width; next += kPixels) {
        // The last vector ends where the row does.
        const std::size_t x = next + kPixels <= width ? next : width - kPixels;
        Sums sums{bias, bias};
        addProducts(sums, levels(r5 + x), w0, both(r4 + x, r6 + x), w1);
        addProducts(sums, both(r3 + x, r7 + x), w2, both(r2 + x, r8 + x), w3);
        addProducts(sums, both(r1 + x, r9 + x), w4, both(r0 + x, r10 + x), w5);
        const Levels rounded = hn::ReorderDemote2To(i16, hn::ShiftRight<kBits>(sums.low),
                                                    hn::ShiftRight<kBits>(sums.high));
        hn::StoreU(hn::DemoteTo(u8, rounded), u8, out + x);

        const auto doubtLow = hn::Gt(doubtful, hn::And(sums.low, fraction));
        const auto doubtHigh = hn::Gt(doubtful, hn::And(sums.high, fraction));
        if (HWY_LIKELY(hn::AllFalse(i32, hn::Or(doubtLow, doubtHigh)))) {
            continue;
        }
        std::int16_t doubts[kPixels];
        hn::StoreU(hn::ReorderDemote2To(i16, hn::VecFromMask(i32, doubtLow),
                                        hn::VecFromMask(i32, doubtHigh)),
                   i16, doubts);
        for (std::size_t i = 0; i < kPixels; ++i) {
            if (doubts[i] != 0) {
                out[x + i] = weighPixel(rows, taps, x + i);
            }
        }
    }
}

#endif

}  // namespace taps::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace taps {

HWY_EXPORT(weigh);

}  // namespace taps

void weighRowsByVector(const unsigned char* const* rows, const Taps& weights, std::size_t width,
                       unsigned char* out) {
    using namespace taps;
    HWY_DYNAMIC_DISPATCH(weigh)(rows, weights, width, out);
}
#endif
