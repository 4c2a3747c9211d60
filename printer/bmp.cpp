#include "printer/bmp.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <vector>

namespace {

using Bytes = std::vector<unsigned char>;

void appendLittleEndian(Bytes& out, unsigned long value, int bytes) {
    for (int i = 0; i < bytes; ++i) {
        out.push_back(static_cast<unsigned char>(value >> (8 * i) & 0xFF));
    }
}

/// Bytes of a file row, padded to a multiple of 4.
unsigned long strideOf(unsigned long width, bool grey) {
    const unsigned long rowBytes = grey ? width : (width + 7) / 8;
    return (rowBytes + 3) / 4 * 4;
}

Bytes headers(unsigned long width, unsigned long height, bool grey) {
    const unsigned long imageSize = strideOf(width, grey) * height;
    const unsigned long dataOffset = grey ? 1078 : 62;
    const unsigned long colours = grey ? 256 : 0;
    Bytes out{'B', 'M'};
    appendLittleEndian(out, dataOffset + imageSize, 4);
    appendLittleEndian(out, 0, 4);
    appendLittleEndian(out, dataOffset, 4);

    appendLittleEndian(out, 40, 4);  // size of the information header
    appendLittleEndian(out, width, 4);
    appendLittleEndian(out, height, 4);
    appendLittleEndian(out, 1, 2);  // planes
    appendLittleEndian(out, grey ? 8 : 1, 2);
    appendLittleEndian(out, 0, 4);  // no compression
    appendLittleEndian(out, imageSize, 4);
    appendLittleEndian(out, 0, 4);  // pixels per metre, across and down
    appendLittleEndian(out, 0, 4);
    appendLittleEndian(out, colours, 4);  // used
    appendLittleEndian(out, colours, 4);  // important
    return out;
}

void appendPaletteEntry(Bytes& out, unsigned char grey) {
    out.insert(out.end(), {grey, grey, grey, 0});
}

void write(std::FILE* file, const Bytes& bytes, std::size_t count) {
    std::fwrite(bytes.data(), 1, count, file);
}

void packRow(const unsigned char* pixels, unsigned long count, Bytes& row) {
    std::fill(row.begin(), row.end(), static_cast<unsigned char>(0));
    for (unsigned long x = 0; x < count; ++x) {
        if (pixels[x] == 0) {
            row[x / 8] = static_cast<unsigned char>(row[x / 8] | (0x80U >> (x % 8)));
        }
    }
    if (count % 8 != 0) {
        row[count / 8] = static_cast<unsigned char>(row[count / 8] | (0xFFU >> (count % 8)));
    }
}

}  // namespace

void writeBmp(std::FILE* file, const unsigned char* data, unsigned long bytesPerLine,
              unsigned long height, unsigned long width, unsigned short bitsPerPixel) {
    const bool grey = bitsPerPixel == 8;
    Bytes head = headers(width, height, grey);
    if (grey) {
        for (int i = 0; i < 256; ++i) {
            appendPaletteEntry(head, static_cast<unsigned char>(i));
        }
    } else if (bitsPerPixel == 1) {
        appendPaletteEntry(head, 0);
        appendPaletteEntry(head, 255);
    }
    write(file, head, head.size());

    if (grey) {
        std::fwrite(data, 1, width * height, file);
        return;
    }
    // The pixels of a row are counted by bytesPerLine, its length in the file by width.
    const unsigned long stride = strideOf(width, grey);
    Bytes row(std::max(stride, (bytesPerLine + 7) / 8));
    for (unsigned long y = height; y > 0; --y) {
        packRow(data + (y - 1) * bytesPerLine, bytesPerLine, row);
        write(file, row, stride);
    }
}
