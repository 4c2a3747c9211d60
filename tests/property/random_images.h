#ifndef KELP_TESTS_PROPERTY_RANDOM_IMAGES_H
#define KELP_TESTS_PROPERTY_RANDOM_IMAGES_H

#include <cstdint>

#include "enhance/tq_image.h"
#include "image/cx_image.h"
#include "tests/reference/images.h"
#include "tests/support/grey_pages.h"

namespace kelp_test {

/// A grey image of one of several kinds: noise, slow tones, two levels, nearly one tone, extremes,
/// strokes. Rows packed.
reference::GrayImage randomImage(int width, int height, Random& random);

/// Calls check(image, random) for an image of every size from 1 x 1 to 70 x 70, then for some
/// larger ones, stopping at the first failure. The failure text names size and seed.
template <typename Check>
void forRandomImages(std::uint64_t seed, Check check);

TQImage toTq(const reference::GrayImage& image);
reference::GrayImage fromTq(const TQImage& image);

/// A palette image of 8 bits with the grey palette, rows padded.
void load(CxImage& target, const reference::GrayImage& image);
/// The indices of a palette image of any depth but 24.
reference::GrayImage indicesOf(const CxImage& image);
/// All bytes of an 8-bit palette image, padding included.
reference::StridedImage bytesOf(const CxImage& image);

}  // namespace kelp_test

#include <gtest/gtest.h>

#include <string>

template <typename Check>
void kelp_test::forRandomImages(std::uint64_t seed, Check check) {
    const auto one = [&](int width, int height, std::uint64_t imageSeed) {
        SCOPED_TRACE(std::to_string(width) + " x " + std::to_string(height) + ", seed " +
                     std::to_string(imageSeed));
        Random random(imageSeed);
        check(randomImage(width, height, random), random);
    };
    constexpr int kLargest = 70;
    for (int width = 1; width <= kLargest; ++width) {
        for (int height = 1; height <= kLargest; ++height) {
            one(width, height, seed * 1000003 + static_cast<std::uint64_t>(width * 100 + height));
            if (testing::Test::HasFailure()) {
                return;  // one image is enough to look at
            }
        }
    }
    for (const auto& [width, height] : {std::pair{812, 300}, {1, 700}, {700, 1}, {333, 222}}) {
        one(width, height, seed + static_cast<std::uint64_t>(width));
    }
}

#endif
