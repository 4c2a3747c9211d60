#include "image/cx_image.h"

namespace {

int nibbleShift(std::int64_t x) {
    return x % 2 == 0 ? 4 : 0;
}

int bitShift(std::int64_t x) {
    return static_cast<int>(7 - x % 8);
}

}  // namespace

bool CxImage::isInside(std::int64_t x, std::int64_t y) const {
    return x >= 0 && y >= 0 && x < header_.biWidth && y < header_.biHeight;
}

std::uint8_t CxImage::GetPixelIndex(std::int64_t x, std::int64_t y) const {
    if (!dib_ || header_.biClrUsed == 0) {
        return 0;
    }
    return isInside(x, y) ? BlindGetPixelIndex(x, y) : *info_.bits;
}

void CxImage::SetPixelIndex(std::int64_t x, std::int64_t y, std::uint8_t i) {
    if (dib_ && header_.biClrUsed != 0 && isInside(x, y)) {
        BlindSetPixelIndex(x, y, i);
    }
}

std::uint8_t CxImage::BlindGetPixelIndex(std::int64_t x, std::int64_t y) const {
    const std::uint8_t* row = rowAt(y);
    switch (header_.biBitCount) {
        case 8:
            return row[x];
        case 4:
            return static_cast<std::uint8_t>((row[x / 2] >> nibbleShift(x)) & 0x0F);
        case 1:
            return static_cast<std::uint8_t>((row[x / 8] >> bitShift(x)) & 0x01);
        default:
            return 0;
    }
}

void CxImage::BlindSetPixelIndex(std::int64_t x, std::int64_t y, std::uint8_t i) {
    std::uint8_t* row = rowAt(y);
    const auto replaceBits = [i](std::uint8_t& byte, unsigned mask, int shift) {
        byte = static_cast<std::uint8_t>((byte & ~(mask << shift)) | ((i & mask) << shift));
    };
    switch (header_.biBitCount) {
        case 8:
            row[x] = i;
            break;
        case 4:
            replaceBits(row[x / 2], 0x0F, nibbleShift(x));
            break;
        case 1:
            replaceBits(row[x / 8], 0x01, bitShift(x));
            break;
        default:
            break;
    }
}

tagRGBQUAD CxImage::BlindGetPixelColor(std::int64_t x, std::int64_t y, bool /*getAlpha*/) const {
    if (header_.biClrUsed != 0) {
        return GetPaletteColor(BlindGetPixelIndex(x, y));
    }
    const std::uint8_t* pixel = rowAt(y) + 3 * x;
    return {.rgbBlue = pixel[0], .rgbGreen = pixel[1], .rgbRed = pixel[2], .rgbReserved = 0};
}

void CxImage::BlindSetPixelColor(std::int64_t x, std::int64_t y, tagRGBQUAD c, bool /*setAlpha*/) {
    if (header_.biClrUsed != 0) {
        BlindSetPixelIndex(x, y, GetNearestIndex(c));
        return;
    }
    std::uint8_t* pixel = rowAt(y) + 3 * x;
    pixel[0] = c.rgbBlue;
    pixel[1] = c.rgbGreen;
    pixel[2] = c.rgbRed;
}
