#include "enhance/gaussian.h"

#include <algorithm>
#include <cstddef>
#include <cstring>
#include <numeric>
#include <stdexcept>
#include <utility>
#include <vector>

#include "enhance/numeric.h"
#include "enhance/taps.h"

namespace {

constexpr double kUnsharpSigma = 3.0;
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

std::vector<double> gaussianTaps(int size, double sigma) {
    std::vector<double> kernel(tapCount(size));
    generateGaussianKernel1D(size, sigma, kernel.data());
    return kernel;
}

RowSource rowsOf(const TQImage& img) {
    return [&img](std::int32_t y, unsigned char* row) {
        std::memcpy(row, rowAt(img, y), static_cast<std::size_t>(img.width));
    };
}

// An image for a result that has the source's fields and, of its bytes, those past the pixels.
TQImage resultFor(const TQImage& src) {
    const bool hasOnlyPixels = src.color == TQ_IMG_GRAY && src.channels == 1;
    return hasOnlyPixels ? TQImage::unset(src.width, src.height, TQ_IMG_GRAY) : TQImage(src);
}

// The row with `half` copies of its end pixels on either side.
void extendRow(const unsigned char* row, int width, int half, std::vector<unsigned char>& out) {
    out.assign(static_cast<std::size_t>(half), row[0]);
    out.insert(out.end(), row, row + width);
    out.insert(out.end(), static_cast<std::size_t>(half), row[width - 1]);
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
    const Taps taps(kernel, size);
    TQImage result = resultFor(src);
    if (src.pixelCount() <= 0) {
        return result;
    }
    const int half = size / 2;
    std::vector<const unsigned char*> pixels(taps.weights.size());
    std::vector<unsigned char> extended;
    for (int y = 0; y < src.height; ++y) {
        if (horizontal) {
            extendRow(rowAt(src, y), src.width, half, extended);
        }
        for (int i = 0; i < size; ++i) {
            pixels[static_cast<std::size_t>(i)] =
                horizontal ? extended.data() + i
                           : rowAt(src, myClamp(y + i - half, 0, src.height - 1));
        }
        weighRows(pixels.data(), taps, static_cast<std::size_t>(src.width), rowAt(result, y));
    }
    return result;
}

TQImage enh_gaussian_filter_fast(const TQImage& src, int size, double sigma) {
    const Taps taps(gaussianTaps(size, sigma).data(), size);
    TQImage result = resultFor(src);
    if (src.pixelCount() > 0) {
        BlurredRows blurred(src.width, src.height, taps, rowsOf(src));
        for (std::int32_t y = 0; y < src.height; ++y) {
            blurred.next(rowAt(result, y));
        }
    }
    return result;
}

TQImage enh_gaussian_filter(const TQImage& src, int size, double sigmaX, double sigmaY) {
    std::vector<double> kernel(tapCount(size) * tapCount(size));
    generateGaussianKernel(size, sigmaX, sigmaY, kernel.data());
    TQImage result = TQImage::unset(src.width, src.height, TQ_IMG_GRAY);
    if (src.pixelCount() <= 0) {
        return result;
    }
    const int half = size / 2;
    const auto width = static_cast<std::size_t>(src.width);
    std::vector<unsigned char> extended;
    // One tap over a whole row, so that the compiler can work on several pixels at once while each
    // pixel still receives its taps in order.
    std::vector<double> sums(width);
    for (int y = 0; y < src.height; ++y) {
        std::fill(sums.begin(), sums.end(), 0.0);
        const double* tap = kernel.data();
        for (int dy = -half; dy <= half; ++dy) {
            extendRow(rowAt(src, myClamp(y + dy, 0, src.height - 1)), src.width, half, extended);
            for (int dx = 0; dx < size; ++dx, ++tap) {
                const unsigned char* pixels = extended.data() + dx;
                for (std::size_t x = 0; x < width; ++x) {
                    sums[x] += static_cast<double>(pixels[x]) * *tap;
                }
            }
        }
        for (std::size_t x = 0; x < width; ++x) {
            rowAt(result, y)[x] = lowByte(my_round(static_cast<float>(sums[x])));
        }
    }
    return result;
}

TQImage add_Weighted(const TQImage& src, const TQImage& blurred, float weight) {
    TQImage result = resultFor(src);
    const std::int32_t pixels = std::max(src.pixelCount(), 0);
    sharpen(src.data, blurred.data, weight, static_cast<std::size_t>(pixels), result.data);
    return result;
}

UnsharpRows unsharpRows(std::int32_t width, std::int32_t height, float amount, int size,
                        RowSource rows) {
    return {width, height, amount / 100.0F, Taps(gaussianTaps(size, kUnsharpSigma).data(), size),
            std::move(rows)};
}

TQImage enh_unsharp_mask(const TQImage& src, float amount, int size) {
    requireOdd(size);
    TQImage result = resultFor(src);
    if (src.pixelCount() > 0) {
        UnsharpRows sharpened = unsharpRows(src.width, src.height, amount, size, rowsOf(src));
        for (std::int32_t y = 0; y < src.height; ++y) {
            sharpened.next(rowAt(result, y));
        }
    }
    return result;
}
