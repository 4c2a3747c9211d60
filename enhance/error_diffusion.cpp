#include "enhance/error_diffusion.h"

#include <algorithm>
#include <cstddef>
#include <utility>
#include <vector>

namespace {

constexpr float kWhite = 255.0F;
constexpr float kBlackNeighbour = 0.1427F;

// Weights of the error, by where it goes.
constexpr float kRight = 0.505786F;
constexpr float kRight2 = -0.052926F;
constexpr float kBelowLeft2 = 0.226194F;
constexpr float kBelowLeft = 0.128835F;
constexpr float kBelow = 0.243191F;
constexpr float kBelowRight = -0.111078F;

/// Cells on either side of an error row: they take what falls past the edges.
constexpr std::size_t kMargin = 2;

/// One row. `error` and `below` are the error rows of this row and the next, with kMargin cells
/// either side; `above` is the row of decided pixels above, or null where no pixel of the row looks
/// at its neighbours (first and last row).
void diffuseRow(const unsigned char* src, int width, float threshold, const unsigned char* above,
                float* error, float* below, unsigned char* out) {
    for (int x = 0; x < width; ++x) {
        float e = error[x] + static_cast<float>(src[x]);
        if (e > threshold) {
            out[x] = 255;
            if (above != nullptr && x >= 1 && x < width - 1) {
                float shade = 0.0F;
                if (out[x - 1] == 0) {
                    shade += kBlackNeighbour;
                }
                if (above[x] == 0) {
                    shade += kBlackNeighbour;
                }
                e = e - kWhite * (1.0F - shade);
            } else {
                e = e - kWhite;
            }
        } else {
            out[x] = 0;
        }
        error[x + 1] += e * kRight;
        error[x + 2] += e * kRight2;
        below[x - 2] += e * kBelowLeft2;
        below[x - 1] += e * kBelowLeft;
        below[x] += e * kBelow;
        below[x + 1] += e * kBelowRight;
    }
}

}  // namespace

bool isWithinBounds(int x, int y, int width, int height) {
    return x >= 0 && x < width && y >= 0 && y < height;
}

TQImage edf_cus(const TQImage& src, int threshold) {
    TQImage out(src.width, src.height, TQ_IMG_GRAY);
    const int width = src.width;
    const int height = src.height;
    std::vector<float> current(static_cast<std::size_t>(width) + 2 * kMargin);
    std::vector<float> next(current.size());
    for (int y = 0; y < height; ++y) {
        const std::ptrdiff_t row = static_cast<std::ptrdiff_t>(y) * width;
        const bool interior = y >= 1 && y < height - 1;
        diffuseRow(src.data + row, width, static_cast<float>(threshold),
                   interior ? out.data + row - width : nullptr, current.data() + kMargin,
                   next.data() + kMargin, out.data + row);
        std::swap(current, next);
        std::fill(next.begin(), next.end(), 0.0F);
    }
    return out;
}
