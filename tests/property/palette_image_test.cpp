// Palette images held to the reference: halftones, tones, geometry, padding bytes included.

#include "tests/property/random_images.h"
#include "tests/reference/dither.h"
#include "tests/reference/strided.h"

namespace {

using kelp_test::forRandomImages;
using kelp_test::Random;
using reference::GrayImage;

class EveryMethod : public testing::TestWithParam<long> {};

TEST_P(EveryMethod, HalftonesAsTheReferenceDoes) {
    forRandomImages(1, [](const GrayImage& grey, Random&) {
        CxImage image;
        kelp_test::load(image, grey);
        const reference::StridedImage before = kelp_test::bytesOf(image);
        ASSERT_TRUE(image.Dither(GetParam()));
        ASSERT_EQ(image.GetBpp(), 1U);
        ASSERT_EQ(kelp_test::indicesOf(image).px, reference::dither(grey, GetParam()).px);
        ASSERT_TRUE(image.IncreaseBpp(8));
        const auto expected = reference::ditherToIndices(before, GetParam()).px;
        ASSERT_EQ(kelp_test::bytesOf(image).px, expected);
        kelp_test::load(image, grey);
        ASSERT_TRUE(image.DitherAt8Bits(GetParam()));
        ASSERT_EQ(kelp_test::bytesOf(image).px, expected);
    });
}

INSTANTIATE_TEST_SUITE_P(Dither, EveryMethod,
                         testing::Values(0, 1, 2, 3, 4, 5, 6, 7, 8, 9, -1, 1000000L),
                         [](const testing::TestParamInfo<long>& method) {
                             return method.param < 0 ? "minus" + std::to_string(-method.param)
                                                     : std::to_string(method.param);
                         });

TEST(ToneOperations, MatchTheReferenceForEveryBrightnessAndContrast) {
    GrayImage ramp{256, 1, {}};
    for (int i = 0; i < 256; ++i) {
        ramp.px.push_back(static_cast<unsigned char>(i));
    }
    // What a job can ask for: brightness in fives to 500, contrast in twos to 200; and beyond.
    for (int brightness = -520; brightness <= 520; brightness += 5) {
        for (int contrast = -210; contrast <= 210; contrast += 7) {
            CxImage image;
            kelp_test::load(image, ramp);
            ASSERT_TRUE(image.Light(brightness, contrast));
            const auto table = reference::lightTable(brightness, contrast);
            for (int i = 0; i < 256; ++i) {
                ASSERT_EQ(image.GetPixelIndex(i, 0), table[static_cast<std::size_t>(i)])
                    << "brightness " << brightness << " contrast " << contrast << " grey " << i;
            }
        }
    }
}

TEST(ToneOperations, MatchTheReferenceOnRandomImages) {
    forRandomImages(3, [](const GrayImage& grey, Random& random) {
        CxImage image;
        kelp_test::load(image, grey);
        reference::StridedImage expected = kelp_test::bytesOf(image);
        const int brightness = random.between(-100, 100) * 5;
        const int contrast = random.between(-100, 100) * 2;
        image.Light(brightness, contrast);
        image.Negative();
        expected = reference::negative(reference::light(expected, brightness, contrast));
        ASSERT_EQ(kelp_test::bytesOf(image).px, expected.px);
    });
}

TEST(GeometricOperations, MatchTheReferenceOnRandomImages) {
    forRandomImages(4, [](const GrayImage& grey, Random&) {
        CxImage turned;
        kelp_test::load(turned, grey);
        const reference::StridedImage page = kelp_test::bytesOf(turned);
        CxImage mirrored;
        kelp_test::load(mirrored, grey);
        ASSERT_TRUE(turned.Rotate180());
        mirrored.Mirror();
        ASSERT_EQ(kelp_test::bytesOf(turned).px, reference::rotate180(page).px);
        ASSERT_EQ(kelp_test::bytesOf(mirrored).px, reference::mirror(page).px);
    });
}

TEST(LoadingRows, KeepsWhatTheReferenceKeepsBehindTheWidth) {
    forRandomImages(5, [](const GrayImage& rows, Random& random) {
        // The image's width is the rows' length; the page is narrower.
        const int width = random.between(1, rows.width);
        CxImage image;
        ASSERT_TRUE(image.CreateFromArray(rows.px.data(), static_cast<std::uint32_t>(width),
                                          static_cast<std::uint32_t>(rows.height), 8,
                                          static_cast<std::uint32_t>(rows.width), false));
        const auto expected =
            reference::loadStrided(rows.px.data(), width, rows.height, rows.width);
        ASSERT_TRUE(expected.has_value());
        ASSERT_EQ(kelp_test::bytesOf(image).px, expected->px);
    });
}

}  // namespace
