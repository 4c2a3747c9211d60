#include <gtest/gtest.h>

#include <cmath>
#include <numeric>
#include <stdexcept>
#include <vector>

#include "enhance/gaussian.h"
#include "enhance/numeric.h"

namespace {

std::vector<double> kernel1D(int size, double sigma) {
    std::vector<double> kernel(static_cast<std::size_t>(size));
    generateGaussianKernel1D(size, sigma, kernel.data());
    return kernel;
}

std::vector<double> kernel2D(int size, double sigmaX, double sigmaY) {
    std::vector<double> kernel(static_cast<std::size_t>(size) * static_cast<std::size_t>(size));
    generateGaussianKernel(size, sigmaX, sigmaY, kernel.data());
    return kernel;
}

TEST(GaussianKernel1D, IsOneForASingleTap) {
    EXPECT_EQ(kernel1D(1, 3.0), (std::vector<double>{1.0}));
    EXPECT_EQ(kernel1D(1, 0.1), (std::vector<double>{1.0}));
}

TEST(GaussianKernel1D, NormalisesThreeTapsInTheGivenOrder) {
    // Offsets -1, 0, 1 at sigma 2: exponents -0.125 and 0.
    const double coefficient = 1.0 / (static_cast<double>(my_sqrt(6.2831855F)) * 2.0);
    const double side = coefficient * static_cast<double>(my_exp(-0.125F));
    const double sum = side + coefficient * 1.0 + side;
    EXPECT_EQ(kernel1D(3, 2.0), (std::vector<double>{side / sum, coefficient / sum, side / sum}));
}

TEST(GaussianKernel1D, SamplesTheGaussianAtWholeOffsets) {
    for (const auto& [size, sigma] : {std::pair{11, 3.0}, std::pair{5, 1.0}, std::pair{7, 0.8},
                                      std::pair{15, 2.5}, std::pair{31, 10.0}}) {
        std::vector<double> expected;
        for (int i = -(size / 2); i <= size / 2; ++i) {
            expected.push_back(std::exp(-0.5 * i * i / (sigma * sigma)));
        }
        const double sum = std::accumulate(expected.begin(), expected.end(), 0.0);
        const std::vector<double> kernel = kernel1D(size, sigma);
        for (std::size_t i = 0; i < kernel.size(); ++i) {
            EXPECT_NEAR(kernel[i], expected[i] / sum, 1e-6) << size << ", " << sigma << ", " << i;
        }
    }
}

TEST(GaussianKernel1D, SumsToOneAndIsSymmetric) {
    for (int size = 1; size <= 31; size += 2) {
        const std::vector<double> kernel = kernel1D(size, 3.0);
        EXPECT_NEAR(std::accumulate(kernel.begin(), kernel.end(), 0.0), 1.0, 1e-14);
        for (std::size_t i = 0; i < kernel.size(); ++i) {
            EXPECT_EQ(kernel[i], kernel[kernel.size() - 1 - i]);
        }
    }
}

TEST(GaussianKernel1D, TakesTheExponentialInSinglePrecision) {
    // The outermost of 11 taps at sigma 3 has the exponent -12.5 / 9 = -1.3888..., as a single.
    const std::vector<double> kernel = kernel1D(11, 3.0);
    const auto exponent = static_cast<float>(-12.5 / 9.0);
    EXPECT_NEAR(kernel[0] / kernel[5], static_cast<double>(my_exp(exponent)), 1e-15);
    EXPECT_NE(static_cast<double>(my_exp(exponent)), std::exp(-12.5 / 9.0));
}

TEST(GaussianKernel1D, FillsNoMoreThanItsTaps) {
    std::vector<double> kernel(7, -7.0);
    generateGaussianKernel1D(5, 1.0, kernel.data() + 1);
    EXPECT_EQ(kernel.front(), -7.0);
    EXPECT_EQ(kernel.back(), -7.0);
}

TEST(GaussianKernel1D, RefusesEvenAndNonPositiveSizesAndWritesNothing) {
    for (const int size : {0, 2, 4, 10, -1, -2, -11}) {
        std::vector<double> kernel(16, -7.0);
        EXPECT_THROW(generateGaussianKernel1D(size, 1.0, kernel.data()), std::invalid_argument)
            << size;
        EXPECT_EQ(kernel, std::vector<double>(16, -7.0));
    }
}

TEST(GaussianKernel2D, IsOneForASingleTap) {
    EXPECT_EQ(kernel2D(1, 2.0, 3.0), (std::vector<double>{1.0}));
}

TEST(GaussianKernel2D, NormalisesNineTapsRowByRow) {
    // dx * dx / (2 * 1) and dy * dy / (2 * 4): exponents -0.5 across, -0.125 down, -0.625 at the
    // corners.
    const double coefficient = 1.0 / (6.283185307179586 * 1.0 * 2.0);
    const double across = coefficient * static_cast<double>(my_exp(-0.5F));
    const double down = coefficient * static_cast<double>(my_exp(-0.125F));
    const double corner = coefficient * static_cast<double>(my_exp(-0.625F));
    const double sum =
        corner + down + corner + across + coefficient + across + corner + down + corner;
    EXPECT_EQ(kernel2D(3, 1.0, 2.0),
              (std::vector<double>{corner / sum, down / sum, corner / sum, across / sum,
                                   coefficient / sum, across / sum, corner / sum, down / sum,
                                   corner / sum}));
}

TEST(GaussianKernel2D, SamplesTheGaussianAtWholeOffsets) {
    for (const int size : {3, 5, 11}) {
        const double sigmaX = 1.5;
        const double sigmaY = 2.5;
        const std::vector<double> kernel = kernel2D(size, sigmaX, sigmaY);
        const int half = size / 2;
        std::vector<double> expected;
        for (int dy = -half; dy <= half; ++dy) {
            for (int dx = -half; dx <= half; ++dx) {
                expected.push_back(std::exp(-dx * dx / (2.0 * sigmaX * sigmaX) -
                                            dy * dy / (2.0 * sigmaY * sigmaY)));
            }
        }
        const double sum = std::accumulate(expected.begin(), expected.end(), 0.0);
        for (std::size_t i = 0; i < kernel.size(); ++i) {
            EXPECT_NEAR(kernel[i], expected[i] / sum, 1e-6) << size << ", " << i;
        }
        EXPECT_NEAR(std::accumulate(kernel.begin(), kernel.end(), 0.0), 1.0, 1e-14);
    }
}

TEST(GaussianKernel2D, RefusesEvenAndNonPositiveSizesAndWritesNothing) {
    for (const int size : {0, 2, 4, -1, -3}) {
        std::vector<double> kernel(25, -7.0);
        EXPECT_THROW(generateGaussianKernel(size, 1.0, 1.0, kernel.data()), std::invalid_argument)
            << size;
        EXPECT_EQ(kernel, std::vector<double>(25, -7.0));
    }
}

}  // namespace
