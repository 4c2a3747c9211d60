#include "enhance/piecewise_gamma.h"

#include <algorithm>
#include <cstddef>

#include "enhance/numeric.h"

ToneCurve piecewiseGammaTable(int knee, float gammaLow, float gammaHigh) {
    ToneCurve table{};
    const auto t = static_cast<float>(knee);
    const auto upperSpan = static_cast<float>(std::int64_t{255} - knee);
    for (int i = 0; i < 256; ++i) {
        const auto tone = static_cast<float>(i);
        float lifted = 0.0F;
        if (i < knee) {
            lifted = my_pow(tone / t, gammaLow) * t;
        } else if (knee == 255) {
            // The upper piece is the single level 255, and its span is 0.
            lifted = 255.0F;
        } else {
            lifted = my_pow((tone - t) / upperSpan, gammaHigh) * upperSpan + t;
        }
        // Truncated, not rounded.
        table[static_cast<std::size_t>(i)] = lowByte(truncateToInt(lifted));
    }
    return table;
}

void applyToneCurve(const ToneCurve& curve, const unsigned char* levels, std::size_t count,
                    unsigned char* out) {
    for (std::size_t i = 0; i < count; ++i) {
        out[i] = curve[levels[i]];
    }
}

void enh_piecewise_gamma(TQImage& img, int knee, float gammaLow, float gammaHigh) {
    const ToneCurve curve = piecewiseGammaTable(knee, gammaLow, gammaHigh);
    applyToneCurve(curve, img.data, static_cast<std::size_t>(std::max(img.pixelCount(), 0)),
                   img.data);
}
