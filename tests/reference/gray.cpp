#include "tests/reference/gray.h"

#include "tests/reference/numeric.h"

namespace reference {

int channelsOf(int color) {
    if (color == 0)
        return 1;
    if (color == 1 || color == 2)
        return 3;
    return 4;
}

GrayImage cvtGray(const ColorImage& src) {
    GrayImage out;
    out.width = src.width;
    out.height = src.height;
    std::size_t pixels = static_cast<std::size_t>(src.width) * static_cast<std::size_t>(src.height);
    out.px.resize(pixels);
    std::size_t s = 0;
    for (std::size_t i = 0; i < pixels; i++) {
        if (src.color == 0) {
            out.px[i] = src.px[s];
        } else {
            float b0 = static_cast<float>(src.px[s]);
            float b1 = static_cast<float>(src.px[s + 1]);
            float b2 = static_cast<float>(src.px[s + 2]);
            bool blueFirst = src.color == 1 || src.color == 3;
            float w0 = blueFirst ? 0.114f : 0.299f;
            float w1 = 0.587f;
            float w2 = blueFirst ? 0.299f : 0.114f;
            float v = w0 * b0;
            v += w1 * b1;
            float last = w2 * b2;
            out.px[i] = static_cast<unsigned char>(myRound(v + last) & 255);
        }
        s += static_cast<std::size_t>(channelsOf(src.color));
    }
    return out;
}

}  // namespace reference
