#pragma once

#include <cups/raster.h>

#include <optional>

#include "tests/reference/images.h"
#include "tests/reference/job/output.h"

namespace reference {

// What lives through the whole job: the streams, the images of the last page,
// the counters.
struct Printer {
    Output output;
    const cups_page_header2_t* header = nullptr;
    int brightness = 0;
    int halftoneType = 0;
    bool mirrorPrint = false;
    bool negativePrint = false;

    std::optional<StridedImage> workingImage;
    std::optional<StridedImage> tattooImage;
    std::optional<StridedImage>* pimage = nullptr;

    unsigned long pageIndex = 0;  // number of the next snapshot
    int lastSet = 0;
};

void printImage(Printer& printer, const unsigned char* pixels, unsigned long bytesPerLine,
                unsigned long height, unsigned long width);

}  // namespace reference
