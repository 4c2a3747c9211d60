#include "image/dot_packing.h"

#include <algorithm>

#include "simd/forms.h"

// The file is compiled once for each kind of vectors.
#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "image/dot_packing.cpp"
#include <hwy/foreach_target.h>  // before highway.h
//
#include <hwy/highway.h>

HWY_BEFORE_NAMESPACE();
namespace HWY_NAMESPACE {

#if HWY_TARGET == HWY_SCALAR || HWY_TARGET == HWY_EMU128

HWY_ATTR std::size_t packVectors(const std::uint8_t* /*values*/, std::size_t /*width*/,
                                 const DotLimits& /*limits*/, std::uint8_t* /*packed*/) {
    return 0;
}

#else

namespace hn = hwy::HWY_NAMESPACE;

/// Packs whole vectors of a row.
/// @return the columns that it packed, a multiple of 8
HWY_ATTR std::size_t packVectors(const std::uint8_t* values, std::size_t width,
                                 const DotLimits& limits, std::uint8_t* packed) {
    const hn::ScalableTag<std::uint8_t> bytes;
    const std::size_t lanes = hn::Lanes(bytes);
    // A vector gives its first lane as the lowest bit, a row has its first dot in the highest.
    alignas(16) static constexpr std::uint8_t kOrder[16] = {7,  6,  5,  4,  3,  2,  1, 0,
                                                            15, 14, 13, 12, 11, 10, 9, 8};
    alignas(16) std::uint8_t inTurns[16];
    for (std::size_t i = 0; i < 16; ++i) {
        inTurns[i] = limits[i % 4];
    }
    const auto order = hn::LoadDup128(bytes, kOrder);
    const auto limit = hn::TableLookupBytes(hn::LoadDup128(bytes, inTurns), order);
    std::size_t x = 0;
    for (; x + lanes <= width; x += lanes) {
        const auto turned = hn::TableLookupBytes(hn::LoadU(bytes, values + x), order);
        hn::StoreMaskBits(bytes, hn::Gt(turned, limit), packed + x / 8);
    }
    return x;
}

#endif

}  // namespace HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
HWY_EXPORT(packVectors);

void packDots(const std::uint8_t* values, std::size_t width, const DotLimits& limits,
              std::uint8_t* packed) {
    std::size_t first =
        simd::isPlain() ? 0 : HWY_DYNAMIC_DISPATCH(packVectors)(values, width, limits, packed);
    for (; first < width; first += 8) {
        const std::size_t count = std::min<std::size_t>(8, width - first);
        unsigned byte = 0;
        for (std::size_t i = 0; i < count; ++i) {
            byte |= values[first + i] > limits[i % 4] ? 0x80U >> i : 0U;
        }
        packed[first / 8] = static_cast<std::uint8_t>(byte);
    }
}
#endif
