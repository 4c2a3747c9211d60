#include "tests/reference/job/page_loop.h"

#include <fcntl.h>

#include <climits>
#include <cstdio>
#include <cstring>
#include <new>
#include <vector>

#include "tests/reference/job/log.h"
#include "tests/reference/job/output.h"
#include "tests/reference/job/setup.h"

namespace reference {

namespace {

// Names the first field that makes the page unusable.
bool headerUsable(const cups_page_header2_t& header) {
    if (header.cupsBytesPerLine < header.cupsWidth) {
        logLine(3, "Unsupported cupsBytesPerLine : %u ! Less than cupsWidth : %u !",
                header.cupsBytesPerLine, header.cupsWidth);
        return false;
    }
    for (int i = 0; i < 2; i++) {
        if (header.HWResolution[i] == 0) {
            logLine(3, "Unsupported HWResolution[%d] : %u !", i, header.HWResolution[i]);
            return false;
        }
    }
    unsigned long size = static_cast<unsigned long>(header.cupsBytesPerLine) *
                         static_cast<unsigned long>(header.cupsHeight);
    if (size > INT_MAX) {
        logLine(3, "Unsupported page size, cupsBytesPerLine : %u, cupsHeight : %u !",
                header.cupsBytesPerLine, header.cupsHeight);
        return false;
    }
    return true;
}

void writePageLine(const cups_page_header2_t& header) {
    FILE* file = openRegular("/tmp/xxxxx.log", O_RDWR | O_CREAT | O_TRUNC, "w+");
    if (file == nullptr)
        return;
    fprintf(file, "cupsWidth:%d, cupsHeight:%d, cupsBytesPerLine:%d, cupsBitsPerPixel:%d\n",
            header.cupsWidth, header.cupsHeight, header.cupsBytesPerLine, header.cupsBitsPerPixel);
    fclose(file);
}

// A damaged header's enumerations may hold no value of their type.
template <typename Enumeration>
int bytesAsInt(const Enumeration& field) {
    int value;
    std::memcpy(&value, &field, sizeof value);
    return value;
}

void logHeader(int page, const cups_page_header2_t& header) {
    logLine(0, "PAGE: %d %d\n", page, header.NumCopies);
    logLine(0, "header.HWResolution[0]:%d\n", header.HWResolution[0]);
    logLine(0, "header.HWResolution[1]:%d", header.HWResolution[1]);
    logLine(0, "header.cupsWidth:%d", header.cupsWidth);
    logLine(0, "header.cupsHeight:%d", header.cupsHeight);
    logLine(0, "header.cupsMediaType:%d", header.cupsMediaType);
    logLine(0, "header.cupsBitsPerColor:%d", header.cupsBitsPerColor);
    logLine(0, "header.cupsBitsPerPixel:%d", header.cupsBitsPerPixel);
    logLine(0, "header.cupsBytesPerLine:%d", header.cupsBytesPerLine);
    logLine(0, "header.cupsColorOrder:%d", bytesAsInt(header.cupsColorOrder));
    logLine(0, "header.cupsColorSpace:%d", bytesAsInt(header.cupsColorSpace));
    logLine(0, "header.cupsCompression:%d", header.cupsCompression);
    logLine(0, "header.cupsRowCount:%d", header.cupsRowCount);
    logLine(0, "header.cupsRowFeed:%d", header.cupsRowFeed);
    logLine(0, "header.cupsRowStep:%d", header.cupsRowStep);
}

}  // namespace

int printPages(cups_raster_t* raster, Printer& printer, Settings& settings) {
    std::vector<unsigned char> buffer;
    cups_page_header2_t header;
    int page = 0;
    while (cupsRasterReadHeader2(raster, &header) != 0) {
        if (header.cupsBitsPerPixel != 8) {
            logLine(3, "Unsupported bits per pixel : %d ! Requires 8 bits per pixel!",
                    header.cupsBitsPerPixel);
            return 1;
        }
        if (header.cupsHeight == 0 || header.cupsBytesPerLine == 0)
            return 0;
        if (!headerUsable(header))
            return 1;
        const unsigned size = header.cupsBytesPerLine * header.cupsHeight;
        writePageLine(header);
        try {
            buffer.resize(size, 0);
        } catch (const std::bad_alloc&) {
            return 1;
        }

        settings.pageWidth = static_cast<float>(static_cast<double>(header.cupsWidth) * 25.4 /
                                                static_cast<double>(header.HWResolution[0]));
        settings.pageHeight = static_cast<float>(static_cast<double>(header.cupsHeight) * 25.4 /
                                                 static_cast<double>(header.HWResolution[1]));
        logLine(0, "pageWidth: %f,pageHeight: %f", static_cast<double>(settings.pageWidth),
                static_cast<double>(settings.pageHeight));
        jobSetup(printer.output, settings);

        printer.header = &header;
        printer.brightness = settings.Brightness;
        if (printer.brightness < -100)
            printer.brightness = -100;
        if (printer.brightness > 100)
            printer.brightness = 100;
        printer.halftoneType = settings.halftoneType;
        printer.mirrorPrint = settings.MirrorImage != 0;
        printer.negativePrint = settings.NegativeImage != 0;

        page++;
        logHeader(page, header);
        if (cupsRasterReadPixels(raster, buffer.data(), size) != 0) {
            printer.lastSet = 0;
            printImage(printer, buffer.data(), header.cupsBytesPerLine, header.cupsHeight,
                       header.cupsWidth);
        }
    }
    return 0;
}

}  // namespace reference
