#include <array>
#include <cfloat>
#include <cstddef>

#include "image/cx_image.h"
#include "image/dot_packing.h"

static_assert(FLT_EVAL_METHOD == 0, "wider intermediate results would change dots");

bool CxImage::Light(int brightness, int contrast) {
    if (!dib_) {
        return false;
    }
    // Widened so that no argument overflows; single precision decides the table.
    const float slope = static_cast<float>(std::int64_t{contrast} + 100) / 100.0F;
    const auto offset = static_cast<float>(std::int64_t{brightness} + 128);
    std::array<std::uint8_t, 256> table{};
    for (int i = 0; i < 256; ++i) {
        const float tone = static_cast<float>(i - 128) * slope + offset + 0.5F;
        table[static_cast<std::size_t>(i)] =
            static_cast<std::uint8_t>(tone <= 0.0F ? 0 : (tone >= 255.0F ? 255 : tone));
    }
    return Lut(table.data());
}

bool CxImage::Lut(const std::uint8_t* table) {
    if (!dib_ || table == nullptr) {
        return false;
    }
    const std::uint32_t width = GetWidth();
    for (std::uint32_t y = 0; y < GetHeight(); ++y) {
        if (GetBpp() == 8) {
            std::uint8_t* row = rowAt(y);
            for (std::uint32_t x = 0; x < width; ++x) {
                row[x] = table[row[x]];
            }
        } else {
            for (std::uint32_t x = 0; x < width; ++x) {
                BlindSetPixelIndex(x, y, table[BlindGetPixelIndex(x, y)]);
            }
        }
    }
    return true;
}

void CxImage::Negative() {
    if (!dib_) {
        return;
    }
    std::uint8_t* bits = info_.bits;
    for (std::size_t i = 0; i < header_.biSizeImage; ++i) {
        bits[i] = static_cast<std::uint8_t>(~bits[i]);
    }
}

bool CxImage::IncreaseBpp(std::uint32_t nbit) {
    if (!dib_ || (nbit != 4 && nbit != 8 && nbit != 24)) {
        return false;
    }
    if (GetBpp() >= nbit) {
        return GetBpp() == nbit;
    }
    CxImage local;
    if (!createLike(local, GetWidth(), GetHeight(), nbit)) {
        setLastError(local.GetLastError());
        return false;
    }
    local.SetPalette(GetPalette(), GetNumColors());
    const std::uint32_t width = GetWidth();
    for (std::uint32_t y = 0; y < GetHeight(); ++y) {
        if (GetBpp() == 1 && nbit == 8) {
            unpackDots(rowAt(y), width, local.rowAt(y));
            continue;
        }
        for (std::uint32_t x = 0; x < width; ++x) {
            if (nbit == 24) {
                local.BlindSetPixelColor(x, y, BlindGetPixelColor(x, y));
            } else {
                local.BlindSetPixelIndex(x, y, BlindGetPixelIndex(x, y));
            }
        }
    }
    return Transfer(local);
}
