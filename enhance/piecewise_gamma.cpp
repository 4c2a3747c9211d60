#include "enhance/piecewise_gamma.h"

#include <cstddef>

#include "enhance/numeric.h"

std::array<unsigned char, 256> piecewiseGammaTable(int knee, float gammaLow, float gammaHigh) {
    std::array<unsigned char, 256> table{};
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

void enh_piecewise_gamma(TQImage& img, int knee, float gammaLow, float gammaHigh) {
    const std::array<unsigned char, 256> table = piecewiseGammaTable(knee, gammaLow, gammaHigh);
    const std::int32_t pixels = img.pixelCount();
    for (std::int32_t k = 0; k < pixels; ++k) {
        img.data[k] = table[img.data[k]];
    }
}
