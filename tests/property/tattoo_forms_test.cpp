// The tattoo stages in every form that the machine has, held to the reference.

#include <algorithm>
#include <cmath>
#include <cstdlib>

#include "enhance/error_diffusion.h"
#include "enhance/gaussian.h"
#include "enhance/moments_threshold.h"
#include "enhance/piecewise_gamma.h"
#include "enhance/taps.h"
#include "enhance/tattoo.h"
#include "simd/forms.h"
#include "tests/property/random_images.h"
#include "tests/reference/gaussian.h"
#include "tests/reference/moments.h"
#include "tests/reference/tattoo.h"
#include "tests/support/form_names.h"

namespace {

using kelp_test::fromTq;
using kelp_test::Random;
using kelp_test::randomImage;
using kelp_test::toTq;
using reference::GrayImage;

GrayImage uniform(int width, int height, int level) {
    const auto count = static_cast<std::size_t>(width) * static_cast<std::size_t>(height);
    return {width, height, std::vector<unsigned char>(count, static_cast<unsigned char>(level))};
}

// Calls check(image, random) for random images up to 70 x 70: of every size with KELP_EVERY_SIZE in
// the environment, else of a share of the heights that differs from width to width, so that each is
// met. Ends with the first failure.
template <typename Check>
void forSizes(Check check) {
    const int step = std::getenv("KELP_EVERY_SIZE") != nullptr ? 1 : 7;
    for (int width = 1; width <= 70; ++width) {
        for (int height = 1 + width % step; height <= 70; height += step) {
            Random random(static_cast<std::uint64_t>(width * 1000 + height));
            check(randomImage(width, height, random), random);
            if (testing::Test::HasFatalFailure()) {
                return;
            }
        }
    }
}

class TattooForms : public testing::TestWithParam<simd::Form> {
  protected:
    const simd::ForcedForm forced_{GetParam()};
};

INSTANTIATE_TEST_SUITE_P(EveryForm, TattooForms, testing::ValuesIn(simd::forms()),
                         kelp_test::form_name);

void expectDiffusion(const GrayImage& grey, int threshold) {
    ASSERT_EQ(fromTq(edf_cus(toTq(grey), threshold)).px, reference::edfCus(grey, threshold).px)
        << grey.width << " x " << grey.height << ", threshold " << threshold;
}

TEST_P(TattooForms, DiffuseImagesOfEverySize) {
    forSizes([](const GrayImage& grey, Random& random) {
        expectDiffusion(grey, random.between(-1, 255));
        expectDiffusion(grey, 128);
    });
}

TEST_P(TattooForms, DiffuseAtEveryThreshold) {
    Random random(31);
    for (int threshold = -1; threshold <= 255; ++threshold) {
        expectDiffusion(randomImage(83, 39, random), threshold);
    }
    for (const int threshold : {-1000000, -500, 256, 300, 1000000}) {
        expectDiffusion(randomImage(83, 39, random), threshold);
    }
}

TEST_P(TattooForms, DiffuseEveryUniformPage) {
    for (int level = 0; level < 256; ++level) {
        for (const int threshold : {-1, 0, level - 1, level, 128, 255}) {
            expectDiffusion(uniform(75, 37, level), threshold);
        }
    }
}

TEST_P(TattooForms, DiffuseBlackAreasInWhichErrorsFadeAway) {
    // Errors shrink by about 0.36 a column and 0.89 a row, down to the smallest numbers that there
    // are: those of one ulp stay for ever along a row.
    for (const int threshold : {-1, 0, 1, 128}) {
        GrayImage page = uniform(700, 130, 0);
        Random random(32);
        for (int y = 0; y < page.height; ++y) {
            for (int x = 0; x < 6; ++x) {
                page.set(x, y, random.between(0, 255));
            }
        }
        page.set(400, 20, 77);
        page.set(650, 90, 200);
        expectDiffusion(page, threshold);
    }
}

TEST_P(TattooForms, DiffuseAnEdgeThatARowReachesFourColumnsAfterTheNext) {
    // White without any error, then black: rows that are diffused side by side come to it at once.
    // Those of the upper rows are all white: no error comes from a band above either.
    for (const int top : {0, 32}) {
        GrayImage page = uniform(700, 130, 255);
        for (int y = top; y < page.height; ++y) {
            for (int x = 600 - 4 * (y - top); x < page.width; ++x) {
                page.set(x, y, 0);
            }
        }
        for (const int threshold : {-300, -1, 0, 1, 128}) {
            expectDiffusion(page, threshold);
        }
    }
}

TEST_P(TattooForms, DiffuseWhatTurnsWhiteAfterAFadedArea) {
    // White without any error, some columns of black, then anything: rows side by side come to the
    // black and to its end at once.
    for (int begin = 600; begin < 604; ++begin) {
        for (const int blacks : {4, 5, 6, 7, 8, 12}) {
            Random random(static_cast<std::uint64_t>(begin + blacks));
            GrayImage page = uniform(700, 70, 255);
            for (int y = 0; y < page.height; ++y) {
                for (int x = begin - 4 * y; x < page.width; ++x) {
                    page.set(x, y, x < begin - 4 * y + blacks ? 0 : random.between(0, 255));
                }
            }
            expectDiffusion(page, 1);
            expectDiffusion(page, 128);
        }
    }
}

TEST_P(TattooForms, DiffuseOneErrorInABlackArea) {
    // A grey just below the threshold gives its error to another one below it, which it reaches
    // from a band above as from the same one.
    for (int y = 4; y < 20; ++y) {
        for (int x = 72; x < 76; ++x) {
            for (int dx = -3; dx <= 2; ++dx) {
                GrayImage page = uniform(140, 40, 0);
                page.set(x, y, 127);
                page.set(x + dx, y + 1, 110);
                expectDiffusion(page, 128);
            }
            // Far from where it began nothing is left that would turn a grey white.
            GrayImage page = uniform(140, 40, 0);
            page.set(x, y, 1);
            page.set(x + 1, y, 1);
            page.set(x + 24, y + 1, 127);
            expectDiffusion(page, 127);
            expectDiffusion(page, 128);
        }
    }
}

TEST_P(TattooForms, DiffuseLevelsNextToTheThreshold) {
    // Two rows of six. The level of the lower row's fourth pixel is so close to the threshold that
    // rounding decides: each page comes out otherwise where some two of the seven terms of that
    // level change places, where the terms of each row are added up first, or where one product is
    // added unrounded.
    const std::vector<std::pair<int, std::vector<unsigned char>>> pages = {
        {11, {192, 177, 196, 232, 209, 114, 82, 179, 240, 138, 9, 128}},
        {23, {244, 23, 15, 125, 250, 159, 235, 146, 171, 117, 244, 8}},
        {28, {55, 135, 74, 95, 63, 142, 78, 123, 171, 180, 170, 222}},
        {79, {202, 252, 15, 116, 235, 156, 27, 140, 134, 133, 118, 167}},
        {122, {214, 224, 171, 184, 135, 65, 106, 240, 123, 60, 24, 227}},
        {160, {120, 114, 178, 55, 96, 76, 251, 243, 171, 84, 163, 144}},
        {196, {12, 102, 112, 15, 199, 247, 105, 208, 139, 223, 47, 117}},
        {207, {153, 73, 55, 84, 133, 82, 198, 102, 154, 99, 204, 97}},
        {208, {11, 137, 63, 145, 52, 176, 82, 58, 131, 62, 39, 152}}};
    for (const auto& [threshold, levels] : pages) {
        expectDiffusion({6, 2, levels}, threshold);
    }
}

TEST_P(TattooForms, DiffusePages) {
    Random random(33);
    for (int i = 0; i < 7; ++i) {
        expectDiffusion(randomImage(800 + 3 * i, 150 + 5 * i, random), 128);
    }
}

TEST_P(TattooForms, SharpenImagesOfEverySize) {
    forSizes([](const GrayImage& grey, Random& random) {
        const TQImage image = toTq(grey);
        ASSERT_EQ(fromTq(enh_unsharp_mask(image, 300.0F, 11)).px,
                  reference::unsharpMask(grey, 300.0F, 11).px)
            << grey.width << " x " << grey.height;
        const auto amount = static_cast<float>(random.between(-10000, 10000));
        const int size = 1 + 2 * random.between(0, 14);
        ASSERT_EQ(fromTq(enh_unsharp_mask(image, amount, size)).px,
                  reference::unsharpMask(grey, amount, size).px)
            << grey.width << " x " << grey.height << ", amount " << amount << ", size " << size;
    });
}

TEST_P(TattooForms, SharpenWithEveryPairOfLevels) {
    GrayImage src = uniform(256, 256, 0);
    GrayImage blurred = src;
    for (int y = 0; y < 256; ++y) {
        for (int x = 0; x < 256; ++x) {
            src.set(x, y, x);
            blurred.set(x, y, y);
        }
    }
    for (const float weight :
         {3.0F, 0.0F, 1.0F, -1.0F, 60.0F, -60.0F, 61.0F, -61.0F, 127.0F, 128.0F, -128.0F, -129.0F,
          250.0F, 0.7F, 2.5F, 1e9F, -1e9F, 1e38F, -0.5F}) {
        ASSERT_EQ(fromTq(add_Weighted(toTq(src), toTq(blurred), weight)).px,
                  reference::addWeighted(src, blurred, weight).px)
            << weight;
    }
}

TEST_P(TattooForms, BlurUniformPagesAndRowsAtEveryAddress) {
    const std::vector<double> kernel = reference::gaussianKernel1D(11, 3.0);
    for (int level = 0; level < 256; ++level) {
        const GrayImage page = uniform(33, 13, level);
        ASSERT_EQ(fromTq(enh_gaussian_filter_fast(toTq(page), 11, 3.0)).px, page.px);
    }
    Random random(34);
    const GrayImage row = randomImage(90, 1, random);
    const Taps taps(kernel.data(), 11);
    for (std::size_t offset = 0; offset < 40; ++offset) {
        // Exactly as long as it is read.
        const std::vector<unsigned char> pixels(row.px.begin() + static_cast<long>(offset),
                                                row.px.end());
        const std::size_t width = pixels.size() - 10;
        std::vector<const unsigned char*> rows;
        GrayImage middle{static_cast<int>(pixels.size()), 1, pixels};
        for (std::size_t i = 0; i < 11; ++i) {
            rows.push_back(pixels.data() + i);
        }
        std::vector<unsigned char> out(width);
        weighRows(rows.data(), taps, width, out.data());
        const GrayImage expected = reference::convolve1D(middle, kernel, 11, true);
        ASSERT_TRUE(std::equal(out.begin(), out.end(), expected.px.begin() + 5)) << offset;
    }
}

TEST_P(TattooForms, BlurWhatLiesNextToARoundingBoundary) {
    // Windows of eleven pixels whose sum is nearer to a half than whole weights can tell. Among
    // them must be some that whole weights alone would round to the wrong side.
    const std::vector<double> kernel = reference::gaussianKernel1D(11, 3.0);
    const Taps taps(kernel.data(), 11);
    ASSERT_TRUE(taps.coarse.isUsable);
    const double one = std::ldexp(1.0, Taps::kCoarseBits);
    Random random(35);
    GrayImage windows{0, 1, {}};
    std::size_t wrongAlone = 0;
    while (windows.px.size() < 11 * 3000) {
        const GrayImage window = randomImage(11, 1, random);
        double exact = 0.0;
        std::int64_t whole = 0;
        for (std::size_t i = 0; i < 11; ++i) {
            exact += window.px[i] * kernel[i];
            whole += window.px[i] * taps.coarse.weights[i];
        }
        const double fraction = (exact + 0.5) - std::floor(exact + 0.5);
        if (std::min(fraction, 1.0 - fraction) * one > 400.0) {
            continue;
        }
        wrongAlone += ((whole + (1 << 16)) >> 17) != static_cast<int>(exact + 0.5) ? 1 : 0;
        windows.px.insert(windows.px.end(), window.px.begin(), window.px.end());
    }
    ASSERT_GT(wrongAlone, 100U);
    windows.width = static_cast<int>(windows.px.size());
    ASSERT_EQ(fromTq(convolve1D(toTq(windows), kernel.data(), 11, true)).px,
              reference::convolve1D(windows, kernel, 11, true).px);
}

TEST_P(TattooForms, BlurWithKernelsThatWholeNumbersCannotServe) {
    Random random(36);
    const GrayImage grey = randomImage(70, 20, random);
    const std::vector<std::vector<double>> kernels = {
        std::vector<double>(11, 0.5),                           // sums beyond a byte
        std::vector<double>(11, 0.2),                           // and each tap light
        {0, 0, 0, 0, 0.25, 0.5, 0.25, 0, 0, 0, 0},              // a tap too heavy
        {-0.1, 0, 0, 0.1, 0.2, 0.2, 0.2, 0.1, 0, 0, -0.1},      // negative taps
        {-0.2, -0.2, 0, 0, 0.1, 0.2, 0.1, 0, 0, -0.2, -0.2},    // sums below 0
        {0.2, 0.2, 0.1, 0.1, 0.1, 0.1, 0.1, 0.05, 0.05, 0, 0},  // not symmetrical
        std::vector<double>(11, 1.0 / 11.0),                    // one that they can
        {0, 0, 0, 0, 0.125, 0.125, 0.125, 0, 0, 0, 0}};
    for (const std::vector<double>& kernel : kernels) {
        for (const bool horizontal : {true, false}) {
            ASSERT_EQ(fromTq(convolve1D(toTq(grey), kernel.data(), 11, horizontal)).px,
                      reference::convolve1D(grey, kernel, 11, horizontal).px)
                << kernel[0] << " " << horizontal;
        }
    }
}

TEST_P(TattooForms, ApplyCurvesToRowsOfEveryLengthAndAddress) {
    Random random(37);
    for (std::size_t count = 0; count < 140; ++count) {
        ToneCurve curve;
        std::generate(curve.begin(), curve.end(),
                      [&] { return static_cast<unsigned char>(random.between(0, 255)); });
        std::vector<unsigned char> levels(count + count % 35);
        std::generate(levels.begin(), levels.end(),
                      [&] { return static_cast<unsigned char>(random.between(0, 255)); });
        const std::size_t offset = count % 35;
        std::vector<unsigned char> expected(count);
        std::transform(levels.begin() + static_cast<long>(offset), levels.end(), expected.begin(),
                       [&](unsigned char level) { return curve[level]; });
        std::vector<unsigned char> out(count);
        applyToneCurve(curve, levels.data() + offset, count, out.data());
        ASSERT_EQ(out, expected) << count;
        applyToneCurve(curve, levels.data() + offset, count, levels.data() + offset);
        ASSERT_TRUE(std::equal(out.begin(), out.end(), levels.begin() + static_cast<long>(offset)));
    }
}

TEST_P(TattooForms, RunWholeChains) {
    Random random(38);
    for (const auto& [width, height] :
         {std::pair{1, 1}, {2, 3}, {16, 17}, {61, 33}, {200, 90}, {833, 70}}) {
        const GrayImage grey = randomImage(width, height, random);
        TQImage image = toTq(grey);
        ASSERT_EQ(thresh_global_moments(image), reference::thresholdGlobalMoments(grey));
        ASSERT_EQ(fromTq(tqTattooDithering(image)).px, reference::tattooDithering(grey).px);
        ASSERT_EQ(fromTq(tqTattooDitheringX8(image)).px, reference::tattooDitheringX8(grey).px);
    }
}

}  // namespace
