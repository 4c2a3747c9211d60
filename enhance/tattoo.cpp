#include "enhance/tattoo.h"

#include "enhance/error_diffusion.h"
#include "enhance/gaussian.h"
#include "enhance/moments_threshold.h"
#include "enhance/piecewise_gamma.h"

namespace {

constexpr float kUnsharpAmount = 300.0F;
constexpr int kUnsharpSize = 11;

// `applyGamma` reshapes the grey page, given its threshold. The threshold is that of the page
// before the gamma, also where it decides dots after it.
template <typename ApplyGamma>
TQImage stencil(const TQImage& img, ApplyGamma applyGamma) {
    if (img.pixelCount() <= 0) {
        return img;
    }
    TQImage grey = cvtGray(img);
    const int threshold = thresh_global_moments(grey);
    applyGamma(grey, threshold);
    return edf_cus(enh_unsharp_mask(grey, kUnsharpAmount, kUnsharpSize), threshold);
}

}  // namespace

TQImage tqTattooDithering(TQImage& img) {
    return stencil(
        img, [](TQImage& grey, int /*threshold*/) { enh_piecewise_gamma(grey, 64, 0.85F, 0.7F); });
}

TQImage tqTattooDitheringX8(TQImage& img) {
    return stencil(img, [](TQImage& grey, int threshold) {
        enh_piecewise_gamma(grey, threshold, 0.5F, 1.5F);
    });
}
