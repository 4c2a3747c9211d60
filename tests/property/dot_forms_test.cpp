// Halftones that decide each pixel by itself, packing and unpacking, in every form that the machine
// has.

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cstdint>
#include <memory>
#include <vector>

#include "image/dot_packing.h"
#include "simd/forms.h"
#include "tests/property/random_images.h"
#include "tests/reference/dither.h"
#include "tests/support/form_names.h"

namespace {

using kelp_test::forRandomImages;
using kelp_test::Random;
using reference::GrayImage;

constexpr std::size_t kLongest = 300;  // more than two of the longest vectors, and a rest

class DotForms : public testing::TestWithParam<simd::Form> {
  protected:
    const simd::ForcedForm forced_{GetParam()};
};

INSTANTIATE_TEST_SUITE_P(EveryForm, DotForms, testing::ValuesIn(simd::forms()),
                         kelp_test::form_name);

/// A row at the end of a block of its own, so that a sanitizer sees what is read behind it.
class RowAt {
  public:
    RowAt(std::size_t offset, const std::vector<std::uint8_t>& values)
        : block_(new std::uint8_t[offset + values.size()]), first_(block_.get() + offset) {
        std::copy(values.begin(), values.end(), first_);
    }
    std::uint8_t* data() { return first_; }

  private:
    std::unique_ptr<std::uint8_t[]> block_;
    std::uint8_t* first_;
};

std::vector<std::uint8_t> bitsOf(const std::vector<std::uint8_t>& values, const DotLimits& limits) {
    std::vector<std::uint8_t> bits((values.size() + 7) / 8);
    for (std::size_t x = 0; x < values.size(); ++x) {
        if (values[x] > limits[x % 4]) {
            bits[x / 8] = static_cast<std::uint8_t>(bits[x / 8] + (128 >> x % 8));
        }
    }
    return bits;
}

std::vector<std::uint8_t> randomValues(std::size_t count, Random& random) {
    std::vector<std::uint8_t> values(count);
    for (std::uint8_t& value : values) {
        value = static_cast<std::uint8_t>(random.between(0, 255));
    }
    return values;
}

TEST_P(DotForms, PackRowsOfEveryLengthAtEveryPlace) {
    Random random(41);
    for (std::size_t width = 0; width <= kLongest; ++width) {
        const std::size_t offset = width % 33;
        const std::vector<std::uint8_t> values = randomValues(width, random);
        const DotLimits limits{0, 254, static_cast<std::uint8_t>(random.between(1, 253)), 128};
        const std::vector<std::uint8_t> expected = bitsOf(values, limits);
        RowAt row(offset, values);
        RowAt packed(32 - offset, std::vector<std::uint8_t>(expected.size()));
        packDots(row.data(), width, limits, packed.data());
        ASSERT_TRUE(std::equal(expected.begin(), expected.end(), packed.data())) << width;
        packDots(row.data(), width, limits, row.data());
        ASSERT_TRUE(std::equal(expected.begin(), expected.end(), row.data())) << width << ", onto";
        // What lies behind the bits is as it was.
        ASSERT_TRUE(std::equal(values.begin() + static_cast<std::ptrdiff_t>(expected.size()),
                               values.end(), row.data() + expected.size()))
            << width;
    }
}

TEST_P(DotForms, CompareEveryValueWithEveryLimitInEveryColumn) {
    std::vector<std::uint8_t> values(256 + 4);
    for (std::size_t first = 0; first < 4; ++first) {
        for (std::size_t i = 0; i < values.size(); ++i) {
            values[i] = static_cast<std::uint8_t>(i + first);
        }
        for (unsigned limit = 0; limit < 256; ++limit) {
            DotLimits limits;
            for (std::size_t i = 0; i < 4; ++i) {
                limits[i] = static_cast<std::uint8_t>(limit + 64 * i);
            }
            std::vector<std::uint8_t> packed((values.size() + 7) / 8);
            packDots(values.data(), values.size(), limits, packed.data());
            ASSERT_EQ(packed, bitsOf(values, limits)) << first << ", " << limit;
        }
    }
}

TEST_P(DotForms, UnpackRowsOfEveryLengthAtEveryPlace) {
    Random random(42);
    for (std::size_t width = 0; width <= kLongest; ++width) {
        const std::vector<std::uint8_t> values = [&] {
            std::vector<std::uint8_t> dots = randomValues(width, random);
            for (std::uint8_t& dot : dots) {
                dot &= 1;
            }
            return dots;
        }();
        // The bits that are no dots are set: they must not be taken for any.
        std::vector<std::uint8_t> bits = bitsOf(values, {0, 0, 0, 0});
        if (width % 8 != 0) {
            bits.back() = static_cast<std::uint8_t>(bits.back() | 0xFF >> width % 8);
        }
        RowAt packed(width % 33, bits);
        std::vector<std::uint8_t> unpacked(width + 1, 0x5A);
        unpackDots(packed.data(), width, unpacked.data());
        ASSERT_EQ(unpacked.back(), 0x5A) << width;
        unpacked.pop_back();
        ASSERT_EQ(unpacked, values) << width;
    }
}

constexpr std::array<long, 3> kMethods{0, 1, 7};

void expectHalftones(const GrayImage& grey) {
    CxImage image;
    for (const long method : kMethods) {
        kelp_test::load(image, grey);
        ASSERT_TRUE(image.Dither(method));
        ASSERT_EQ(kelp_test::indicesOf(image).px, reference::dither(grey, method).px)
            << "method " << method;
    }
}

TEST_P(DotForms, HalftoneImagesByPosition) {
    forRandomImages(43, [](const GrayImage& grey, Random&) { expectHalftones(grey); });
}

TEST_P(DotForms, HalftoneUniformPagesOfEveryGrey) {
    for (int level = 0; level < 256; ++level) {
        GrayImage grey{157, 9, {}};
        grey.px.assign(std::size_t{157} * 9, static_cast<unsigned char>(level));
        expectHalftones(grey);
    }
}

}  // namespace
