#include "enhance/gaussian.h"

#include <algorithm>
#include <cstddef>
#include <numeric>
#include <stdexcept>
#include <vector>

#include "enhance/numeric.h"

namespace {

constexpr double kTwoPi = 6.283185307179586;

void requireOdd(int size) {
    if (size <= 0 || size % 2 == 0) {
        throw std::invalid_argument("Gaussian kernel size must be odd and positive");
    }
}

std::size_t tapCount(int size) {
    requireOdd(size);
    return static_cast<std::size_t>(size);
}

void normalise(double* kernel, std::size_t count) {
    const double sum = std::accumulate(kernel, kernel + count, 0.0);
    for (std::size_t j = 0; j < count; ++j) {
        kernel[j] = kernel[j] / sum;
    }
}

double squared(int offset) {
    return static_cast<double>(std::int64_t{offset} * offset);
}

const unsigned char* rowAt(const TQImage& img, int y) {
    return img.data + static_cast<std::ptrdiff_t>(y) * img.width;
}

unsigned char* rowAt(TQImage& img, int y) {
    return img.data + static_cast<std::ptrdiff_t>(y) * img.width;
}

// One tap over a whole row, so that the compiler can work on several pixels at once while each
// pixel still receives its taps in order.
void addTap(std::vector<double>& sums, const unsigned char* pixels, double weight) {
    for (std::size_t x = 0; x < sums.size(); ++x) {
        sums[x] += static_cast<double>(pixels[x]) * weight;
    }
}

// The row with `half` copies of its end pixels on either side.
void extendRow(const unsigned char* row, int width, int half, std::vector<unsigned char>& out) {
    out.assign(static_cast<std::size_t>(half), row[0]);
    out.insert(out.end(), row, row + width);
    out.insert(out.end(), static_cast<std::size_t>(half), row[width - 1]);
}

void roundRow(const std::vector<double>& sums, unsigned char* out) {
    for (std::size_t x = 0; x < sums.size(); ++x) {
        out[x] = lowByte(my_round(static_cast<float>(sums[x])));
    }
}

}  // namespace

void generateGaussianKernel1D(int size, double sigma, double* kernel) {
    const std::size_t count = tapCount(size);
    const int half = size / 2;
    // The factor cancels in the normalisation up to its rounding, which is why it stays.
    const double coefficient = 1.0 / (static_cast<double>(my_sqrt(6.2831855F)) * sigma);
    for (int i = -half; i <= half; ++i) {
        const auto exponent = static_cast<float>((-0.5 * squared(i)) / (sigma * sigma));
        kernel[i + half] = coefficient * static_cast<double>(my_exp(exponent));
    }
    normalise(kernel, count);
}

void generateGaussianKernel(int size, double sigmaX, double sigmaY, double* kernel) {
    const std::size_t count = tapCount(size);
    const int half = size / 2;
    const double coefficient = 1.0 / (kTwoPi * sigmaX * sigmaY);
    double* tap = kernel;
    for (int dy = -half; dy <= half; ++dy) {
        for (int dx = -half; dx <= half; ++dx) {
            const auto exponent = static_cast<float>(-squared(dx) / (2.0 * sigmaX * sigmaX) -
                                                     squared(dy) / (2.0 * sigmaY * sigmaY));
            *tap++ = coefficient * static_cast<double>(my_exp(exponent));
        }
    }
    normalise(kernel, count * count);
}

TQImage convolve1D(const TQImage& src, const double* kernel, int size, bool horizontal) {
    requireOdd(size);
    TQImage result(src);
    if (src.pixelCount() <= 0) {
        return result;
    }
    const int half = size / 2;
    std::vector<double> sums(static_cast<std::size_t>(src.width));
    std::vector<unsigned char> extended;
    for (int y = 0; y < src.height; ++y) {
        std::fill(sums.begin(), sums.end(), 0.0);
        if (horizontal) {
            extendRow(rowAt(src, y), src.width, half, extended);
        }
        for (int i = -half; i <= half; ++i) {
            const unsigned char* pixels = horizontal
                                              ? extended.data() + (i + half)
                                              : rowAt(src, myClamp(y + i, 0, src.height - 1));
            addTap(sums, pixels, kernel[i + half]);
        }
        roundRow(sums, rowAt(result, y));
    }
    return result;
}

TQImage enh_gaussian_filter_fast(const TQImage& src, int size, double sigma) {
    std::vector<double> kernel(tapCount(size));
    generateGaussianKernel1D(size, sigma, kernel.data());
    return convolve1D(convolve1D(src, kernel.data(), size, true), kernel.data(), size, false);
}

TQImage enh_gaussian_filter(const TQImage& src, int size, double sigmaX, double sigmaY) {
    std::vector<double> kernel(tapCount(size) * tapCount(size));
    generateGaussianKernel(size, sigmaX, sigmaY, kernel.data());
    TQImage result(src.width, src.height, TQ_IMG_GRAY);
    if (src.pixelCount() <= 0) {
        return result;
    }
    const int half = size / 2;
    std::vector<double> sums(static_cast<std::size_t>(src.width));
    std::vector<unsigned char> extended;
    for (int y = 0; y < src.height; ++y) {
        std::fill(sums.begin(), sums.end(), 0.0);
        const double* tap = kernel.data();
        for (int dy = -half; dy <= half; ++dy) {
            extendRow(rowAt(src, myClamp(y + dy, 0, src.height - 1)), src.width, half, extended);
            for (int dx = -half; dx <= half; ++dx) {
                addTap(sums, extended.data() + (dx + half), *tap++);
            }
        }
        roundRow(sums, rowAt(result, y));
    }
    return result;
}

TQImage add_Weighted(const TQImage& src, const TQImage& blurred, float weight) {
    TQImage result(src);
    const std::int32_t pixels = src.pixelCount();
    for (std::int32_t k = 0; k < pixels; ++k) {
        const float sum = static_cast<float>(src.data[k]) * (1.0F + weight) +
                          static_cast<float>(blurred.data[k]) * (-weight) + 0.0F;
        result.data[k] = static_cast<unsigned char>(myClamp(my_round(sum), 0, 255));
    }
    return result;
}

TQImage enh_unsharp_mask(const TQImage& src, float amount, int size) {
    const float weight = amount / 100.0F;
    return add_Weighted(src, enh_gaussian_filter_fast(src, size, 3.0), weight);
}
