#include <algorithm>
#include <cstdint>
#include <limits>

#include "filter/log.h"
#include "printer/anti_wrinkle.h"
#include "printer/blank_rows.h"
#include "printer/kelp_printer.h"
#include "printer/zeroed_buffer.h"

namespace {

constexpr std::uint8_t kMeasureTop = 0x02;
constexpr std::uint8_t kMeasureBottom = 0x08;

/// First row and end of a page's content; both 0 where nobody asked.
struct ContentRows {
    unsigned long top = 0;
    unsigned long end = 0;
};

ContentRows measureContent(const KelpPrinter& printer, const unsigned char* pixels,
                           unsigned long bytesPerLine, unsigned long height, unsigned long width) {
    ContentRows content;
    const unsigned long skip = printer.getSkipRightPixels();
    if ((printer.getRemoveBlankEdges() & kMeasureBottom) != 0) {
        content.end = kelpImageCountBlankLinesFromBack(pixels, bytesPerLine, height, skip, width);
        kelpLogCommon(0,
                      "printImage: Removal of bottom blank edges detected, number of bottom blank "
                      "lines: %lu",
                      content.end);
    }
    if ((printer.getRemoveBlankEdges() & kMeasureTop) != 0) {
        content.top = kelpImageCountBlankLinesFromFront(pixels, bytesPerLine, height, skip, width);
        kelpLogCommon(0,
                      "printImage: Removal of top blank edges detected, number of top blank lines: "
                      "%lu",
                      content.top);
    }
    return content;
}

// The content's rows only show here; what is printed is always the whole page.
void logProcessed(const unsigned char* processed, unsigned long bytesPerLine, unsigned long height,
                  unsigned long width, const ContentRows& content) {
    unsigned long adjustedHeight = height;
    const unsigned char* adjusted = processed;
    if (content.end > content.top) {
        adjustedHeight = content.end - content.top;
        adjusted += content.top * bytesPerLine;
        kelpLogCommon(0, "printImage: Adjusted image height to %lu, pointer offset by %lu bytes",
                      adjustedHeight, content.top * bytesPerLine);
    }
    // Width and bytes per line have changed places here; readers of these logs know it so.
    kelpLogCommon(0,
                  "printImage: Processed image information - pointer address: %lu, width: %lu, "
                  "height: %lu, bytes per line: %lu, number of top blank lines: %lu, number of "
                  "bottom blank lines: %lu, adjusted height: %lu",
                  static_cast<unsigned long>(reinterpret_cast<std::uintptr_t>(adjusted)),
                  bytesPerLine, height, width, content.top, content.end, adjustedHeight);
}

}  // namespace

std::size_t KelpPrinter::processedSize(unsigned long bytesPerLine, unsigned long height,
                                       unsigned long width) const {
    std::uint64_t imageWidth = width;
    std::uint64_t imageHeight = height;
    if (antiWrinkle_ != 0 && pageHdr_ != nullptr) {
        const AntiWrinkleCanvas canvas = antiWrinkleCanvas(resolution_, antiWrinkle_, *pageHdr_);
        const AntiWrinkleMargins margins = antiWrinkleMargins(
            canvas, static_cast<std::uint32_t>(width), static_cast<std::uint32_t>(height));
        imageWidth += 2 * std::uint64_t{margins.ex};
        imageHeight += 2 * std::uint64_t{margins.ey};
        if (imageWidth * 8 * imageHeight > std::numeric_limits<std::uint32_t>::max()) {
            // No image of that size can be made: the page stays as it is.
            imageWidth = width;
            imageHeight = height;
        }
    }
    const std::uint64_t rowBytes = (imageWidth + 3) / 4 * 4;
    const std::uint64_t size =
        std::max<std::uint64_t>(std::uint64_t{2} * bytesPerLine * height, rowBytes * imageHeight);
    // Where a size_t has 32 bits: a size that nobody can allocate, not what is left of this one.
    return static_cast<std::size_t>(
        std::min<std::uint64_t>(size, std::numeric_limits<std::size_t>::max()));
}

void KelpPrinter::printImage(const unsigned char* pixels, unsigned long bytesPerLine,
                             unsigned long height, unsigned long width) {
    kelpLogCommon(
        0, "printImage: Start processing image, input width: %lu, height: %lu, bytes per line: %lu",
        width, height, bytesPerLine);
    ZeroedBuffer processed;
    // Holds nothing; a page that leaves no room for it is not begun.
    ZeroedBuffer workBuffer = allocateZeroed(bytesPerLine * height);
    if (workBuffer) {
        kelpLogCommon(0, "printImage: Memory allocated successfully, size: %lu bytes",
                      bytesPerLine * height);
        const ContentRows content = measureContent(*this, pixels, bytesPerLine, height, width);
        saveOrigin(pixels, bytesPerLine, height, width);
        processed = allocateZeroed(processedSize(bytesPerLine, height, width));
        if (processed) {
            kelpLogCommon(0,
                          "printImage: Memory for processing result allocated successfully, size: "
                          "%lu bytes",
                          bytesPerLine * height);
            // What it could leave in the buffer nobody reads.
            processPage(halftoneType_, pixels, static_cast<int>(bytesPerLine),
                        static_cast<int>(width), static_cast<int>(height), processed.get(), false);
            logProcessed(processed.get(), bytesPerLine, height, width, content);
            saveAndPrintProcessed();
        } else {
            kelpLogCommon(3,
                          "printImage: Memory allocation for processing result failed, unable to "
                          "continue processing");
        }
        workBuffer.reset();
        // The pointer is already cleared: the address is always null.
        kelpLogCommon(0, "printImage: Freed the allocated memory, address: %p",
                      static_cast<void*>(workBuffer.get()));
    } else {
        kelpLogCommon(3,
                      "printImage: Memory allocation failed, unable to process image, exiting "
                      "processing");
    }
    if (processed) {
        kelpLogCommon(0, "printImage: Freed the memory for processing result, address: %p",
                      static_cast<void*>(processed.get()));
        processed.reset();
    }
    kelpLogCommon(0, "printImage: Image processing completed");
}

void KelpPrinter::saveOrigin(const unsigned char* pixels, unsigned long bytesPerLine,
                             unsigned long height, unsigned long width) {
    if (!snapshots_) {
        return;
    }
    setSnapshotTemplate("/var/spool/cups/tmp/origin_%d-%d-%d_%d_%d_%d_%ld.bmp");
    kelpLogCommon(0,
                  "printImage: Saving original image, file path will be generated based on time");
    saveImage(pixels, bytesPerLine, height, width, 8);
}

void KelpPrinter::saveAndPrintProcessed() {
    // A page that could not be loaded leaves no image, or the emptied one of the page before.
    const bool printable = pimage_ != nullptr && pimage_->IsValid();
    if (snapshots_) {
        setSnapshotTemplate("/var/spool/cups/tmp/dithered_%d-%d-%d_%d_%d_%d_%ld.bmp");
        kelpLogCommon(
            0, "printImage: Saving processed image, file path will be generated based on time");
        if (printable) {
            saveImage(pimage_->GetBits(0), pimage_->GetEffWidth(), pimage_->GetHeight(),
                      pimage_->GetWidth(), 8);
        }
    }
    kelpLogCommon(0, "printImage: Starting to print the processed image");
    if (printable) {
        doPrintImage(pimage_->GetBits(0), pimage_->GetEffWidth(), pimage_->GetHeight(),
                     pimage_->GetWidth());
    } else {
        kelpLogCommon(3, "printImage: pimage is NULL, unable to print the image");
    }
}
