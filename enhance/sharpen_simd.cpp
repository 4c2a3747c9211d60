#include <cmath>

#include "enhance/unsharp_rows.h"
#include "simd/forms.h"

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "enhance/sharpen_simd.cpp"
#include <hwy/foreach_target.h>  // keep it before highway.h
//
#include <hwy/highway.h>

HWY_BEFORE_NAMESPACE();
namespace sharpening::HWY_NAMESPACE {

#if HWY_TARGET == HWY_EMU128 || HWY_TARGET == HWY_SCALAR

std::size_t sharpen(const unsigned char* /*src*/, const unsigned char* /*blurred*/,
                    std::int16_t /*weight*/, std::size_t /*count*/, unsigned char* /*out*/) {
    return 0;
}

#else

namespace hn = hwy::HWY_NAMESPACE;

/// For whole weights that are small enough for 16 bits: single precision is exact with them.
/// @return how many levels are done
std::size_t sharpen(const unsigned char* src, const unsigned char* blurred, std::int16_t weight,
                    std::size_t count, unsigned char* out) {
    const hn::ScalableTag<std::int16_t> i16;
    const hn::Rebind<std::uint8_t, decltype(i16)> u8;
    const auto own = hn::Set(i16, static_cast<std::int16_t>(weight + 1));
    const auto taken = hn::Set(i16, weight);
    std::size_t x = 0;
    for (; x + hn::Lanes(i16) <= count; x += hn::Lanes(i16)) {
        const auto level = hn::PromoteTo(i16, hn::LoadU(u8, src + x));
        const auto blur = hn::PromoteTo(i16, hn::LoadU(u8, blurred + x));
        const auto sum = hn::Sub(hn::Mul(level, own), hn::Mul(blur, taken));
        hn::StoreU(hn::DemoteTo(u8, sum), u8, out + x);
    }
    return x;
}

#endif

}  // namespace sharpening::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace sharpening {

HWY_EXPORT(sharpen);

}  // namespace sharpening

void sharpen(const unsigned char* src, const unsigned char* blurred, float weight,
             std::size_t count, unsigned char* out) {
    std::size_t k = 0;
    constexpr float kMost = 60.0F;  // 61 * 255 + 60 * 255 is an int16_t
    if (std::abs(weight) <= kMost && weight == std::trunc(weight) && !simd::isPlain()) {
        using namespace sharpening;
        k = HWY_DYNAMIC_DISPATCH(sharpen)(src, blurred, static_cast<std::int16_t>(weight), count,
                                          out);
    }
    // Rounded half away from zero and held to the levels. Below 0 both end at 0, as does what is
    // not a number.
    for (; k < count; ++k) {
        const float sum = static_cast<float>(src[k]) * (1.0F + weight) +
                          static_cast<float>(blurred[k]) * (-weight) + 0.0F;
        const float rounded = sum + 0.5F;
        const float least = rounded > 0.0F ? rounded : 0.0F;
        out[k] = static_cast<unsigned char>(static_cast<int>(least < 255.0F ? least : 255.0F));
    }
}
#endif
