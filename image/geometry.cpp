#include <algorithm>
#include <cstring>
#include <limits>

#include "image/byte_reversal.h"
#include "image/cx_image.h"

// Rotate180, Mirror and MakeCenter do not ask whether the local image could be made: where it
// could not, the destination ends empty with the reason in its last error.

bool CxImage::Rotate180(CxImage* destination) {
    if (!dib_) {
        return false;
    }
    const std::uint32_t width = GetWidth();
    const std::uint32_t height = GetHeight();
    CxImage local;
    if (createLike(local, width, height, 8)) {
        local.SetPalette(GetPalette(), GetNumColors());
        for (std::uint32_t y = 0; y < height; ++y) {
            std::uint8_t* dst = local.rowAt(height - 1 - y);
            if (GetBpp() == 8) {
                reverseBytes(rowAt(y), width, dst);
            } else {
                for (std::uint32_t x = 0; x < width; ++x) {
                    dst[width - 1 - x] = BlindGetPixelIndex(x, y);
                }
            }
        }
    }
    return (destination != nullptr ? *destination : *this).Transfer(local);
}

void CxImage::Mirror() {
    if (!dib_ || GetBpp() != 8) {
        return;
    }
    const std::uint32_t width = GetWidth();
    CxImage local;
    if (createLike(local, width, GetHeight(), 8)) {
        local.SetPalette(GetPalette(), GetNumColors());
        for (std::uint32_t y = 0; y < GetHeight(); ++y) {
            reverseBytes(rowAt(y), width, local.rowAt(y));
        }
    }
    Transfer(local);
}

void CxImage::MakeCenter(int newWidth) {
    if (!dib_ || std::int64_t{GetWidth()} >= newWidth) {
        return;
    }
    const std::uint32_t width = GetWidth();
    CxImage local;
    if (createLike(local, static_cast<std::uint32_t>(newWidth), GetHeight(), 8)) {
        local.SetPalette(GetPalette(), GetNumColors());
        const int offset = (newWidth - header_.biWidth) / 2;
        for (std::uint32_t y = 0; y < GetHeight(); ++y) {
            std::uint8_t* dst = local.rowAt(y) + offset;
            for (std::uint32_t x = 0; x < width; ++x) {
                dst[x] = BlindGetPixelIndex(x, y);
            }
        }
    }
    Transfer(local);
}

bool CxImage::Expand(long left, long top, long right, long bottom, tagRGBQUAD canvascolor) {
    if (!dib_ || left < 0 || top < 0 || right < 0 || bottom < 0) {
        return false;
    }
    // Each margin is held below 2^32 before it is added, so that the sums cannot wrap to a size
    // that is smaller than the image. 64 bits also where a long has 32.
    constexpr std::int64_t limit = std::numeric_limits<std::uint32_t>::max();
    const auto enlarged = [&](std::uint32_t size, std::int64_t before, std::int64_t after) {
        return size + std::min(before, limit) + std::min(after, limit);
    };
    const std::int64_t newWidth = enlarged(GetWidth(), left, right);
    const std::int64_t newHeight = enlarged(GetHeight(), bottom, top);
    if (newWidth > limit || newHeight > limit) {
        setLastError("CXIMAGE_MAX_MEMORY exceeded");
        return false;
    }
    CxImage local;
    if (!createLike(local, static_cast<std::uint32_t>(newWidth),
                    static_cast<std::uint32_t>(newHeight), GetBpp())) {
        setLastError(local.GetLastError());
        return false;
    }
    local.SetPalette(GetPalette(), GetNumColors());

    const std::uint32_t width = GetWidth();
    const std::uint32_t height = GetHeight();
    const auto copyRows = [&](std::int64_t bytesPerPixel) {
        for (std::uint32_t y = 0; y < height; ++y) {
            std::memcpy(local.rowAt(std::int64_t{bottom} + y) + left * bytesPerPixel, rowAt(y),
                        static_cast<std::size_t>(bytesPerPixel) * width);
        }
    };
    switch (GetBpp()) {
        case 8:
            std::memset(local.info_.bits, local.GetNearestIndex(canvascolor),
                        local.header_.biSizeImage);
            copyRows(1);
            break;
        case 24:
            for (std::int64_t y = 0; y < newHeight; ++y) {
                for (std::int64_t x = 0; x < newWidth; ++x) {
                    local.BlindSetPixelColor(x, y, canvascolor);
                }
            }
            copyRows(3);
            break;
        default: {
            const std::uint8_t canvas = local.GetNearestIndex(canvascolor);
            for (std::int64_t y = 0; y < newHeight; ++y) {
                for (std::int64_t x = 0; x < newWidth; ++x) {
                    const bool inSource = x >= left && x < std::int64_t{left} + width &&
                                          y >= bottom && y < std::int64_t{bottom} + height;
                    local.SetPixelIndex(x, y,
                                        inSource ? GetPixelIndex(x - left, y - bottom) : canvas);
                }
            }
            break;
        }
    }
    return Transfer(local);
}
