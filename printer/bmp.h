#ifndef KELP_PRINTER_BMP_H
#define KELP_PRINTER_BMP_H

#include <cstdio>

/// Writes an uncompressed BMP; errors are not looked at. Allocates nothing.
///
/// 8 bits per pixel: a grey ramp as palette, then width * height bytes of `data` in memory order.
/// The header declares rows padded to 4 bytes and a bottom-up picture; neither is honoured, and
/// bytesPerLine is not used.
///
/// 1 bit per pixel: entry 0 black, entry 1 white; rows bottom up, padded to 4 bytes, bytesPerLine
/// pixels each, a set bit for a byte of 0. Any other depth is written like 1 bit, without palette.
///
/// @param data height rows of bytesPerLine bytes (8 bits: width * height bytes), one per pixel
void writeBmp(std::FILE* file, const unsigned char* data, unsigned long bytesPerLine,
              unsigned long height, unsigned long width, unsigned short bitsPerPixel);

#endif
