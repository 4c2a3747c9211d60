#include <algorithm>
#include <cstring>
#include <vector>

#include "image/cx_image.h"
#include "image/dot_packing.h"
#include "image/error_diffusion.h"
#include "image/ordered_dither.h"

namespace {

// Every number that is not named here, negative ones included, is Floyd-Steinberg.
ErrorKernel errorKernel(long method) {
    switch (method) {
        case 2:
            return ErrorKernel::Burkes;
        case 3:
            return ErrorKernel::Stucki;
        case 4:
            return ErrorKernel::JarvisJudiceNinke;
        case 5:
            return ErrorKernel::Sierra;
        case 6:
            return ErrorKernel::StevensonArce;
        default:
            return ErrorKernel::FloydSteinberg;
    }
}

// What SetPixelIndex keeps of a value at each depth: error diffusion hands its corrected grey
// values through the image.
std::uint8_t storedBits(std::uint32_t bpp) {
    return bpp == 8 ? 0xFF : (bpp == 4 ? 0x0F : 0x00);
}

void readRow(const CxImage& image, std::uint32_t y, std::uint8_t* grey) {
    for (std::uint32_t x = 0; x < image.GetWidth(); ++x) {
        grey[x] = image.BlindGetPixelIndex(x, y);
    }
}

void ditherByPosition(const CxImage& source, CxImage& mono, long method) {
    const std::uint32_t width = source.GetWidth();
    const bool holdsGrey = source.GetBpp() == 8;
    std::vector<std::uint8_t> read(holdsGrey ? 0 : width);
    for (std::uint32_t y = 0; y < source.GetHeight(); ++y) {
        if (!holdsGrey) {
            readRow(source, y, read.data());
        }
        const std::uint8_t* grey = holdsGrey ? source.GetBits(y) : read.data();
        std::uint8_t* packed = mono.GetBits(y);
        switch (method) {
            case 0:
                thresholdRow(grey, width, packed);
                break;
            case 1:
                orderedRow(grey, width, y, packed);
                break;
            default:
                bayerRow(grey, width, y, packed);
                break;
        }
    }
}

void ditherByErrorDiffusion(const CxImage& source, CxImage& mono, ErrorKernel kernel) {
    const std::uint32_t height = source.GetHeight();
    if (source.GetBpp() == 8) {
        const GreyPage page{source.GetBits(0), source.GetEffWidth(), source.GetWidth(), height};
        return diffuseErrors(kernel, page, {mono.GetBits(0), mono.GetEffWidth()});
    }
    ErrorDiffusion diffusion(kernel, source.GetWidth(), storedBits(source.GetBpp()));
    std::uint32_t fed = 0;
    const auto feed = [&] {
        std::uint8_t* row = diffusion.nextInputRow();
        if (fed < height) {
            readRow(source, fed, row);
        }
        ++fed;
    };
    for (std::size_t i = 0; i < ErrorDiffusion::kRowsAhead; ++i) {
        feed();
    }
    for (std::uint32_t y = 0; y < height; ++y) {
        feed();
        diffusion.halftoneRow(mono.GetBits(y));
    }
}

}  // namespace

bool CxImage::Dither(long method) {
    if (!dib_) {
        return false;
    }
    if (GetBpp() == 1) {
        return true;
    }
    CxImage local;
    return ditherInto(local, method) && Transfer(local);
}

bool CxImage::DitherAt8Bits(long method) {
    if (!dib_ || GetBpp() != 8) {
        return Dither(method) && IncreaseBpp(8);
    }
    CxImage mono;
    if (!ditherInto(mono, method)) {
        return false;
    }
    std::fill_n(GetPalette(), GetNumColors(), tagRGBQUAD{});
    SetPalette(mono.GetPalette(), mono.GetNumColors());
    const std::uint32_t width = GetWidth();
    for (std::uint32_t y = 0; y < GetHeight(); ++y) {
        std::uint8_t* row = rowAt(y);
        unpackDots(mono.rowAt(y), width, row);
        std::memset(row + width, 0, GetEffWidth() - width);
    }
    return true;
}

bool CxImage::ditherInto(CxImage& mono, long method) {
    if (!createLike(mono, GetWidth(), GetHeight(), 1)) {
        setLastError(mono.GetLastError());
        return false;
    }
    if (method == 0 || method == 1 || method == 7) {
        ditherByPosition(*this, mono, method);
    } else {
        ditherByErrorDiffusion(*this, mono, errorKernel(method));
    }
    mono.SetPaletteColor(0, 0, 0, 0, 0);
    mono.SetPaletteColor(1, 255, 255, 255, 0);
    return true;
}
