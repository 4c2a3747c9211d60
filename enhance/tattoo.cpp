#include "enhance/tattoo.h"

#include <cstddef>
#include <optional>

#include "enhance/error_diffusion.h"
#include "enhance/gaussian.h"
#include "enhance/moments_threshold.h"
#include "enhance/piecewise_gamma.h"

namespace {

constexpr float kUnsharpAmount = 300.0F;
constexpr int kUnsharpSize = 11;

// `curveFor` gives the tone curve for the grey page's threshold. The threshold is that of the page
// before the curve, also where it decides dots after it. From the threshold on the stages work row
// by row, each on what the one before it has just made.
template <typename CurveFor>
TQImage stencil(const TQImage& img, CurveFor curveFor) {
    if (img.pixelCount() <= 0) {
        return img;
    }
    std::optional<TQImage> converted;
    if (img.color != TQ_IMG_GRAY) {
        converted = cvtGray(img);
    }
    const TQImage& grey = converted ? *converted : img;
    const int threshold = thresh_global_moments(grey);
    const ToneCurve curve = curveFor(threshold);

    const auto width = static_cast<std::size_t>(grey.width);
    UnsharpRows sharp = unsharpRows(
        grey.width, grey.height, kUnsharpAmount, kUnsharpSize,
        [&grey, &curve, width](std::int32_t y, unsigned char* row) {
            applyToneCurve(curve, grey.data + static_cast<std::size_t>(y) * width, width, row);
        });
    return diffuseRows(grey.width, grey.height, threshold,
                       [&sharp](std::int32_t, unsigned char* row) { sharp.next(row); });
}

}  // namespace

TQImage tqTattooDithering(TQImage& img) {
    return stencil(img, [](int /*threshold*/) { return piecewiseGammaTable(64, 0.85F, 0.7F); });
}

TQImage tqTattooDitheringX8(TQImage& img) {
    return stencil(img, [](int threshold) { return piecewiseGammaTable(threshold, 0.5F, 1.5F); });
}
