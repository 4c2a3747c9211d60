#include "enhance/error_diffusion.h"

#include <algorithm>
#include <cstddef>
#include <cstring>
#include <vector>

#include "enhance/diffusion_band.h"
#include "enhance/diffusion_weights.h"
#include "simd/forms.h"

namespace {

/// The error of one row of pixels, with zeros past either edge: an error of zero adds nothing to
/// its neighbours, as no error does. (A sum of such terms may be a zero of either sign; a pixel's
/// level, which is never -0, is added to it before anything else is.)
constexpr std::ptrdiff_t kMargin = 2;

std::size_t sizeOf(std::ptrdiff_t count) {
    return static_cast<std::size_t>(count);
}

class Diffusion {
  public:
    Diffusion(std::int32_t width, int threshold)
        : width_(width),
          threshold_(static_cast<float>(threshold)),
          errors_(static_cast<std::size_t>(width + 2 * kMargin)),
          carried_(static_cast<std::size_t>(width)) {}

    /// Turns the next row's levels into black and white. `above` is the row above, or null where
    /// no pixel of the row looks at its neighbours (first and last row).
    void diffuseRow(unsigned char* row, const unsigned char* above) {
        carryDown();
        if (above == nullptr) {
            diffuse<false>(row, row);
        } else {
            diffuse<true>(row, above);
        }
    }

  private:
    // A pixel receives its terms in the order in which its neighbours are scanned: first those of
    // the row above from left to right, then those of its own row. The former wait for nothing.
    void carryDown() {
        using namespace diffusion;
        const float* e = errors_.data() + kMargin;
        for (std::ptrdiff_t x = 0; x < width_; ++x) {
            float sum = e[x - 1] * kBelowRight;
            sum += e[x] * kBelow;
            sum += e[x + 1] * kBelowLeft;
            sum += e[x + 2] * kBelowLeft2;
            carried_[static_cast<std::size_t>(x)] = sum;
        }
    }

    template <bool kShades>
    void diffuse(unsigned char* row, const unsigned char* above) {
        using namespace diffusion;
        float* errors = errors_.data() + kMargin;
        const float* carried = carried_.data();
        float left = 0.0F;
        float left2 = 0.0F;
        std::size_t leftIsBlack = 0;
        for (std::ptrdiff_t x = 0; x < width_; ++x) {
            std::size_t blacks = 0;
            if (kShades) {
                const std::size_t aboveIsBlack = above[x] == 0 ? 1 : 0;
                blacks = x >= 1 && x < width_ - 1 ? leftIsBlack + aboveIsBlack : 0;
            }
            const float level =
                carried[x] + left2 * kRight2 + left * kRight + static_cast<float>(row[x]);
            const bool isWhite = level > threshold_;
            left2 = left;
            left = level - (isWhite ? kWhite[blacks] : 0.0F);
            leftIsBlack = isWhite ? 0 : 1;
            errors[x] = left;
            row[x] = static_cast<unsigned char>(leftIsBlack - 1);
        }
    }

    std::ptrdiff_t width_;
    float threshold_;
    std::vector<float> errors_;   ///< of the last row, from kMargin on
    std::vector<float> carried_;  ///< what the row above adds to each pixel of this one
};

void diffuseByRow(TQImage& out, int threshold, const RowSource& rows) {
    Diffusion diffusion(out.width, threshold);
    for (std::int32_t y = 0; y < out.height; ++y) {
        unsigned char* row = out.data + static_cast<std::ptrdiff_t>(y) * out.width;
        rows(y, row);
        diffusion.diffuseRow(row, y >= 1 && y < out.height - 1 ? row - out.width : nullptr);
    }
}

void diffuseByBand(TQImage& out, int threshold, const RowSource& rows) {
    using diffusion::kBandMargin;
    const std::ptrdiff_t width = out.width;
    const std::ptrdiff_t most = diffusion::bandRows();
    const std::ptrdiff_t stride = width + kBandMargin;
    std::vector<float> errors(sizeOf(width + 2 * kBandMargin));
    std::vector<unsigned char> buffer(sizeOf(kBandMargin + (most + 1) * stride));
    unsigned char* above = buffer.data() + kBandMargin;
    unsigned char* first = above + stride;
    std::ptrdiff_t count = 0;
    for (std::int32_t top = 0; top < out.height; top += static_cast<std::int32_t>(count)) {
        // Rows past the last one are diffused for nothing.
        count = std::min<std::ptrdiff_t>(most, out.height - top);
        for (std::ptrdiff_t i = 0; i < count; ++i) {
            rows(top + static_cast<std::int32_t>(i), first + i * stride);
        }
        diffusion::diffuseBand({first, stride, out.width, static_cast<float>(threshold),
                                errors.data() + kBandMargin, top == 0 ? 1 : 0,
                                out.height - 1 - top});
        for (std::ptrdiff_t i = 0; i < count; ++i) {
            std::memcpy(out.data + (top + i) * width, first + i * stride, sizeOf(width));
        }
        std::memcpy(above, first + (most - 1) * stride, sizeOf(width));
    }
}

}  // namespace

bool isWithinBounds(int x, int y, int width, int height) {
    return x >= 0 && x < width && y >= 0 && y < height;
}

TQImage diffuseRows(std::int32_t width, std::int32_t height, int threshold, const RowSource& rows) {
    TQImage out = TQImage::unset(width, height, TQ_IMG_GRAY);
    if (width > 0 && height > 0) {
        if (simd::isPlain()) {
            diffuseByRow(out, threshold, rows);
        } else {
            diffuseByBand(out, threshold, rows);
        }
    }
    return out;
}

TQImage edf_cus(const TQImage& src, int threshold) {
    return diffuseRows(src.width, src.height, threshold,
                       [&src](std::int32_t y, unsigned char* row) {
                           std::memcpy(row, src.data + static_cast<std::ptrdiff_t>(y) * src.width,
                                       static_cast<std::size_t>(src.width));
                       });
}
