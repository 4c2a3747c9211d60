// The tattoo chain held to the reference, stage by stage and whole.

#include "enhance/error_diffusion.h"
#include "enhance/gaussian.h"
#include "enhance/moments_threshold.h"
#include "enhance/piecewise_gamma.h"
#include "enhance/tattoo.h"
#include "tests/property/random_images.h"
#include "tests/reference/gamma.h"
#include "tests/reference/gaussian.h"
#include "tests/reference/gray.h"
#include "tests/reference/moments.h"
#include "tests/reference/tattoo.h"

namespace {

using kelp_test::forRandomImages;
using kelp_test::fromTq;
using kelp_test::Random;
using kelp_test::toTq;
using reference::GrayImage;

TEST(MomentsThreshold, MatchesTheReference) {
    forRandomImages(11, [](const GrayImage& grey, Random&) {
        ASSERT_EQ(thresh_global_moments(toTq(grey)), reference::thresholdGlobalMoments(grey));
    });
}

TEST(MomentsThreshold, MatchesTheReferenceOnPagesOfTwoLevels) {
    for (int low = 0; low < 256; low += 5) {
        for (int high = low; high < 256; high += 7) {
            for (const int share : {1, 2, 40, 80}) {
                GrayImage page{9, 9,
                               std::vector<unsigned char>(81, static_cast<unsigned char>(high))};
                std::fill_n(page.px.begin(), share, static_cast<unsigned char>(low));
                ASSERT_EQ(thresh_global_moments(toTq(page)),
                          reference::thresholdGlobalMoments(page))
                    << low << " on " << share << " of 81, " << high;
            }
        }
    }
}

TEST(PiecewiseGamma, MatchesTheReferenceForEveryKnee) {
    Random random(12);
    for (int knee = -3; knee <= 258; ++knee) {
        std::vector<std::pair<float, float>> exponents{{0.85F, 0.7F}, {0.5F, 1.5F}};
        for (int i = 0; i < 3; ++i) {
            exponents.emplace_back(static_cast<float>(random.between(1, 300)) / 100.0F,
                                   static_cast<float>(random.between(1, 300)) / 100.0F);
        }
        for (const auto& [low, high] : exponents) {
            ASSERT_EQ(piecewiseGammaTable(knee, low, high),
                      reference::piecewiseGammaTable(knee, low, high))
                << "knee " << knee << " exponents " << low << " " << high;
        }
    }
}

TEST(PiecewiseGamma, ReshapesAnImageAsTheReferenceDoes) {
    forRandomImages(13, [](const GrayImage& grey, Random& random) {
        const int knee = random.between(-1, 255);
        TQImage image = toTq(grey);
        enh_piecewise_gamma(image, knee, 0.5F, 1.5F);
        ASSERT_EQ(fromTq(image).px, reference::piecewiseGamma(grey, knee, 0.5F, 1.5F).px);
    });
}

TEST(GaussianKernels, AreEqualToTheLastBit) {
    for (int size = 1; size <= 15; size += 2) {
        for (const double sigma : {0.3, 0.8, 1.0, 2.5, 3.0, 7.25, 40.0}) {
            std::vector<double> row(static_cast<std::size_t>(size));
            generateGaussianKernel1D(size, sigma, row.data());
            ASSERT_EQ(row, reference::gaussianKernel1D(size, sigma)) << size << " " << sigma;
            std::vector<double> square(row.size() * row.size());
            generateGaussianKernel(size, sigma, sigma / 2 + 0.1, square.data());
            ASSERT_EQ(square, reference::gaussianKernel2D(size, sigma, sigma / 2 + 0.1))
                << size << " " << sigma;
        }
    }
}

TEST(GaussianFilters, MatchTheReference) {
    forRandomImages(14, [](const GrayImage& grey, Random& random) {
        const int size = 1 + 2 * random.between(0, 7);
        const double sigma = random.between(3, 60) / 10.0;
        const std::vector<double> kernel = reference::gaussianKernel1D(size, sigma);
        const TQImage image = toTq(grey);
        for (const bool horizontal : {true, false}) {
            ASSERT_EQ(fromTq(convolve1D(image, kernel.data(), size, horizontal)).px,
                      reference::convolve1D(grey, kernel, size, horizontal).px)
                << "size " << size << " horizontal " << horizontal;
        }
        ASSERT_EQ(fromTq(enh_gaussian_filter_fast(image, size, sigma)).px,
                  reference::gaussianFilterFast(grey, size, sigma).px);
        const int small = 1 + 2 * random.between(0, 2);
        ASSERT_EQ(fromTq(enh_gaussian_filter(image, small, sigma, 1.5)).px,
                  reference::gaussianFilter(grey, small, sigma, 1.5).px);
    });
}

TEST(UnsharpMask, MatchesTheReference) {
    forRandomImages(15, [](const GrayImage& grey, Random& random) {
        const int size = 1 + 2 * random.between(0, 7);
        const auto amount = static_cast<float>(random.between(-50, 600));
        ASSERT_EQ(fromTq(enh_unsharp_mask(toTq(grey), amount, size)).px,
                  reference::unsharpMask(grey, amount, size).px)
            << "amount " << amount << " size " << size;
    });
}

TEST(CustomErrorDiffusion, MatchesTheReference) {
    forRandomImages(16, [](const GrayImage& grey, Random& random) {
        const int thresholds[] = {-1, 0, 128, 255, 300, -500, random.between(1, 254)};
        for (const int threshold : thresholds) {
            ASSERT_EQ(fromTq(edf_cus(toTq(grey), threshold)).px,
                      reference::edfCus(grey, threshold).px)
                << "threshold " << threshold;
        }
    });
}

TEST(TattooChains, MatchTheReference) {
    forRandomImages(17, [](const GrayImage& grey, Random&) {
        TQImage image = toTq(grey);
        ASSERT_EQ(fromTq(tqTattooDithering(image)).px, reference::tattooDithering(grey).px);
        ASSERT_EQ(fromTq(tqTattooDitheringX8(image)).px, reference::tattooDitheringX8(grey).px);
        ASSERT_EQ(fromTq(image).px, grey.px) << "the page itself was changed";
    });
}

TEST(TattooChains, MatchTheReferenceForEveryColourLayout) {
    Random random(18);
    for (int round = 0; round < 60; ++round) {
        const int width = random.between(1, 40);
        const int height = random.between(1, 40);
        for (int color = 0; color <= 4; ++color) {
            const int channels = color == 0 ? 1 : color <= 2 ? 3 : 4;
            const std::string bytes = kelp_test::noise(static_cast<unsigned>(width * channels),
                                                       static_cast<unsigned>(height), random);
            const reference::ColorImage page{width, height, color, {bytes.begin(), bytes.end()}};
            TQImage image(width, height, static_cast<TQ_IMG_COLOR>(color), page.px.data());
            ASSERT_EQ(fromTq(cvtGray(image)).px, reference::cvtGray(page).px) << "colour " << color;
            ASSERT_EQ(fromTq(tqTattooDitheringX8(image)).px, reference::tattooDitheringX8(page).px)
                << "colour " << color;
        }
    }
}

}  // namespace
