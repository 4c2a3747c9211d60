#include "tests/reference/job/process.h"

#include "tests/reference/job/log.h"
#include "tests/reference/strided.h"
#include "tests/reference/tattoo.h"

namespace reference {

namespace {

// The chain reads the first width x height bytes of out, whatever the distance
// of its rows.
bool tattooRoute(Printer& printer, int bytesPerLine, int width, int height, unsigned char* out) {
    const StridedImage& working = printer.workingImage.value();
    for (long y = 0; y < height; y++)
        for (long x = 0; x < width; x++)
            out[y * bytesPerLine + x] = working.at(x, y);
    logLine(0,
            "PageProcess: Copied pixels to the output buffer for TQ dithering, with stride %d, "
            "EffWidth %d",
            bytesPerLine, working.stride);

    GrayImage src{width, height, {}};
    for (long k = 0; k < static_cast<long>(width) * height; k++)
        src.px.push_back(out[k]);
    GrayImage result = printer.halftoneType == 9 ? tattooDitheringX8(src) : tattooDithering(src);
    logLine(0, "PageProcess: Applied TQ dithering with stride %d, width %d",
            (result.width + 3) / 4 * 4, width);

    printer.tattooImage = loadStrided(result.px.data(), width, height, width);
    if (!printer.tattooImage.has_value()) {
        logLine(3, "PageProcess: Failed to create a new CxImage from TQ dithered data");
        return false;
    }
    logLine(0, "PageProcess: Successfully created a new CxImage from TQ dithered data");
    printer.pimage = &printer.tattooImage;
    return true;
}

}  // namespace

int processPage(Printer& printer, const unsigned char* pixels, int bytesPerLine, int width,
                int height, unsigned char* out) {
    const bool useTattoo = printer.halftoneType == 8 || printer.halftoneType == 9;
    logLine(0, "PageProcess: TQ dithering is %s", useTattoo ? "enabled" : "disabled");

    printer.workingImage = loadStrided(pixels, width, height, bytesPerLine);
    if (!printer.workingImage.has_value()) {
        logLine(4, "cximage.CreateFromArray with grey failed!");
        return 0;
    }
    logLine(0, "PageProcess: Successfully created CxImage from array with stride %d", bytesPerLine);

    StridedImage& working = printer.workingImage.value();
    if (printer.brightness != 0) {
        const int brightness = printer.brightness * 5;
        const int contrast = 0;
        working = light(working, brightness, contrast);
        logLine(0, "PageProcess: Adjusted brightness to %d and contrast to %d", brightness,
                contrast);
    }
    if (printer.mirrorPrint) {
        working = mirror(working);
        logLine(0, "PageProcess: Mirrored the image");
    }

    if (useTattoo) {
        if (!tattooRoute(printer, bytesPerLine, width, height, out))
            return 0;
    } else {
        working = ditherToIndices(working, printer.halftoneType);
        printer.pimage = &printer.workingImage;
        logLine(0, "PageProcess: Applied default dithering and increased bit depth");
    }

    StridedImage& image = printer.pimage->value();
    logLine(0, "PageProcess: negativePrint_ %d", printer.negativePrint ? 1 : 0);
    if (printer.negativePrint) {
        logLine(0, "PageProcess: Inverting the image for negative print");
        image = negative(image);
    }

    for (long y = 0; y < image.height; y++) {
        for (long x = 0; x < image.width; x++) {
            int v = image.at(x, y);
            if (v == 1)
                v = 0xFF;
            if (printer.negativePrint)
                v = ~v & 255;
            out[y * image.stride + x] = static_cast<unsigned char>(v);
        }
    }
    const int length = height * image.stride;
    logLine(0, "PageProcess: Filled the output buffer with processed pixels, length: %d", length);
    return length;
}

}  // namespace reference
