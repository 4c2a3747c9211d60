// The tattoo chain on any image of any colour layout: each of its stages, then both chains, held to
// the reference byte by byte.

#include <fuzzer/FuzzedDataProvider.h>

#include <cmath>
#include <vector>

#include "enhance/error_diffusion.h"
#include "enhance/gaussian.h"
#include "enhance/moments_threshold.h"
#include "enhance/piecewise_gamma.h"
#include "enhance/tattoo.h"
#include "fuzz/any_form.h"
#include "fuzz/check.h"
#include "tests/reference/gamma.h"
#include "tests/reference/gaussian.h"
#include "tests/reference/gray.h"
#include "tests/reference/moments.h"
#include "tests/reference/tattoo.h"

namespace {

using kelp_fuzz::require;
using reference::ColorImage;
using reference::GrayImage;

void compare(const TQImage& image, const GrayImage& expected, const char* what) {
    require(image.width == expected.width && image.height == expected.height &&
                image.channels == 1 && image.color == TQ_IMG_GRAY,
            what);
    require(std::equal(expected.px.begin(), expected.px.end(), image.data), what);
}

void compare(const TQImage& image, const ColorImage& expected, const char* what) {
    compare(image, GrayImage{expected.width, expected.height, expected.px}, what);
}

void check_stages(const GrayImage& grey, FuzzedDataProvider& input) {
    TQImage image(grey.width, grey.height, TQ_IMG_GRAY, grey.px.data());
    require(thresh_global_moments(image) == reference::thresholdGlobalMoments(grey),
            "the threshold differs");
    const int threshold = input.ConsumeIntegralInRange(-10, 300);
    compare(edf_cus(image, threshold), reference::edfCus(grey, threshold),
            "the error diffusion differs");
    const int size = 2 * input.ConsumeIntegralInRange(0, 5) + 1;
    const float amount = static_cast<float>(input.ConsumeIntegralInRange(-100, 400));
    compare(enh_unsharp_mask(image, amount, size), reference::unsharpMask(grey, amount, size),
            "the unsharp mask differs");
    const int knee = input.ConsumeIntegralInRange(-5, 260);
    // Exponents as far as the chain's own tables reach; each takes thousands of steps.
    const float low = static_cast<float>(input.ConsumeIntegralInRange(10, 300)) / 100.0F;
    const float high = static_cast<float>(input.ConsumeIntegralInRange(10, 300)) / 100.0F;
    if (input.ConsumeIntegralInRange(0, 15) == 0) {
        enh_piecewise_gamma(image, knee, low, high);
        compare(image, reference::piecewiseGamma(grey, knee, low, high), "the gamma differs");
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    FuzzedDataProvider input(data, size);
    const simd::ForcedForm forced(kelp_fuzz::any_form(input));
    // Bands have up to 16 rows, each four columns behind the one above; vectors up to 32 pixels.
    const int width = input.ConsumeIntegralInRange(1, input.ConsumeBool() ? 120 : 40);
    const int height = input.ConsumeIntegralInRange(1, 24);
    const int color = input.ConsumeIntegralInRange(0, 12);
    ColorImage page{width, height, color > 4 ? 0 : color, {}};
    const auto channels = static_cast<std::size_t>(reference::channelsOf(page.color));
    const bool by_stages = input.ConsumeBool();
    FuzzedDataProvider stages(data, size);
    const std::size_t wanted =
        static_cast<std::size_t>(width) * static_cast<std::size_t>(height) * channels;
    page.px = input.ConsumeBytes<unsigned char>(wanted);
    const std::size_t given = page.px.size();
    page.px.resize(wanted);
    for (std::size_t i = given; given > 0 && i < wanted; ++i) {
        page.px[i] = page.px[i % given];
    }

    TQImage image(width, height, static_cast<TQ_IMG_COLOR>(page.color), page.px.data());
    const GrayImage grey = reference::cvtGray(page);
    compare(cvtGray(image), grey, "the grey differs");
    if (by_stages) {
        check_stages(grey, stages);
    }
    compare(tqTattooDithering(image), reference::tattooDithering(page), "the chain differs");
    compare(tqTattooDitheringX8(image), reference::tattooDitheringX8(page), "the chain X8 differs");
    require(std::equal(page.px.begin(), page.px.end(), image.data), "the page itself was changed");
    return 0;
}
