#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <stdexcept>
#include <vector>

#include "enhance/gaussian.h"
#include "tests/unit/enhance/grey_image.h"

namespace {

using namespace kelp_test;

/// The direct blur, worked in double precision with the kernel's own values.
Rows blurred(const TQImage& image, int size, double sigmaX, double sigmaY) {
    const Rows rows = rowsOf(image);
    std::vector<double> kernel(static_cast<std::size_t>(size) * static_cast<std::size_t>(size));
    generateGaussianKernel(size, sigmaX, sigmaY, kernel.data());
    Rows result = rows;
    const int half = size / 2;
    for (int y = 0; y < image.height; ++y) {
        for (int x = 0; x < image.width; ++x) {
            double sum = 0.0;
            std::size_t tap = 0;
            for (int dy = -half; dy <= half; ++dy) {
                for (int dx = -half; dx <= half; ++dx) {
                    const int sx = std::clamp(x + dx, 0, image.width - 1);
                    const int sy = std::clamp(y + dy, 0, image.height - 1);
                    sum += rows[static_cast<std::size_t>(sy)][static_cast<std::size_t>(sx)] *
                           kernel[tap++];
                }
            }
            result[static_cast<std::size_t>(y)][static_cast<std::size_t>(x)] =
                static_cast<int>(std::lround(static_cast<float>(sum)));
        }
    }
    return result;
}

TEST(GaussianFilter, GivesAnImageWithoutPixelsForOne) {
    const TQImage result = enh_gaussian_filter(TQImage(4, 0, TQ_IMG_GRAY), 3, 1.0, 1.0);
    EXPECT_EQ(result.width, 4);
    EXPECT_EQ(result.height, 0);
}

TEST(GaussianFilterFast, ConvolvesRowsAndThenColumnsWithWholeLevelsBetween) {
    const TQImage source = scattered(9, 7);
    std::vector<double> kernel(5);
    generateGaussianKernel1D(5, 1.2, kernel.data());
    const TQImage rows = convolve1D(source, kernel.data(), 5, true);
    const TQImage both = convolve1D(rows, kernel.data(), 5, false);
    EXPECT_EQ(rowsOf(enh_gaussian_filter_fast(source, 5, 1.2)), rowsOf(both));
    // The other order rounds differently.
    const TQImage columns = convolve1D(source, kernel.data(), 5, false);
    EXPECT_NE(rowsOf(convolve1D(columns, kernel.data(), 5, true)), rowsOf(both));
}

TEST(GaussianFilterFast, RoundsTheRowsBeforeTheColumns) {
    // Three taps of nearly 1/3 (sigma 1000): the row becomes 0, 0.33 and 0.67 at the repeated
    // edge, so 0, 0, 1. The column of the 1 becomes 0.67, so 1; unrounded, 0.67 * 0.67 would be
    // left there.
    EXPECT_EQ(rowsOf(enh_gaussian_filter_fast(grey({{0, 0, 1}, {0, 0, 0}, {0, 0, 0}}), 3, 1000.0)),
              (Rows{{0, 0, 1}, {0, 0, 0}, {0, 0, 0}}));
}

TEST(GaussianFilterFast, BlursAUniformImageToItself) {
    for (int level = 0; level < 256; ++level) {
        EXPECT_EQ(rowsOf(enh_gaussian_filter_fast(uniform(13, 5, level), 11, 3.0)),
                  rowsOf(uniform(13, 5, level)));
    }
}

TEST(GaussianFilterFast, ReturnsTheImageForASingleTap) {
    const TQImage source = scattered(6, 5);
    EXPECT_EQ(rowsOf(enh_gaussian_filter_fast(source, 1, 3.0)), rowsOf(source));
}

TEST(GaussianFilterFast, SpreadsADotAlike) {
    Rows rows(7, std::vector<int>(7, 0));
    rows[3][3] = 255;
    const Rows spread = rowsOf(enh_gaussian_filter_fast(grey(rows), 3, 1.0));
    // exp(-0.5) is 0.60653: taps 0.27406 and 0.45186. The row becomes 69.9 and 115.2, so 70 and
    // 115; down the column 70 * 0.45186 = 31.6, 115 * 0.45186 = 52.0, 70 * 0.27406 = 19.2,
    // 115 * 0.27406 = 31.5.
    EXPECT_EQ(spread[2], (std::vector<int>{0, 0, 19, 32, 19, 0, 0}));
    EXPECT_EQ(spread[3], (std::vector<int>{0, 0, 32, 52, 32, 0, 0}));
    EXPECT_EQ(spread[4], spread[2]);
    EXPECT_EQ(spread[1], std::vector<int>(7, 0));
}

TEST(GaussianFilterFast, KeepsTheSourceAndItsSize) {
    const TQImage source = scattered(3, 8);
    const Rows before = rowsOf(source);
    const TQImage result = enh_gaussian_filter_fast(source, 11, 3.0);
    EXPECT_EQ(rowsOf(source), before);
    EXPECT_EQ(result.width, 3);
    EXPECT_EQ(result.height, 8);
    EXPECT_EQ(result.color, TQ_IMG_GRAY);
}

TEST(GaussianFilter, SumsTheWholeWindowBeforeItRounds) {
    const TQImage source = scattered(11, 8);
    for (const int size : {1, 3, 5, 11}) {
        EXPECT_EQ(rowsOf(enh_gaussian_filter(source, size, 1.5, 2.5)),
                  blurred(source, size, 1.5, 2.5))
            << size;
    }
}

TEST(GaussianFilter, RoundsTheSumToSinglePrecisionFirst) {
    // The weights at sigma 1 make 128.4999961 of these, which is 128.5 as a single.
    const Rows rows = {{126, 143, 126}, {143, 97, 143}, {126, 143, 126}};
    EXPECT_EQ(rowsOf(enh_gaussian_filter(grey(rows), 3, 1.0, 1.0))[1][1], 129);
}

TEST(GaussianFilter, BlursMoreAlongTheAxisOfTheLargerSigma) {
    Rows rows(7, std::vector<int>(7, 0));
    rows[3][3] = 255;
    const Rows wide = rowsOf(enh_gaussian_filter(grey(rows), 5, 2.0, 0.5));
    EXPECT_GT(wide[3][5], 0);
    EXPECT_EQ(wide[5][3], 0);
    const Rows tall = rowsOf(enh_gaussian_filter(grey(rows), 5, 0.5, 2.0));
    EXPECT_EQ(tall[3][5], 0);
    EXPECT_GT(tall[5][3], 0);
}

TEST(GaussianFilter, RepeatsTheEdgePixels) {
    EXPECT_EQ(rowsOf(enh_gaussian_filter(grey({{77}}), 11, 3.0, 3.0)), (Rows{{77}}));
    const TQImage narrow = scattered(1, 9);
    EXPECT_EQ(rowsOf(enh_gaussian_filter(narrow, 7, 3.0, 2.0)), blurred(narrow, 7, 3.0, 2.0));
    const TQImage low = scattered(9, 1);
    EXPECT_EQ(rowsOf(enh_gaussian_filter(low, 7, 3.0, 2.0)), blurred(low, 7, 3.0, 2.0));
}

TEST(GaussianFilter, BlursAUniformImageToItself) {
    for (const int level : {0, 1, 100, 128, 254, 255}) {
        EXPECT_EQ(rowsOf(enh_gaussian_filter(uniform(6, 5, level), 11, 3.0, 3.0)),
                  rowsOf(uniform(6, 5, level)));
    }
}

TEST(GaussianFilter, KeepsTheSizeAndGivesAGreyImage) {
    const TQImage result = enh_gaussian_filter(scattered(4, 6), 3, 1.0, 1.0);
    EXPECT_EQ(result.width, 4);
    EXPECT_EQ(result.height, 6);
    EXPECT_EQ(result.color, TQ_IMG_GRAY);
    EXPECT_EQ(result.channels, 1);
}

TEST(GaussianFilter, RefusesEvenAndNonPositiveSizes) {
    const TQImage source = scattered(4, 4);
    for (const int size : {0, 2, 12, -1, -11}) {
        EXPECT_THROW(enh_gaussian_filter(source, size, 1.0, 1.0), std::invalid_argument) << size;
        EXPECT_THROW(enh_gaussian_filter_fast(source, size, 1.0), std::invalid_argument) << size;
    }
}

}  // namespace
