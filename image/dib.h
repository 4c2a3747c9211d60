#ifndef KELP_IMAGE_DIB_H
#define KELP_IMAGE_DIB_H

#include <cstdint>

// The device-independent bitmap structures, in their published layout.

/// One palette entry or colour, four bytes in memory order.
struct tagRGBQUAD {
    std::uint8_t rgbBlue = 0;
    std::uint8_t rgbGreen = 0;
    std::uint8_t rgbRed = 0;
    std::uint8_t rgbReserved = 0;

    bool operator==(const tagRGBQUAD&) const = default;
};
static_assert(sizeof(tagRGBQUAD) == 4);

/// The 40-byte information header that opens a bitmap block.
struct BITMAPINFOHEADER {
    std::uint32_t biSize = 0;
    std::int32_t biWidth = 0;
    std::int32_t biHeight = 0;
    std::uint16_t biPlanes = 0;
    std::uint16_t biBitCount = 0;
    std::uint32_t biCompression = 0;
    std::uint32_t biSizeImage = 0;
    std::int32_t biXPelsPerMeter = 0;
    std::int32_t biYPelsPerMeter = 0;
    std::uint32_t biClrUsed = 0;
    std::uint32_t biClrImportant = 0;
};
static_assert(sizeof(BITMAPINFOHEADER) == 40);

#endif
