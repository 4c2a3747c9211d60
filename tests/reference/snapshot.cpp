#include "tests/reference/snapshot.h"

namespace reference {

namespace {

void put(std::vector<unsigned char>& out, unsigned long value, int bytes) {
    for (int i = 0; i < bytes; i++) {
        out.push_back(static_cast<unsigned char>(value & 255));
        value >>= 8;
    }
}

void putRow1Bit(std::vector<unsigned char>& out, const unsigned char* row,
                unsigned long bytesPerLine, unsigned long stride) {
    unsigned long room = (bytesPerLine + 7) / 8;
    if (room < stride)
        room = stride;
    std::vector<unsigned char> line(room, 0);
    for (unsigned long x = 0; x < bytesPerLine; x++)
        if (row[x] == 0)
            line[x / 8] = static_cast<unsigned char>(line[x / 8] | (1 << (7 - x % 8)));
    if (bytesPerLine % 8 != 0) {
        unsigned long last = bytesPerLine / 8;
        line[last] = static_cast<unsigned char>(line[last] | (0xFF >> (bytesPerLine % 8)));
    }
    for (unsigned long i = 0; i < stride; i++)
        out.push_back(line[i]);
}

}  // namespace

std::vector<unsigned char> snapshotBytes(const unsigned char* data, unsigned long bytesPerLine,
                                         unsigned long height, unsigned long width,
                                         unsigned short bitsPerPixel) {
    const bool eight = bitsPerPixel == 8;
    const unsigned long rowBytes = eight ? width : (width + 7) / 8;
    const unsigned long stride = (rowBytes + 3) / 4 * 4;
    const unsigned long imageSize = stride * height;
    const unsigned long dataOffset = eight ? 1078 : 62;
    const unsigned long colours = eight ? 256 : 0;

    std::vector<unsigned char> out;
    out.push_back('B');
    out.push_back('M');
    put(out, dataOffset + imageSize, 4);
    put(out, 0, 4);
    put(out, dataOffset, 4);

    put(out, 40, 4);
    put(out, width, 4);
    put(out, height, 4);
    put(out, 1, 2);
    put(out, eight ? 8 : 1, 2);
    put(out, 0, 4);
    put(out, imageSize, 4);
    put(out, 0, 4);
    put(out, 0, 4);
    put(out, colours, 4);
    put(out, colours, 4);

    if (eight) {
        for (int i = 0; i < 256; i++) {
            put(out, static_cast<unsigned long>(i), 1);
            put(out, static_cast<unsigned long>(i), 1);
            put(out, static_cast<unsigned long>(i), 1);
            put(out, 0, 1);
        }
        for (unsigned long k = 0; k < width * height; k++)
            out.push_back(data[k]);
        return out;
    }

    if (bitsPerPixel == 1) {
        put(out, 0x00000000, 4);
        put(out, 0x00FFFFFF, 4);
    }
    for (unsigned long y = height; y > 0; y--)
        putRow1Bit(out, data + bytesPerLine * (y - 1), bytesPerLine, stride);
    return out;
}

}  // namespace reference
