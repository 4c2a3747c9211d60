#include <algorithm>
#include <cstring>

#include "image/cx_image.h"

tagRGBQUAD* CxImage::GetPalette() const {
    if (!dib_ || header_.biClrUsed == 0) {
        return nullptr;
    }
    return reinterpret_cast<tagRGBQUAD*>(dib_.get() + sizeof(BITMAPINFOHEADER));
}

// NOLINTNEXTLINE(readability-make-member-function-const): it changes the palette
void CxImage::SetPalette(const tagRGBQUAD* palette, std::uint32_t ncolors) {
    tagRGBQUAD* own = GetPalette();
    if (palette != nullptr && own != nullptr) {
        std::copy_n(palette, std::min(GetNumColors(), ncolors), own);
    }
}

tagRGBQUAD CxImage::GetPaletteColor(std::uint8_t idx) const {
    const tagRGBQUAD* palette = GetPalette();
    return palette != nullptr && idx < GetNumColors() ? palette[idx] : tagRGBQUAD{};
}

// NOLINTNEXTLINE(readability-make-member-function-const): it changes the palette
void CxImage::SetPaletteColor(std::uint8_t idx, std::uint8_t r, std::uint8_t g, std::uint8_t b,
                              std::uint8_t alpha) {
    tagRGBQUAD* palette = GetPalette();
    if (palette != nullptr && idx < GetNumColors()) {
        palette[idx] = {.rgbBlue = b, .rgbGreen = g, .rgbRed = r, .rgbReserved = alpha};
    }
}

// NOLINTNEXTLINE(readability-make-member-function-const): it changes the palette
void CxImage::SetGrayPalette() {
    tagRGBQUAD* palette = GetPalette();
    if (palette == nullptr) {
        return;
    }
    const std::uint32_t step = 255 / (GetNumColors() - 1);
    for (std::uint32_t i = 0; i < GetNumColors(); ++i) {
        const auto grey = static_cast<std::uint8_t>(i * step);
        palette[i].rgbBlue = palette[i].rgbGreen = palette[i].rgbRed = grey;
    }
}

std::uint8_t CxImage::GetNearestIndex(tagRGBQUAD c) {
    const tagRGBQUAD* palette = GetPalette();
    if (palette == nullptr) {
        return 0;
    }
    if (info_.nearestCacheValid && info_.nearestCacheColor == c) {
        return info_.nearestCacheIndex;
    }
    info_.nearestCacheColor = c;
    info_.nearestCacheValid = true;

    const std::uint32_t count =
        std::min(header_.biClrImportant != 0 ? header_.biClrImportant : header_.biClrUsed,
                 header_.biClrUsed);
    int bestDistance = 200000;  // above the 3 x 255^2 of black to white
    std::uint32_t best = 0;
    for (std::uint32_t j = 0; j < count && bestDistance != 0; ++j) {
        const int blue = palette[j].rgbBlue - c.rgbBlue;
        const int green = palette[j].rgbGreen - c.rgbGreen;
        const int red = palette[j].rgbRed - c.rgbRed;
        const int distance = blue * blue + green * green + red * red;
        if (distance < bestDistance) {
            bestDistance = distance;
            best = j;
        }
    }
    info_.nearestCacheIndex = static_cast<std::uint8_t>(best);
    return info_.nearestCacheIndex;
}
