#include <array>
#include <bit>
#include <cstdint>
#include <limits>

#include "enhance/gaussian.h"
#include "enhance/numeric.h"
#include "enhance/piecewise_gamma.h"
#include "image/cx_image.h"
#include "tests/cross/stages.h"
#include "tests/reference/gamma.h"
#include "tests/reference/gaussian.h"
#include "tests/reference/numeric.h"
#include "tests/reference/strided.h"

namespace kelp_test {
namespace {

// Lowest byte first, whatever the machine does.
void append(std::string& bytes, std::uint64_t bits, int count) {
    for (int i = 0; i < count; ++i) {
        bytes.push_back(static_cast<char>(bits >> (8 * i) & 0xFFU));
    }
}

void append(std::string& bytes, float value) {
    // A not-a-number has many forms, and which one comes out is the machine's business.
    const float one_form = value != value ? std::numeric_limits<float>::quiet_NaN() : value;
    append(bytes, std::bit_cast<std::uint32_t>(one_form), 4);
}

void append(std::string& bytes, const std::vector<double>& values) {
    for (const double value : values) {
        append(bytes, std::bit_cast<std::uint64_t>(value), 8);
    }
}

// From a hair to far beyond a grey level, in steps that no binary fraction meets.
std::vector<float> arguments() {
    std::vector<float> values{0.0F, 1.0F, 2.0F, 255.0F};
    for (int i = 1; i < 400; ++i) {
        values.push_back(static_cast<float>(i) / 300.0F);
        values.push_back(static_cast<float>(i) * 1.7F);
    }
    return values;
}

template <typename Ours, typename Reference>
Stage stage_of(const char* name, Ours ours, Reference literal) {
    Stage stage{name, {}, {}};
    for (const float x : arguments()) {
        for (const float signed_x : {x, -x}) {
            append(stage.bytes, ours(signed_x));
            append(stage.reference, literal(signed_x));
        }
    }
    return stage;
}

Stage powers() {
    Stage stage{"powers", {}, {}};
    for (int i = 0; i <= 255; i += 3) {
        for (const float exponent : {0.0F, 0.5F, 0.7F, 0.85F, 1.0F, 1.5F, 2.0F, -1.0F}) {
            const float base = static_cast<float>(i) / 255.0F;
            append(stage.bytes, my_pow(base, exponent));
            append(stage.reference, reference::myPow(base, exponent));
        }
    }
    return stage;
}

// What does not fit an int: the processors' own conversions give different numbers.
Stage conversions() {
    Stage stage{"conversions", {}, {}};
    using Limits = std::numeric_limits<float>;
    for (const float x :
         {0.0F, 0.49999997F, 0.5F, 2.5F, 8388609.0F, 2147483520.0F, 2147483648.0F, 3e9F, 1e20F,
          Limits::max(), Limits::infinity(), Limits::denorm_min(), Limits::quiet_NaN()}) {
        for (const float signed_x : {x, -x}) {
            append(stage.bytes, static_cast<std::uint32_t>(my_round(signed_x)), 4);
            append(stage.bytes, static_cast<std::uint32_t>(truncateToInt(signed_x)), 4);
            append(stage.reference, static_cast<std::uint32_t>(reference::myRound(signed_x)), 4);
            append(stage.reference, static_cast<std::uint32_t>(reference::truncateToInt(signed_x)),
                   4);
        }
    }
    return stage;
}

Stage kernels() {
    Stage stage{"kernels", {}, {}};
    for (int size = 1; size <= 15; size += 2) {
        for (const double sigma : {0.3, 0.8, 1.0, 2.5, 3.0, 7.25, 40.0}) {
            std::vector<double> row(static_cast<std::size_t>(size));
            generateGaussianKernel1D(size, sigma, row.data());
            append(stage.bytes, row);
            append(stage.reference, reference::gaussianKernel1D(size, sigma));
            std::vector<double> square(row.size() * row.size());
            generateGaussianKernel(size, sigma, sigma / 2 + 0.1, square.data());
            append(stage.bytes, square);
            append(stage.reference, reference::gaussianKernel2D(size, sigma, sigma / 2 + 0.1));
        }
    }
    return stage;
}

Stage gamma_tables() {
    Stage stage{"gamma-tables", {}, {}};
    for (int knee = -1; knee <= 256; ++knee) {
        const auto ours = piecewiseGammaTable(knee, 0.5F, 1.5F);
        const auto literal = reference::piecewiseGammaTable(knee, 0.5F, 1.5F);
        stage.bytes.append(ours.begin(), ours.end());
        stage.reference.append(literal.begin(), literal.end());
    }
    return stage;
}

Stage tone_tables() {
    std::array<std::uint8_t, 256> ramp;
    for (std::size_t i = 0; i < ramp.size(); ++i) {
        ramp[i] = static_cast<std::uint8_t>(i);
    }
    Stage stage{"tone-tables", {}, {}};
    for (int brightness = -500; brightness <= 500; brightness += 25) {
        for (int contrast = -200; contrast <= 200; contrast += 26) {
            CxImage image;
            image.CreateFromArray(ramp.data(), 256, 1, 8, 256, false);
            image.Light(brightness, contrast);
            stage.bytes.append(image.GetBits(), image.GetBits() + 256);
            const auto table = reference::lightTable(brightness, contrast);
            stage.reference.append(table.begin(), table.end());
        }
    }
    return stage;
}

}  // namespace

std::vector<Stage> stages_of_numbers() {
    return {stage_of("roots", my_sqrt, reference::mySqrt),
            stage_of("exponentials", my_exp, reference::myExp),
            stage_of("logarithms", my_ln, reference::myLn),
            powers(),
            conversions(),
            kernels(),
            gamma_tables(),
            tone_tables()};
}

}  // namespace kelp_test
