#include "printer/bmp.h"

#include <algorithm>

// Written straight to the stream: without memory a page loses its snapshot, never its print.

namespace {

void putLittleEndian(std::FILE* file, unsigned long value, int bytes) {
    for (int i = 0; i < bytes; ++i) {
        std::fputc(static_cast<int>(value >> (8 * i) & 0xFF), file);
    }
}

/// Bytes of a file row, padded to a multiple of 4.
unsigned long strideOf(unsigned long width, bool grey) {
    const unsigned long rowBytes = grey ? width : (width + 7) / 8;
    return (rowBytes + 3) / 4 * 4;
}

void putHeaders(std::FILE* file, unsigned long width, unsigned long height, bool grey) {
    const unsigned long imageSize = strideOf(width, grey) * height;
    const unsigned long dataOffset = grey ? 1078 : 62;
    const unsigned long colours = grey ? 256 : 0;
    std::fputs("BM", file);
    putLittleEndian(file, dataOffset + imageSize, 4);
    putLittleEndian(file, 0, 4);
    putLittleEndian(file, dataOffset, 4);

    putLittleEndian(file, 40, 4);  // size of the information header
    putLittleEndian(file, width, 4);
    putLittleEndian(file, height, 4);
    putLittleEndian(file, 1, 2);  // planes
    putLittleEndian(file, grey ? 8 : 1, 2);
    putLittleEndian(file, 0, 4);  // no compression
    putLittleEndian(file, imageSize, 4);
    putLittleEndian(file, 0, 4);  // pixels per metre, across and down
    putLittleEndian(file, 0, 4);
    putLittleEndian(file, colours, 4);  // used
    putLittleEndian(file, colours, 4);  // important
}

void putPaletteEntry(std::FILE* file, unsigned long grey) {
    putLittleEndian(file, grey * 0x010101, 4);
}

/// The eight pixels from `first` on as one byte, filled up with ones behind the last; 0 where none
/// is left.
unsigned int packedByte(const unsigned char* pixels, unsigned long first, unsigned long count) {
    if (first >= count) {
        return 0;
    }
    const unsigned long bits = std::min(8UL, count - first);
    unsigned int byte = 0xFFU >> bits;
    for (unsigned long bit = 0; bit < bits; ++bit) {
        byte |= pixels[first + bit] == 0 ? 0x80U >> bit : 0U;
    }
    return byte;
}

}  // namespace

void writeBmp(std::FILE* file, const unsigned char* data, unsigned long bytesPerLine,
              unsigned long height, unsigned long width, unsigned short bitsPerPixel) {
    const bool grey = bitsPerPixel == 8;
    putHeaders(file, width, height, grey);
    if (grey) {
        for (unsigned long level = 0; level < 256; ++level) {
            putPaletteEntry(file, level);
        }
        std::fwrite(data, 1, width * height, file);
        return;
    }
    if (bitsPerPixel == 1) {
        putPaletteEntry(file, 0);
        putPaletteEntry(file, 255);
    }
    // The pixels of a row are counted by bytesPerLine, its length in the file by width.
    const unsigned long stride = strideOf(width, grey);
    for (unsigned long y = height; y > 0; --y) {
        const unsigned char* row = data + (y - 1) * bytesPerLine;
        for (unsigned long i = 0; i < stride; ++i) {
            std::fputc(static_cast<int>(packedByte(row, 8 * i, bytesPerLine)), file);
        }
    }
}
