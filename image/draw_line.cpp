#include <cstdlib>

#include "image/cx_image.h"

void CxImage::DrawLine(int startX, int endX, int startY, int endY, std::uint8_t index) {
    if (!dib_) {
        return;
    }
    // 64 bits: the distance between two int coordinates does not fit an int.
    const std::int64_t dx = std::llabs(std::int64_t{endX} - startX);
    const std::int64_t dy = std::llabs(std::int64_t{endY} - startY);
    const int sx = endX < startX ? -1 : 1;
    const int sy = endY < startY ? -1 : 1;
    const bool xMajor = dx >= dy;
    const std::int64_t den = xMajor ? dx : dy;
    const std::int64_t numadd = xMajor ? dy : dx;

    std::int64_t num = den / 2;
    std::int64_t x = startX;
    std::int64_t y = startY;
    for (std::int64_t step = 0; step <= den; ++step) {
        SetPixelIndex(x, y, index);
        num += numadd;
        if (num >= den) {
            num -= den;
            (xMajor ? y : x) += xMajor ? sy : sx;
        }
        (xMajor ? x : y) += xMajor ? sx : sy;
    }
}
