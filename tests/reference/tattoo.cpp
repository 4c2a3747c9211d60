#include "tests/reference/tattoo.h"

#include "tests/reference/gamma.h"
#include "tests/reference/gaussian.h"
#include "tests/reference/gray.h"
#include "tests/reference/moments.h"

namespace reference {

namespace {

struct Neighbour {
    int dx;
    int dy;
    float weight;
};

const Neighbour kNeighbours[6] = {
    {1, 0, 0.505786f},  {2, 0, -0.052926f}, {-2, 1, 0.226194f},
    {-1, 1, 0.128835f}, {0, 1, 0.243191f},  {1, 1, -0.111078f},
};

ColorImage asColorImage(const GrayImage& gray) {
    return ColorImage{gray.width, gray.height, 0, gray.px};
}

}  // namespace

GrayImage edfCus(const GrayImage& src, int threshold) {
    const int width = src.width;
    const int height = src.height;
    GrayImage out = src;
    std::vector<std::vector<float>> err(static_cast<std::size_t>(height),
                                        std::vector<float>(static_cast<std::size_t>(width), 0.0f));
    for (int y = 0; y < height; y++) {
        for (int x = 0; x < width; x++) {
            float carried = err[static_cast<std::size_t>(y)][static_cast<std::size_t>(x)];
            float v = carried + static_cast<float>(src.at(x, y));
            float e = 0.0f;
            if (v > static_cast<float>(threshold)) {
                out.set(x, y, 255);
                if (y >= 1 && x >= 1 && y < height - 1 && x < width - 1) {
                    float f = 0.0f;
                    if (out.at(x - 1, y) == 0)
                        f += 0.1427f;
                    if (out.at(x, y - 1) == 0)
                        f += 0.1427f;
                    float white = 255.0f * (1.0f - f);
                    e = v - white;
                } else {
                    e = v - 255.0f;
                }
            } else {
                out.set(x, y, 0);
                e = v;
            }
            for (const Neighbour& n : kNeighbours) {
                int nx = x + n.dx;
                int ny = y + n.dy;
                if (0 <= nx && nx < width && 0 <= ny && ny < height) {
                    float share = e * n.weight;
                    err[static_cast<std::size_t>(ny)][static_cast<std::size_t>(nx)] += share;
                }
            }
        }
    }
    return out;
}

ColorImage tattooDithering(const ColorImage& image) {
    if (image.width * image.height <= 0)
        return image;
    GrayImage gray = cvtGray(image);
    int t = thresholdGlobalMoments(gray);
    gray = piecewiseGamma(gray, 64, 0.85f, 0.7f);
    GrayImage sharp = unsharpMask(gray, 300.0f, 11);
    return asColorImage(edfCus(sharp, t));
}

ColorImage tattooDitheringX8(const ColorImage& image) {
    if (image.width * image.height <= 0)
        return image;
    GrayImage gray = cvtGray(image);
    int t = thresholdGlobalMoments(gray);
    gray = piecewiseGamma(gray, t, 0.5f, 1.5f);
    GrayImage sharp = unsharpMask(gray, 300.0f, 11);
    return asColorImage(edfCus(sharp, t));
}

GrayImage tattooDithering(const GrayImage& page) {
    ColorImage result = tattooDithering(asColorImage(page));
    return GrayImage{result.width, result.height, result.px};
}

GrayImage tattooDitheringX8(const GrayImage& page) {
    ColorImage result = tattooDitheringX8(asColorImage(page));
    return GrayImage{result.width, result.height, result.px};
}

}  // namespace reference
