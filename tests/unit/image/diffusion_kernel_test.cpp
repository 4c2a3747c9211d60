#include <gtest/gtest.h>

#include <cstdlib>
#include <map>
#include <utility>
#include <vector>

#include "image/cx_image.h"
#include "simd/forms.h"
#include "tests/unit/image/image_pixels.h"

// What each kernel gives to each neighbour, one neighbour at a time.
//
// One pixel has an error, all others are such that none of them passes an error on: white for a
// positive error (it is clamped away at 255) and black for a negative one (clamped away at 0). One
// other pixel is the probe. Its value is chosen so that it turns out white exactly when the term
// it gets is at least the expected one.

namespace {

using namespace kelp_test;

constexpr int kWidth = 9;
constexpr int kHeight = 6;

struct Kernel {
    long method;
    int divisor;
    std::map<std::pair<int, int>, int> weights;  ///< (dx, dy) to weight
};

const std::vector<Kernel>& kernels() {
    static const std::vector<Kernel> all = {
        {8, 16, {{{1, 0}, 7}, {{-1, 1}, 3}, {{0, 1}, 5}, {{1, 1}, 1}}},
        {2,
         32,
         {{{1, 0}, 8},
          {{2, 0}, 4},
          {{-2, 1}, 2},
          {{-1, 1}, 4},
          {{0, 1}, 8},
          {{1, 1}, 4},
          {{2, 1}, 2}}},
        {3,
         42,
         {{{1, 0}, 8},
          {{2, 0}, 4},
          {{-2, 1}, 2},
          {{-1, 1}, 4},
          {{0, 1}, 8},
          {{1, 1}, 4},
          {{2, 1}, 2},
          {{-2, 2}, 1},
          {{-1, 2}, 2},
          {{0, 2}, 4},
          {{1, 2}, 2},
          {{2, 2}, 1}}},
        {4,
         48,
         {{{1, 0}, 7},
          {{2, 0}, 5},
          {{-2, 1}, 3},
          {{-1, 1}, 5},
          {{0, 1}, 7},
          {{1, 1}, 5},
          {{2, 1}, 3},
          {{-2, 2}, 1},
          {{-1, 2}, 3},
          {{0, 2}, 5},
          {{1, 2}, 3},
          {{2, 2}, 1}}},
        {5,
         32,
         {{{1, 0}, 5},
          {{2, 0}, 3},
          {{-2, 1}, 2},
          {{-1, 1}, 4},
          {{0, 1}, 5},
          {{1, 1}, 4},
          {{2, 1}, 2},
          {{-1, 2}, 2},
          {{0, 2}, 3},
          {{1, 2}, 2}}},
        {6,
         200,
         {{{2, 0}, 32},
          {{-3, 1}, 12},
          {{-1, 1}, 26},
          {{1, 1}, 30},
          {{3, 1}, 16},
          {{-2, 2}, 12},
          {{0, 2}, 26},
          {{2, 2}, 12},
          {{-3, 3}, 5},
          {{-1, 3}, 12},
          {{1, 3}, 12},
          {{3, 3}, 5}}}};
    return all;
}

/// Whether the probe comes out white when the pixel at (x, y) holds `level`.
bool probeIsWhite(long method, int level, std::pair<int, int> at, std::pair<int, int> probe,
                  int probeLevel) {
    CxImage image;
    const int rest = level <= 128 ? 255 : 0;
    Rows rows(kHeight, std::vector<int>(kWidth, rest));
    rows[static_cast<std::size_t>(at.second)][static_cast<std::size_t>(at.first)] = level;
    rows[static_cast<std::size_t>(probe.second)][static_cast<std::size_t>(probe.first)] =
        probeLevel;
    makeImage(image, 8, rows);
    EXPECT_TRUE(image.Dither(method));
    return image.GetPixelIndex(probe.first, probe.second) == 1;
}

void expectTerm(long method, int level, std::pair<int, int> at, std::pair<int, int> probe,
                int term) {
    const auto where = [&] {
        return ::testing::Message()
               << "method " << method << ", level " << level << " at (" << at.first << ", "
               << at.second << "), probe at (" << probe.first << ", " << probe.second << ")";
    };
    EXPECT_TRUE(probeIsWhite(method, level, at, probe, 129 - term)) << where();
    EXPECT_FALSE(probeIsWhite(method, level, at, probe, 128 - term)) << where();
}

/// Pixels after (x, y) in scan order get their kernel's share, and all others nothing.
void expectKernel(const Kernel& kernel, int level, std::pair<int, int> at) {
    const int error = level <= 128 ? level : level - 255;
    for (int y = at.second; y < kHeight; ++y) {
        for (int x = y == at.second ? at.first + 1 : 0; x < kWidth; ++x) {
            const auto found = kernel.weights.find({x - at.first, y - at.second});
            const int weight = found == kernel.weights.end() ? 0 : found->second;
            expectTerm(kernel.method, level, at, {x, y}, error * weight / kernel.divisor);
        }
    }
}

/// Calls check(kernel) for every kernel in every form.
template <typename Check>
void forKernels(Check check) {
    for (const simd::Form& form : simd::forms()) {
        const simd::ForcedForm forced(form);
        SCOPED_TRACE(form.name);
        for (const Kernel& kernel : kernels()) {
            check(kernel);
        }
    }
}

TEST(DiffusionKernel, GivesEveryNeighbourItsShareFromTheMiddle) {
    forKernels([](const Kernel& kernel) {
        for (const int level : {128, 129, 1, 254}) {
            expectKernel(kernel, level, {4, 1});
        }
    });
}

TEST(DiffusionKernel, LosesTheErrorThatFallsPastAnEdge) {
    forKernels([](const Kernel& kernel) {
        for (const std::pair<int, int>& at :
             {std::pair{0, 0}, std::pair{1, 0}, std::pair{2, 2}, std::pair{kWidth - 1, 0},
              std::pair{kWidth - 2, 1}, std::pair{kWidth - 3, 3}, std::pair{0, kHeight - 1},
              std::pair{kWidth - 1, kHeight - 2}, std::pair{4, kHeight - 2}}) {
            expectKernel(kernel, 128, at);
            expectKernel(kernel, 129, at);
        }
    });
}

TEST(DiffusionKernel, DividesEveryErrorTruncatingTowardZero) {
    forKernels([](const Kernel& kernel) {
        for (int level = 0; level < 256; ++level) {
            const int error = level <= 128 ? level : level - 255;
            for (const auto& [offset, weight] : kernel.weights) {
                const std::pair<int, int> probe = {4 + offset.first, 1 + offset.second};
                expectTerm(kernel.method, level, {4, 1}, probe, error * weight / kernel.divisor);
            }
        }
    });
}

}  // namespace
