// Every error-diffusion kernel, in every form, held to the reference.

#include "image/error_diffusion.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "simd/forms.h"
#include "tests/property/random_images.h"
#include "tests/reference/dither.h"

namespace {

using kelp_test::forRandomImages;
using kelp_test::Random;
using reference::GrayImage;

struct Named {
    const char* name;
    ErrorKernel kernel;
    long method;
};

/// How an image lies in memory: its first byte `offset` bytes into a block, and `gap` bytes between
/// two rows. Nothing stands before or behind it that may be read.
struct Layout {
    std::size_t offset = 0;
    std::size_t gap = 0;
};

/// Packed rows without gaps, and one byte behind them that nobody may write.
std::vector<std::uint8_t> halftoned(ErrorKernel kernel, const GrayImage& grey, Layout layout) {
    const auto width = static_cast<std::size_t>(grey.width);
    const auto height = static_cast<std::size_t>(grey.height);
    const std::size_t stride = width + layout.gap;
    const std::size_t size = layout.offset + stride * (height - 1) + width;
    const std::unique_ptr<std::uint8_t[]> block(new std::uint8_t[size]);
    std::fill_n(block.get(), size, std::uint8_t{0x5A});
    std::uint8_t* first = block.get() + layout.offset;
    for (std::size_t y = 0; y < height; ++y) {
        std::copy_n(&grey.px[y * width], width, first + y * stride);
    }
    const std::size_t bytes = (width + 7) / 8;
    std::vector<std::uint8_t> packed(bytes * height + 1, 0xEE);
    diffuseErrors(kernel, {first, stride, width, height}, {packed.data(), bytes});
    return packed;
}

std::vector<std::uint8_t> expected(const GrayImage& grey, long method) {
    const GrayImage indices = reference::dither(grey, method);
    const int bytes = (grey.width + 7) / 8;
    std::vector<std::uint8_t> packed(static_cast<std::size_t>(bytes * grey.height + 1), 0);
    packed.back() = 0xEE;
    for (int y = 0; y < grey.height; ++y) {
        for (int x = 0; x < grey.width; ++x) {
            std::uint8_t& byte = packed[static_cast<std::size_t>(y * bytes + x / 8)];
            byte = static_cast<std::uint8_t>(byte | indices.at(x, y) << (7 - x % 8));
        }
    }
    return packed;
}

class EveryKernel : public testing::TestWithParam<Named> {
  protected:
    /// In every form and each layout.
    static void expectTheReference(const GrayImage& grey,
                                   const std::vector<Layout>& layouts = {Layout{}}) {
        const auto packed = expected(grey, GetParam().method);
        for (const simd::Form& form : simd::forms()) {
            const simd::ForcedForm forced(form);
            for (const Layout& layout : layouts) {
                // Not EXPECT_EQ: nobody reads a page of bytes.
                ASSERT_TRUE(halftoned(GetParam().kernel, grey, layout) == packed)
                    << form.name << ", " << grey.width << " x " << grey.height << ", offset "
                    << layout.offset << ", gap " << layout.gap;
            }
        }
    }

    static GrayImage imageOf(int width, int height, const std::function<int(int, int)>& tone) {
        GrayImage image{width, height, {}};
        for (int y = 0; y < height; ++y) {
            for (int x = 0; x < width; ++x) {
                image.px.push_back(static_cast<unsigned char>(tone(x, y)));
            }
        }
        return image;
    }
};

TEST_P(EveryKernel, HalftonesRandomImages) {
    forRandomImages(6, [](const GrayImage& grey, Random&) { expectTheReference(grey); });
}

TEST_P(EveryKernel, HalftonesUniformPagesOfEveryGrey) {
    for (int grey = 0; grey < 256; ++grey) {
        ASSERT_NO_FATAL_FAILURE(
            expectTheReference(imageOf(151, 37, [grey](int, int) { return grey; })));
    }
}

// Bands have 16 or 32 rows. A row of a band is up to 124 columns ahead of another, and 16 columns
// are loaded at a time: from 76 or 140 columns on, some of them lie all within the page.
TEST_P(EveryKernel, HalftonesSizesAroundTheEndsOfVectorsAndBands) {
    Random random(7);
    for (const int width :
         {1,  4,   8,   15,  16,  17,  31,  32,  33,  63,  64,  65,  75,  76,  77,  91, 92,
          93, 123, 124, 125, 127, 128, 129, 139, 140, 141, 155, 156, 157, 191, 192, 193}) {
        for (const int height : {1, 15, 16, 17, 18, 19, 31, 32, 33, 34, 35, 36, 63, 64, 65, 97}) {
            ASSERT_NO_FATAL_FAILURE(expectTheReference(
                imageOf(width, height, [&random](int, int) { return random.between(0, 255); })));
        }
    }
}

TEST_P(EveryKernel, ClampsWhereSumsLeaveTheRange) {
    Random random(8);
    const int levels[] = {0, 255, 127, 128, 129};
    for (const int count : {2, 3, 4, 5}) {
        ASSERT_NO_FATAL_FAILURE(expectTheReference(
            imageOf(301, 131, [&](int, int) { return levels[random.between(0, count - 1)]; })));
    }
    // Checkerboards and stripes of every phase.
    for (const int size : {1, 2, 3}) {
        for (const auto& two : {std::pair{0, 255}, {1, 254}, {127, 128}, {128, 129}}) {
            const int low = two.first;
            const int high = two.second;
            ASSERT_NO_FATAL_FAILURE(expectTheReference(imageOf(200, 70, [&](int x, int y) {
                return (x / size + y / size) % 2 == 0 ? low : high;
            })));
            ASSERT_NO_FATAL_FAILURE(expectTheReference(
                imageOf(200, 70, [&](int x, int) { return x / size % 2 == 0 ? low : high; })));
            ASSERT_NO_FATAL_FAILURE(expectTheReference(
                imageOf(200, 70, [&](int, int y) { return y / size % 2 == 0 ? low : high; })));
        }
    }
    // A row of every sequence of ten blacks and whites, one below the other.
    ASSERT_NO_FATAL_FAILURE(expectTheReference(
        imageOf(10, 1024, [](int x, int y) { return (y >> x & 1) != 0 ? 255 : 0; })));
    ASSERT_NO_FATAL_FAILURE(expectTheReference(
        imageOf(1024, 10, [](int x, int y) { return (x >> y & 1) != 0 ? 255 : 0; })));
}

TEST_P(EveryKernel, ReadsAndWritesNothingBesideTheRowsWhateverTheirPlace) {
    Random random(9);
    std::vector<Layout> layouts;
    for (std::size_t offset = 0; offset <= 32; ++offset) {
        layouts.push_back({offset, offset % 5});
    }
    for (const auto& [width, height] : {std::pair{1, 1}, {5, 40}, {16, 3}, {163, 35}, {300, 66}}) {
        ASSERT_NO_FATAL_FAILURE(expectTheReference(
            imageOf(width, height, [&random](int, int) { return random.between(0, 255); }),
            layouts));
    }
}

INSTANTIATE_TEST_SUITE_P(
    ErrorDiffusion, EveryKernel,
    testing::Values(Named{"FloydSteinberg", ErrorKernel::FloydSteinberg, 8},
                    Named{"Burkes", ErrorKernel::Burkes, 2},
                    Named{"Stucki", ErrorKernel::Stucki, 3},
                    Named{"JarvisJudiceNinke", ErrorKernel::JarvisJudiceNinke, 4},
                    Named{"Sierra", ErrorKernel::Sierra, 5},
                    Named{"StevensonArce", ErrorKernel::StevensonArce, 6}),
    [](const testing::TestParamInfo<Named>& kernel) { return std::string(kernel.param.name); });

}  // namespace
