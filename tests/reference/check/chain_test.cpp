#include <gtest/gtest.h>

#include <stdexcept>

#include "tests/reference/check/uniform_image.h"
#include "tests/reference/gamma.h"
#include "tests/reference/gaussian.h"
#include "tests/reference/moments.h"
#include "tests/reference/tattoo.h"

namespace reference {

namespace {

using Bytes = std::vector<unsigned char>;

}  // namespace

TEST(ReferenceMoments, TwoLevelsInHalvesGiveTheUpperLevel) {
    // 64 and 192: m1 128, m2 20480, m3 3670016; cd 4096, c0 12288, c1 -256,
    // disc 16384, z 64 and 192, p0 0.5, and 0.5 > 0.5 does not hold at 64.
    EXPECT_EQ(thresholdGlobalMoments({2, 1, {64, 192}}), 192);
    // 0 and 255: c0 0, c1 -255, disc 65025, p0 0.5.
    EXPECT_EQ(thresholdGlobalMoments({2, 2, {0, 255, 255, 0}}), 255);
}

TEST(ReferenceMoments, AUniformPageGives128) {
    for (int v = 0; v < 256; v++)
        EXPECT_EQ(thresholdGlobalMoments(uniform(7, 3, v)), 128) << v;
}

TEST(ReferenceMoments, TwoLevelsNeverGiveALevelBetweenThem) {
    const int t = thresholdGlobalMoments({3, 1, {40, 40, 201}});
    EXPECT_TRUE(t == 40 || t == 201) << t;
}

TEST(ReferenceGamma, EndsAndKneeMapOntoThemselves) {
    const auto lut = piecewiseGammaTable(64, 0.85f, 0.7f);
    EXPECT_EQ(lut[0], 0);
    EXPECT_EQ(lut[64], 64);
    EXPECT_EQ(lut[255], 255);
    EXPECT_EQ(lut[32], 35);    // 64 * 0.5^0.85 = 35.51
    EXPECT_EQ(lut[128], 152);  // 64 + 191 * (64/191)^0.7 = 152.85
}

TEST(ReferenceGamma, TheKneeSplitsTheRange) {
    const auto lut = piecewiseGammaTable(128, 0.5f, 1.5f);
    EXPECT_EQ(lut[60], 87);  // 128 * sqrt(60/128) = 87.64
    EXPECT_EQ(lut[128], 128);
    EXPECT_EQ(lut[200], 182);  // 128 + 127 * (72/127)^1.5 = 182.21
}

TEST(ReferenceGamma, AKneeOfMinusOneSpansTheUpperPieceFromMinusOne) {
    const auto lut = piecewiseGammaTable(-1, 0.5f, 1.5f);
    EXPECT_EQ(lut[0], 0);     // 256 / 4096 - 1 = -0.94, truncated
    EXPECT_EQ(lut[127], 89);  // 256 * 0.353553 - 1 = 89.51
    EXPECT_EQ(lut[255], 255);
}

TEST(ReferenceGamma, KneesAtTheEndsOfTheRange) {
    EXPECT_EQ(piecewiseGammaTable(255, 0.5f, 1.5f)[255], 255);
    EXPECT_EQ(piecewiseGammaTable(0, 0.5f, 1.5f)[0], 0);
    EXPECT_EQ(piecewiseGammaTable(0, 0.5f, 1.5f)[255], 255);
}

TEST(ReferenceGamma, TheImageGoesThroughTheTable) {
    EXPECT_EQ(piecewiseGamma({4, 1, {0, 32, 128, 255}}, 64, 0.85f, 0.7f).px,
              (Bytes{0, 35, 152, 255}));
}

TEST(ReferenceGaussian, KernelWeightsAreTheNormalisedExponentials) {
    // e^-0.5 = 0.606531; 1 + 2 * 0.606531 = 2.213061
    const auto one = gaussianKernel1D(3, 1.0);
    EXPECT_NEAR(one[0], 0.274069, 1e-6);
    EXPECT_NEAR(one[1], 0.451863, 1e-6);
    EXPECT_EQ(one[0], one[2]);
    EXPECT_EQ(gaussianKernel1D(1, 3.0)[0], 1.0);
    // The outer product of the same weights.
    const auto two = gaussianKernel2D(3, 1.0, 1.0);
    EXPECT_NEAR(two[4], 0.204180, 1e-6);
    EXPECT_NEAR(two[1], 0.123841, 1e-6);
    EXPECT_NEAR(two[0], 0.075114, 1e-6);
}

TEST(ReferenceGaussian, TheTwoSigmasBelongToColumnsAndRows) {
    // e^-0.5 across, e^-0.125 = 0.882497 down.
    const auto kernel = gaussianKernel2D(3, 1.0, 2.0);
    EXPECT_NEAR(kernel[5] / kernel[4], 0.606531, 1e-6);
    EXPECT_NEAR(kernel[7] / kernel[4], 0.882497, 1e-6);
}

TEST(ReferenceGaussian, EvenSizesAreRejected) {
    const GrayImage image = uniform(2, 2, 9);
    EXPECT_THROW(gaussianKernel1D(4, 1.0), std::invalid_argument);
    EXPECT_THROW(gaussianKernel2D(10, 1.0, 1.0), std::invalid_argument);
    EXPECT_THROW(gaussianFilterFast(image, 2, 1.0), std::invalid_argument);
    EXPECT_THROW(gaussianFilter(image, 2, 1.0, 1.0), std::invalid_argument);
    EXPECT_THROW(unsharpMask(image, 300.0f, 6), std::invalid_argument);
}

TEST(ReferenceGaussian, ConvolutionRepeatsTheEdgePixel) {
    const std::vector<double> kernel{0.25, 0.5, 0.25};
    const GrayImage line{3, 1, {0, 0, 255}};
    EXPECT_EQ(convolve1D(line, kernel, 3, true).px, (Bytes{0, 64, 191}));  // 63.75, 191.25
    EXPECT_EQ(convolve1D(line, kernel, 3, false).px, line.px);
    const GrayImage column{1, 3, {0, 0, 255}};
    EXPECT_EQ(convolve1D(column, kernel, 3, false).px, (Bytes{0, 64, 191}));
    EXPECT_EQ(convolve1D(column, kernel, 3, true).px, column.px);
}

TEST(ReferenceGaussian, TheFirstTapReadsThePixelBefore) {
    EXPECT_EQ(convolve1D({3, 1, {10, 20, 30}}, {1.0, 0.0, 0.0}, 3, true).px, (Bytes{10, 10, 20}));
}

TEST(ReferenceGaussian, BothBlursKeepAUniformImage) {
    const GrayImage image = uniform(6, 5, 77);
    EXPECT_EQ(gaussianFilterFast(image, 11, 3.0).px, image.px);
    EXPECT_EQ(gaussianFilter(image, 5, 1.0, 2.0).px, image.px);
    EXPECT_EQ(unsharpMask(image, 300.0f, 11).px, image.px);
}

TEST(ReferenceGaussian, WeightedSumsAreRoundedAndClamped) {
    // 4 * 100 - 3 * 90 = 130; 1.5 * 100 - 0.5 * 101 = 99.5; then the two clamps.
    EXPECT_EQ(addWeighted({1, 1, {100}}, {1, 1, {90}}, 3.0f).px[0], 130);
    EXPECT_EQ(addWeighted({1, 1, {100}}, {1, 1, {101}}, 0.5f).px[0], 100);
    EXPECT_EQ(addWeighted({1, 1, {0}}, {1, 1, {10}}, 3.0f).px[0], 0);
    EXPECT_EQ(addWeighted({1, 1, {255}}, {1, 1, {10}}, 3.0f).px[0], 255);
}

TEST(ReferenceGaussian, TheMaskOfAnEdgeOvershootsOnBothSides) {
    GrayImage edge{20, 1, {}};
    for (int x = 0; x < 20; x++)
        edge.px.push_back(x < 10 ? 0 : 255);
    EXPECT_EQ(unsharpMask(edge, 300.0f, 11).px, edge.px);
    const GrayImage soft{3, 1, {10, 200, 30}};
    EXPECT_EQ(unsharpMask(soft, 0.0f, 11).px, soft.px);
}

TEST(ReferenceErrorDiffusion, OneRowCarriesTheErrorToTwoPixels) {
    // 128: not above 128, e 128.  192.7: white, e -62.3.
    // 128 - 6.77 - 31.49 = 89.7: black, e 89.7.  128 + 3.30 + 45.39 = 176.7: white.
    EXPECT_EQ(edfCus(uniform(4, 1, 128), 128).px, (Bytes{0, 255, 0, 255}));
}

TEST(ReferenceErrorDiffusion, AWhiteInteriorPixelCountsItsBlackNeighbours) {
    // The centre 255 is white with a black left and upper neighbour, so its error
    // is 255 * 0.2854 = 72.8, and 36.8 of it reaches the pixel to its right.
    EXPECT_EQ(edfCus({3, 3, {0, 0, 0, 0, 255, 92, 0, 0, 0}}, 128).at(2, 1), 255);
    EXPECT_EQ(edfCus({3, 3, {0, 0, 0, 0, 255, 91, 0, 0, 0}}, 128).at(2, 1), 0);
    // With only the upper one black: 36.4, of which 18.4.
    EXPECT_EQ(edfCus({3, 3, {0, 0, 0, 255, 255, 110, 0, 0, 0}}, 128).at(2, 1), 255);
    EXPECT_EQ(edfCus({3, 3, {0, 0, 0, 255, 255, 109, 0, 0, 0}}, 128).at(2, 1), 0);
}

TEST(ReferenceErrorDiffusion, BorderPixelsAreNotCorrected) {
    // The same three pixels in the last row: the error of the 255 is 0.
    EXPECT_EQ(edfCus({3, 2, {0, 0, 0, 0, 255, 128}}, 128).at(2, 1), 0);
    EXPECT_EQ(edfCus({3, 2, {0, 0, 0, 0, 255, 129}}, 128).at(2, 1), 255);
}

TEST(ReferenceErrorDiffusion, TheRowBelowReceivesFourShares) {
    // A black 100 at the end of its row. Two to the left, below: 22.62.
    EXPECT_EQ(edfCus({3, 2, {0, 0, 100, 106, 0, 0}}, 128).at(0, 1), 255);
    EXPECT_EQ(edfCus({3, 2, {0, 0, 100, 105, 0, 0}}, 128).at(0, 1), 0);
    // One to the left, below: 12.88.
    EXPECT_EQ(edfCus({2, 2, {0, 100, 116, 0}}, 128).at(0, 1), 255);
    EXPECT_EQ(edfCus({2, 2, {0, 100, 115, 0}}, 128).at(0, 1), 0);
    // Straight below: 24.32.
    EXPECT_EQ(edfCus({1, 2, {100, 104}}, 128).at(0, 1), 255);
    EXPECT_EQ(edfCus({1, 2, {100, 103}}, 128).at(0, 1), 0);
    // One to the right, below: -11.11 of the 100; 12.30 of the 50.58 that reached
    // its right neighbour; and of 24.32 + 6.52 below it, 15.60: 16.79.
    EXPECT_EQ(edfCus({2, 2, {100, 0, 0, 112}}, 128).at(1, 1), 255);
    EXPECT_EQ(edfCus({2, 2, {100, 0, 0, 111}}, 128).at(1, 1), 0);
}

TEST(ReferenceErrorDiffusion, AThresholdOfMinusOneLetsBlackPixelsBeWhite) {
    // 0 > -1: white, e -255; the next gets -129: black.
    EXPECT_EQ(edfCus({2, 1, {0, 0}}, -1).px, (Bytes{255, 0}));
}

TEST(ReferenceTattoo, OnePixelPages) {
    // The threshold of a uniform page is 128. 128 becomes 152 by the first gamma
    // and stays 128 by the second, whose knee it is.
    EXPECT_EQ(tattooDithering(uniform(1, 1, 0)).px, (Bytes{0}));
    EXPECT_EQ(tattooDithering(uniform(1, 1, 255)).px, (Bytes{255}));
    EXPECT_EQ(tattooDithering(uniform(1, 1, 128)).px, (Bytes{255}));
    EXPECT_EQ(tattooDitheringX8(uniform(1, 1, 128)).px, (Bytes{0}));
}

TEST(ReferenceTattoo, AnEmptyImageComesBackAsItIs) {
    const ColorImage empty{0, 5, 3, {}};
    EXPECT_EQ(tattooDithering(empty).color, 3);
    EXPECT_EQ(tattooDithering(empty).height, 5);
    EXPECT_EQ(tattooDitheringX8(empty).color, 3);
}

TEST(ReferenceTattoo, TheOutputIsBlackAndWhiteOnly) {
    GrayImage page{31, 23, {}};
    for (int k = 0; k < 31 * 23; k++)
        page.px.push_back(static_cast<unsigned char>(k * 97 % 256));
    for (unsigned char v : tattooDithering(page).px)
        EXPECT_TRUE(v == 0 || v == 255);
    for (unsigned char v : tattooDitheringX8(page).px)
        EXPECT_TRUE(v == 0 || v == 255);
}

}  // namespace reference
