#include "tests/reference/gamma.h"

#include "tests/reference/numeric.h"

namespace reference {

std::array<unsigned char, 256> piecewiseGammaTable(int knee, float gammaLow, float gammaHigh) {
    std::array<unsigned char, 256> lut{};
    const int t = knee;
    for (int i = 0; i < 256; i++) {
        int value = 0;
        if (i < t) {
            float x = static_cast<float>(i) / static_cast<float>(t);
            float y = myPow(x, gammaLow);
            float scaled = y * static_cast<float>(t);
            value = truncateToInt(scaled);
        } else if (t == 255) {
            value = 255;  // only i = 255 comes here, where the upper piece would be 0 / 0
        } else {
            float above = static_cast<float>(i) - static_cast<float>(t);
            float x = above / static_cast<float>(255 - t);
            float y = myPow(x, gammaHigh);
            float scaled = y * static_cast<float>(255 - t);
            float shifted = scaled + static_cast<float>(t);
            value = truncateToInt(shifted);
        }
        lut[static_cast<std::size_t>(i)] = static_cast<unsigned char>(value & 255);
    }
    return lut;
}

GrayImage piecewiseGamma(const GrayImage& image, int knee, float gammaLow, float gammaHigh) {
    std::array<unsigned char, 256> lut = piecewiseGammaTable(knee, gammaLow, gammaHigh);
    GrayImage out = image;
    for (int k = 0; k < image.width * image.height; k++) {
        std::size_t i = static_cast<std::size_t>(k);
        out.px[i] = lut[image.px[i]];
    }
    return out;
}

}  // namespace reference
