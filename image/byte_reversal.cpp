#include "image/byte_reversal.h"

#include <algorithm>

#include "simd/forms.h"

// The file is compiled once for each kind of vectors.
#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "image/byte_reversal.cpp"
#include <hwy/foreach_target.h>  // before highway.h
//
#include <hwy/highway.h>

HWY_BEFORE_NAMESPACE();
namespace HWY_NAMESPACE {

/// Reverses whole vectors, from the first byte on.
/// @return the bytes that it took
HWY_ATTR std::size_t reverseVectors(const std::uint8_t* from, std::size_t count, std::uint8_t* to) {
#if HWY_TARGET == HWY_SCALAR || HWY_TARGET == HWY_EMU128
    static_cast<void>(from);
    static_cast<void>(count);
    static_cast<void>(to);
    return 0;
#else
    namespace hn = hwy::HWY_NAMESPACE;
    // Sixteen bytes, also where vectors are longer: their halves would have to be exchanged, and
    // the way through memory takes as long.
    const hn::FixedTag<std::uint8_t, 16> bytes;
    constexpr std::size_t lanes = 16;
    alignas(lanes) static constexpr std::uint8_t kBackwards[lanes] = {15, 14, 13, 12, 11, 10, 9, 8,
                                                                      7,  6,  5,  4,  3,  2,  1, 0};
    const auto backwards = hn::Load(bytes, kBackwards);
    std::size_t x = 0;
    for (; x + lanes <= count; x += lanes) {
        const auto turned = hn::TableLookupBytes(hn::LoadU(bytes, from + x), backwards);
        hn::StoreU(turned, bytes, to + (count - x - lanes));
    }
    return x;
#endif
}

}  // namespace HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
HWY_EXPORT(reverseVectors);

void reverseBytes(const std::uint8_t* from, std::size_t count, std::uint8_t* to) {
    const std::size_t done =
        simd::isPlain() ? 0 : HWY_DYNAMIC_DISPATCH(reverseVectors)(from, count, to);
    std::reverse_copy(from + done, from + count, to);
}
#endif
