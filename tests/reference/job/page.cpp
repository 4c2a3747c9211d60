#include "tests/reference/job/page.h"

#include <fcntl.h>

#include <cstdlib>
#include <ctime>

#include "tests/reference/encoding.h"
#include "tests/reference/job/log.h"
#include "tests/reference/job/process.h"
#include "tests/reference/snapshot.h"

namespace reference {

namespace {

const char* const kOriginName = "/var/spool/cups/tmp/origin_";
const char* const kDitheredName = "/var/spool/cups/tmp/dithered_";

void saveImage(Printer& printer, const char* prefix, const unsigned char* data,
               unsigned long bytesPerLine, unsigned long height, unsigned long width) {
    time_t now = time(nullptr);
    const struct tm* local = localtime(&now);
    char name[1024];
    snprintf(name, sizeof(name), "%s%d-%d-%d_%d_%d_%d_%ld.bmp", prefix, local->tm_year + 1900,
             local->tm_mon + 1, local->tm_mday, local->tm_hour, local->tm_min, local->tm_sec,
             static_cast<long>(printer.pageIndex));
    printer.pageIndex++;
    FILE* file = openRegular(name, O_RDWR | O_CREAT | O_TRUNC, "wb+");
    if (file == nullptr) {
        fprintf(stderr, "KelpPrinter::saveImage: unable to open the file %s\n", name);
        return;
    }
    std::vector<unsigned char> bytes = snapshotBytes(data, bytesPerLine, height, width, 8);
    fwrite(bytes.data(), 1, bytes.size(), file);
    fclose(file);
}

// The page is packed over its own pixels, so a second print of the same image
// prints what the first one left.
void doPrintImage(Printer& printer, StridedImage& image) {
    const int skip = 0;
    logLine(0, "GrayToMono, bpl(%d), h(%d), skipPixels(%d), wb(%d)", image.width, image.height,
            skip, keptPixels(image.width, skip));
    int copies = static_cast<int>(printer.header->NumCopies);
    printer.output.bytes(
        encodeLabel(image.width, image.height, skip, copies, image.px, printer.lastSet));
    std::vector<unsigned char> packed = grayToMono(image.width, image.height, skip, image.px);
    for (std::size_t i = 0; i < packed.size(); i++)
        image.px[i] = packed[i];
}

}  // namespace

void printImage(Printer& printer, const unsigned char* pixels, unsigned long bytesPerLine,
                unsigned long height, unsigned long width) {
    const unsigned long size = bytesPerLine * height;
    logLine(0,
            "printImage: Start processing image, input width: %zu, height: %zu, bytes per line: "
            "%zu",
            width, height, bytesPerLine);
    void* work = calloc(size, 1);
    unsigned char* result = nullptr;
    if (work == nullptr) {
        logLine(3,
                "printImage: Memory allocation failed, unable to process image, exiting "
                "processing");
        logLine(0, "printImage: Image processing completed");
        return;
    }
    logLine(0, "printImage: Memory allocated successfully, size: %zu bytes", size);

    logLine(0, "printImage: Saving original image, file path will be generated based on time");
    saveImage(printer, kOriginName, pixels, bytesPerLine, height, width);

    // Twice the page, and never less than the padded rows that are copied into it.
    const unsigned long paddedRow = (width + 3) / 4 * 4;
    unsigned long room = 2 * size;
    if (room < paddedRow * height)
        room = paddedRow * height;
    result = static_cast<unsigned char*>(calloc(room, 1));
    if (result == nullptr) {
        logLine(3,
                "printImage: Memory allocation for processing result failed, unable to continue "
                "processing");
    } else {
        logLine(0,
                "printImage: Memory for processing result allocated successfully, size: %zu bytes",
                size);
        processPage(printer, pixels, static_cast<int>(bytesPerLine), static_cast<int>(width),
                    static_cast<int>(height), result);

        logLine(0,
                "printImage: Processed image information - pointer address: %lu, width: %zu, "
                "height: %zu, bytes per line: %zu, number of top blank lines: %zu, number of "
                "bottom blank lines: %zu, adjusted height: %zu",
                reinterpret_cast<unsigned long>(result), bytesPerLine, height, width, 0UL, 0UL,
                height);

        const bool printable = printer.pimage != nullptr && printer.pimage->has_value();
        logLine(0, "printImage: Saving processed image, file path will be generated based on time");
        if (printable) {
            const StridedImage& image = printer.pimage->value();
            saveImage(
                printer, kDitheredName, image.px.data(), static_cast<unsigned long>(image.stride),
                static_cast<unsigned long>(image.height), static_cast<unsigned long>(image.width));
        }
        logLine(0, "printImage: Starting to print the processed image");
        if (printable)
            doPrintImage(printer, printer.pimage->value());
        else
            logLine(3, "printImage: pimage is NULL, unable to print the image");
    }

    free(work);
    work = nullptr;
    logLine(0, "printImage: Freed the allocated memory, address: %p", work);
    if (result != nullptr) {
        char address[32];
        snprintf(address, sizeof(address), "%p", static_cast<void*>(result));
        free(result);
        logLine(0, "printImage: Freed the memory for processing result, address: %s", address);
    }
    logLine(0, "printImage: Image processing completed");
}

}  // namespace reference
