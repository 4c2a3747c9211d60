#include "tests/reference/gaussian.h"

#include <stdexcept>

#include "tests/reference/numeric.h"

namespace reference {

namespace {

void requireOddSize(int size) {
    if (size < 1 || size % 2 == 0)
        throw std::invalid_argument("the size of a Gaussian kernel must be odd");
}

void divideBySum(std::vector<double>& kernel) {
    double sum = 0.0;
    for (std::size_t j = 0; j < kernel.size(); j++)
        sum += kernel[j];
    for (std::size_t j = 0; j < kernel.size(); j++)
        kernel[j] = kernel[j] / sum;
}

int clampToIndex(int v, int last) {
    if (v < 0)
        v = 0;
    if (v > last)
        v = last;
    return v;
}

}  // namespace

std::vector<double> gaussianKernel1D(int size, double sigma) {
    requireOddSize(size);
    std::vector<double> kernel(static_cast<std::size_t>(size));
    const int half = size / 2;
    const double coef = 1.0 / (static_cast<double>(mySqrt(6.2831855f)) * sigma);
    for (int i = -half; i <= half; i++) {
        double exponent = (-0.5 * static_cast<double>(i * i)) / (sigma * sigma);
        float e = static_cast<float>(exponent);
        kernel[static_cast<std::size_t>(i + half)] = coef * static_cast<double>(myExp(e));
    }
    divideBySum(kernel);
    return kernel;
}

std::vector<double> gaussianKernel2D(int size, double sigmaX, double sigmaY) {
    requireOddSize(size);
    std::vector<double> kernel(static_cast<std::size_t>(size) * static_cast<std::size_t>(size));
    const int half = size / 2;
    const double coef = 1.0 / (6.283185307179586 * sigmaX * sigmaY);
    for (int dy = -half; dy <= half; dy++) {
        for (int dx = -half; dx <= half; dx++) {
            double across = static_cast<double>(-(dx * dx)) / (2.0 * sigmaX * sigmaX);
            double down = static_cast<double>(dy * dy) / (2.0 * sigmaY * sigmaY);
            float e = static_cast<float>(across - down);
            std::size_t k = static_cast<std::size_t>((dy + half) * size + (dx + half));
            kernel[k] = coef * static_cast<double>(myExp(e));
        }
    }
    divideBySum(kernel);
    return kernel;
}

GrayImage convolve1D(const GrayImage& src, const std::vector<double>& kernel, int size,
                     bool horizontal) {
    requireOddSize(size);
    GrayImage result = src;
    const int half = size / 2;
    for (int y = 0; y < src.height; y++) {
        for (int x = 0; x < src.width; x++) {
            double sum = 0.0;
            for (int i = -half; i <= half; i++) {
                int sx = x;
                int sy = y;
                if (horizontal)
                    sx = clampToIndex(x + i, src.width - 1);
                else
                    sy = clampToIndex(y + i, src.height - 1);
                double product = static_cast<double>(src.at(sx, sy)) *
                                 kernel[static_cast<std::size_t>(i + half)];
                sum += product;
            }
            result.set(x, y, myRound(static_cast<float>(sum)) & 255);
        }
    }
    return result;
}

GrayImage gaussianFilterFast(const GrayImage& src, int size, double sigma) {
    std::vector<double> kernel = gaussianKernel1D(size, sigma);
    GrayImage tmp = convolve1D(src, kernel, size, true);
    return convolve1D(tmp, kernel, size, false);
}

GrayImage gaussianFilter(const GrayImage& src, int size, double sigmaX, double sigmaY) {
    std::vector<double> kernel = gaussianKernel2D(size, sigmaX, sigmaY);
    GrayImage result = src;
    const int half = size / 2;
    for (int y = 0; y < src.height; y++) {
        for (int x = 0; x < src.width; x++) {
            double sum = 0.0;
            for (int dy = -half; dy <= half; dy++) {
                for (int dx = -half; dx <= half; dx++) {
                    int sx = myClamp(x + dx, 0, src.width - 1);
                    int sy = myClamp(y + dy, 0, src.height - 1);
                    std::size_t k = static_cast<std::size_t>((dy + half) * size + (dx + half));
                    double product = static_cast<double>(src.at(sx, sy)) * kernel[k];
                    sum += product;
                }
            }
            result.set(x, y, myRound(static_cast<float>(sum)) & 255);
        }
    }
    return result;
}

GrayImage addWeighted(const GrayImage& src, const GrayImage& blurred, float weight) {
    GrayImage result = src;
    for (int k = 0; k < src.width * src.height; k++) {
        std::size_t i = static_cast<std::size_t>(k);
        float own = static_cast<float>(src.px[i]) * (1.0f + weight);
        float taken = static_cast<float>(blurred.px[i]) * (-weight);
        float sum = own + taken;
        int v = myRound(sum + 0.0f);
        result.px[i] = static_cast<unsigned char>(myClamp(v, 0, 255));
    }
    return result;
}

GrayImage unsharpMask(const GrayImage& src, float amount, int size) {
    float weight = amount / 100.0f;
    GrayImage blurred = gaussianFilterFast(src, size, 3.0);
    return addWeighted(src, blurred, weight);
}

}  // namespace reference
