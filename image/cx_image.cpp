#include "image/cx_image.h"

#include <algorithm>
#include <cstddef>
#include <cstdio>
#include <cstring>
#include <limits>

namespace {

constexpr std::uint32_t kHeaderSize = sizeof(BITMAPINFOHEADER);

std::uint32_t normalisedDepth(std::uint32_t bpp) {
    if (bpp <= 1) {
        return 1;
    }
    if (bpp <= 4) {
        return 4;
    }
    return bpp <= 8 ? 8 : 24;
}

std::uint32_t paletteLength(std::uint32_t bpp) {
    return bpp == 24 ? 0 : 1U << bpp;
}

bool exceedsMemoryLimit(std::uint32_t width, std::uint32_t height, std::uint32_t bpp) {
    // Two comparisons of products that wrap at 32 bits. The first can never hold and the second
    // lets a product through that wraps to 0 on both sides, so the true size decides as well.
    const std::uint32_t area = width * height;
    const std::uint32_t bits = area * bpp;
    if (bits / 8 > 0x7FFFFFFFU || bits / bpp != area) {
        return true;
    }
    constexpr std::uint64_t limit = std::numeric_limits<std::uint32_t>::max();
    const std::uint64_t paddedRowBits = std::uint64_t{bpp} * width + 31;
    const std::uint64_t rowBytes = paddedRowBits / 32 * 4;
    return paddedRowBits > limit ||
           kHeaderSize + std::uint64_t{paletteLength(bpp)} * 4 + rowBytes * height > limit;
}

}  // namespace

std::uint8_t* CxImage::Create(std::uint32_t width, std::uint32_t height, std::uint32_t bpp,
                              std::uint32_t imageType) {
    Destroy();
    if (width == 0 || height == 0) {
        setLastError("CxImage::Create : width and height must be greater than zero");
        return nullptr;
    }
    bpp = normalisedDepth(bpp);
    if (exceedsMemoryLimit(width, height, bpp)) {
        setLastError("CXIMAGE_MAX_MEMORY exceeded");
        return nullptr;
    }

    info_.effWidth = (bpp * width + 31) / 32 * 4;
    info_.imageType = imageType;
    header_.biSize = kHeaderSize;
    header_.biWidth = static_cast<std::int32_t>(width);
    header_.biHeight = static_cast<std::int32_t>(height);
    header_.biPlanes = 1;
    header_.biBitCount = static_cast<std::uint16_t>(bpp);
    header_.biCompression = 0;
    header_.biSizeImage = info_.effWidth * height;
    header_.biClrUsed = paletteLength(bpp);

    // Zeroed, so that no pixel or padding byte is ever printed that was not set here.
    dib_.reset(static_cast<std::uint8_t*>(std::calloc(GetSize(), 1)));
    if (!dib_) {
        setLastError("CxImage::Create can't allocate memory");
        return nullptr;
    }
    std::memcpy(dib_.get(), &header_, kHeaderSize);
    info_.bits = GetBits(0);
    return dib_.get();
}

bool CxImage::CreateFromArray(const std::uint8_t* array, std::uint32_t width, std::uint32_t height,
                              std::uint32_t bpp, std::uint32_t stride, bool flip) {
    if (array == nullptr || (bpp != 1 && bpp != 4 && bpp != 8 && bpp != 24 && bpp != 32)) {
        return false;
    }
    if (Create(width, height, bpp, 0) == nullptr) {
        return false;
    }
    if (bpp < 24) {
        SetGrayPalette();
    }
    for (std::uint32_t y = 0; y < height; ++y) {
        std::uint8_t* dst = rowAt(flip ? height - 1 - y : y);
        const std::uint8_t* src = array + std::size_t{y} * stride;
        if (bpp == 32) {
            for (std::size_t x = 0; x < width; ++x) {
                std::memcpy(dst + 3 * x, src + 4 * x, 3);
            }
        } else {
            std::memcpy(dst, src, std::min(info_.effWidth, stride));
        }
    }
    return true;
}

bool CxImage::Destroy() {
    dib_.reset();
    return true;
}

bool CxImage::Transfer(CxImage& from, bool /*transferOwnership*/) {
    Destroy();
    header_ = from.header_;
    info_ = from.info_;
    dib_ = std::move(from.dib_);
    from.header_ = {};
    from.info_ = {};
    return true;
}

void CxImage::CopyInfo(const CxImage& src) {
    if (!dib_) {
        info_ = src.info_;
    }
}

std::uint32_t CxImage::GetSize() const {
    return kHeaderSize + header_.biSizeImage + GetPaletteSize();
}

std::uint8_t* CxImage::GetBits(std::uint32_t row) const {
    if (!dib_ || row >= GetHeight()) {
        return nullptr;
    }
    return dib_.get() + kHeaderSize + GetPaletteSize() + std::size_t{row} * info_.effWidth;
}

std::uint8_t* CxImage::rowAt(std::int64_t y) const {
    return info_.bits + y * info_.effWidth;
}

void CxImage::setLastError(const char* text) {
    std::snprintf(info_.lastError, sizeof info_.lastError, "%s", text);
}

bool CxImage::createLike(CxImage& local, std::uint32_t width, std::uint32_t height,
                         std::uint32_t bpp) const {
    local.CopyInfo(*this);
    return local.Create(width, height, bpp, info_.imageType) != nullptr;
}
