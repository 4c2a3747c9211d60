#include <algorithm>
#include <array>
#include <cstddef>

#include "enhance/tattoo.h"
#include "filter/log.h"
#include "printer/kelp_printer.h"

namespace {

std::ptrdiff_t offsetOf(int row, int stride) {
    return static_cast<std::ptrdiff_t>(row) * stride;
}

/// Whether so many rows of so many bytes can be read from the image.
bool hasRowsOf(const CxImage& img, int width, int height) {
    return img.IsValid() && img.GetBpp() == 8 && width >= 0 &&
           static_cast<std::uint32_t>(width) <= img.GetWidth() && height >= 0 &&
           static_cast<std::uint32_t>(height) <= img.GetHeight();
}

}  // namespace

int KelpPrinter::PageProcess(DitherType type, const unsigned char* pixels, int bytesPerLine,
                             int width, int height, unsigned char* out) {
    return processPage(type, pixels, bytesPerLine, width, height, out, true);
}

bool KelpPrinter::loadPage(const unsigned char* pixels, int bytesPerLine, int width, int height) {
    if (!cximage_.CreateFromArray(pixels, static_cast<std::uint32_t>(width),
                                  static_cast<std::uint32_t>(height), 8,
                                  static_cast<std::uint32_t>(bytesPerLine), false)) {
        kelpLogCommon(4, "cximage.CreateFromArray with grey failed!");
        return false;
    }
    kelpLogCommon(0, "PageProcess: Successfully created CxImage from array with stride %d",
                  bytesPerLine);

    if (brightness_ != 0 || contrast_ != 0) {
        const int brightness = brightness_ * 5;
        const int contrast = contrast_ * 2;
        cximage_.Light(brightness, contrast);
        kelpLogCommon(0, "PageProcess: Adjusted brightness to %d and contrast to %d", brightness,
                      contrast);
    }
    if (rotate180Print_) {
        cximage_.Rotate180();
        kelpLogCommon(0, "PageProcess: Rotated the image 180 degrees");
    }
    if (mirrorPrint_) {
        cximage_.Mirror();
        kelpLogCommon(0, "PageProcess: Mirrored the image");
    }
    return true;
}

bool KelpPrinter::makeStencil(int bytesPerLine, int width, int height, unsigned char* out,
                              bool fillsOut) {
    // Rows that are packed need not go through the buffer.
    const bool isPacked = !fillsOut && bytesPerLine == width;
    TQImage src = isPacked ? TQImage::unset(width, height, TQ_IMG_GRAY) : TQImage();
    copyPixels(cximage_, isPacked ? src.data : out, width, height, bytesPerLine);
    kelpLogCommon(0,
                  "PageProcess: Copied pixels to the output buffer for TQ dithering, with "
                  "stride %d, EffWidth %d",
                  bytesPerLine, static_cast<int>(cximage_.GetEffWidth()));
    if (!isPacked) {
        // The rows are taken as packed, although bytesPerLine says that they are not.
        src = TQImage(width, height, TQ_IMG_GRAY, out);
    }
    if (pimage_ != &cximage_) {
        cximage_.Destroy();  // makes room for the result
    }
    const TQImage result =
        halftoneType_ == DitherTattooX8 ? tqTattooDitheringX8(src) : tqTattooDithering(src);
    src = TQImage();
    // The rounded width is only reported.
    kelpLogCommon(0, "PageProcess: Applied TQ dithering with stride %d, width %d",
                  (result.width + 3) / 4 * 4, width);
    if (!tattooImage_.CreateFromArray(result.data, static_cast<std::uint32_t>(width),
                                      static_cast<std::uint32_t>(height), 8,
                                      static_cast<std::uint32_t>(width), false)) {
        kelpLogCommon(3, "PageProcess: Failed to create a new CxImage from TQ dithered data");
        return false;
    }
    kelpLogCommon(0, "PageProcess: Successfully created a new CxImage from TQ dithered data");
    pimage_ = &tattooImage_;
    return true;
}

int KelpPrinter::processPage(DitherType type, const unsigned char* pixels, int bytesPerLine,
                             int width, int height, unsigned char* out, bool fillsOut) {
    setUseTQDithering(halftoneType_ == DitherTattoo || halftoneType_ == DitherTattooX8);
    kelpLogCommon(0, "PageProcess: TQ dithering is %s", useTQDithering_ ? "enabled" : "disabled");

    if (!loadPage(pixels, bytesPerLine, width, height)) {
        return 0;
    }
    if (useTQDithering_) {
        if (!makeStencil(bytesPerLine, width, height, out, fillsOut)) {
            return 0;
        }
    } else {
        cximage_.DitherAt8Bits(type);
        pimage_ = &cximage_;
        kelpLogCommon(0, "PageProcess: Applied default dithering and increased bit depth");
    }

    kelpLogCommon(0, "PageProcess: negativePrint_ %d", negativePrint_ ? 1 : 0);
    if (negativePrint_) {
        kelpLogCommon(0, "PageProcess: Inverting the image for negative print");
        pimage_->Negative();
    }
    if (antiWrinkle_ != 0) {
        EnableAntiWrink(*pimage_);
    }

    const auto effWidth = static_cast<int>(pimage_->GetEffWidth());
    if (fillsOut) {
        // Inverts once more for a negative print; the buffer is a by-product, pimage_ is printed.
        copyProcessedPixels(pimage_, out, static_cast<int>(pimage_->GetWidth()),
                            static_cast<int>(pimage_->GetHeight()), effWidth);
    }
    // Its low 32 bits where it is more.
    const auto length =
        static_cast<int>(static_cast<unsigned int>(height) * static_cast<unsigned int>(effWidth));
    kelpLogCommon(0, "PageProcess: Filled the output buffer with processed pixels, length: %d",
                  length);
    return length;
}

void KelpPrinter::copyPixels(const CxImage& img, unsigned char* out, int width, int height,
                             int stride) {
    const bool isWithin = hasRowsOf(img, width, height);
    for (int y = 0; y < height; ++y) {
        unsigned char* row = out + offsetOf(y, stride);
        if (isWithin) {
            std::copy_n(img.GetBits(static_cast<std::uint32_t>(y)), width, row);
            continue;
        }
        for (int x = 0; x < width; ++x) {
            row[x] = img.GetPixelIndex(x, y);
        }
    }
}

void KelpPrinter::copyProcessedPixels(const CxImage* img, unsigned char* out, int width, int height,
                                      int stride) const {
    std::array<unsigned char, 256> table{};
    for (std::size_t v = 0; v < table.size(); ++v) {
        const auto shown = static_cast<unsigned char>(v == 1 ? 0xFF : v);
        table[v] = negativePrint_ ? static_cast<unsigned char>(~shown) : shown;
    }
    for (int y = 0; y < height; ++y) {
        unsigned char* row = out + offsetOf(y, stride);
        for (int x = 0; x < width; ++x) {
            row[x] = table[img->GetPixelIndex(x, y)];
        }
    }
}
