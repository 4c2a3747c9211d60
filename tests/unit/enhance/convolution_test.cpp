#include <gtest/gtest.h>

#include <stdexcept>
#include <vector>

#include "enhance/gaussian.h"
#include "tests/unit/enhance/grey_image.h"

namespace {

using namespace kelp_test;

const Rows kRows = {{10, 20, 30, 40}, {50, 60, 70, 80}, {90, 100, 110, 120}};

Rows convolved(const Rows& rows, const std::vector<double>& kernel, bool horizontal) {
    return rowsOf(
        convolve1D(grey(rows), kernel.data(), static_cast<int>(kernel.size()), horizontal));
}

TEST(Convolve1D, GivesAnImageWithoutPixelsForOne) {
    const double kernel[] = {0, 1, 0};
    for (const bool horizontal : {true, false}) {
        const TQImage result = convolve1D(TQImage(0, 4, TQ_IMG_GRAY), kernel, 3, horizontal);
        EXPECT_EQ(result.width, 0);
        EXPECT_EQ(result.height, 4);
    }
}

TEST(Convolve1D, ReadsTheNeighbourOfATapsOffset) {
    EXPECT_EQ(convolved(kRows, {0, 0, 1}, true),
              (Rows{{20, 30, 40, 40}, {60, 70, 80, 80}, {100, 110, 120, 120}}));
    EXPECT_EQ(convolved(kRows, {1, 0, 0}, true),
              (Rows{{10, 10, 20, 30}, {50, 50, 60, 70}, {90, 90, 100, 110}}));
    EXPECT_EQ(convolved(kRows, {0, 0, 1}, false),
              (Rows{{50, 60, 70, 80}, {90, 100, 110, 120}, {90, 100, 110, 120}}));
    EXPECT_EQ(convolved(kRows, {1, 0, 0}, false),
              (Rows{{10, 20, 30, 40}, {10, 20, 30, 40}, {50, 60, 70, 80}}));
}

TEST(Convolve1D, RepeatsTheEdgePixelAsFarAsTheKernelReaches) {
    // Two and three beyond the edge is still the edge.
    EXPECT_EQ(convolved(kRows, {0, 0, 0, 0, 0, 0, 1}, true),
              (Rows{{40, 40, 40, 40}, {80, 80, 80, 80}, {120, 120, 120, 120}}));
    EXPECT_EQ(convolved(kRows, {1, 0, 0, 0, 0, 0, 0}, false), Rows(3, kRows[0]));
    EXPECT_EQ(convolved({{7}}, {0.25, 0.5, 0.25}, true), (Rows{{7}}));
}

TEST(Convolve1D, ReturnsAOnePixelWideImageItself) {
    std::vector<double> kernel(11);
    generateGaussianKernel1D(11, 3.0, kernel.data());
    EXPECT_EQ(convolved({{0}, {1}, {128}, {254}, {255}}, kernel, true),
              (Rows{{0}, {1}, {128}, {254}, {255}}));
    EXPECT_EQ(convolved({{0, 1, 128, 254, 255}}, kernel, false), (Rows{{0, 1, 128, 254, 255}}));
}

TEST(Convolve1D, SumsAllTapsOfItsDirectionOnly) {
    // 0.25 * 10 + 0.5 * 20 + 0.25 * 30 = 20, at the left edge 0.75 * 10 + 0.25 * 20 = 12.5.
    EXPECT_EQ(convolved({{10, 20, 30}}, {0.25, 0.5, 0.25}, true), (Rows{{13, 20, 28}}));
    EXPECT_EQ(convolved({{10}, {20}, {30}}, {0.25, 0.5, 0.25}, false), (Rows{{13}, {20}, {28}}));
    EXPECT_EQ(convolved({{10, 20, 30}}, {0.25, 0.5, 0.25}, false), (Rows{{10, 20, 30}}));
}

TEST(Convolve1D, RoundsHalvesAwayFromZero) {
    EXPECT_EQ(convolved({{5, 4, 1}}, {0.5}, true), (Rows{{3, 2, 1}}));
    // -2.5 goes to -3, whose low eight bits are 253.
    EXPECT_EQ(convolved({{5}}, {-0.5}, true), (Rows{{253}}));
}

TEST(Convolve1D, RoundsTheSumToSinglePrecisionFirst) {
    // 0.49999999999 as a single is 0.5.
    EXPECT_EQ(convolved({{1}}, {0.49999999999}, true), (Rows{{1}}));
    EXPECT_EQ(convolved({{1}}, {0.4999}, true), (Rows{{0}}));
}

TEST(Convolve1D, KeepsTheLowEightBitsWithoutAClamp) {
    EXPECT_EQ(convolved({{200}}, {2.0}, true), (Rows{{400 - 256}}));
    EXPECT_EQ(convolved({{3}}, {-1.0}, true), (Rows{{253}}));
}

TEST(Convolve1D, SaturatesASumBeyondAnInt) {
    // 2^31 - 1 ends in 255, -2^31 in 0.
    EXPECT_EQ(convolved({{1}}, {1e30}, true), (Rows{{255}}));
    EXPECT_EQ(convolved({{1}}, {-1e30}, true), (Rows{{0}}));
}

TEST(Convolve1D, AddsTheTapsFromTheFirstToTheLast) {
    // 1e17 swallows the 4 that is added before it is taken away again, but not the 4 after.
    EXPECT_EQ(convolved({{1}}, {4.0, 1e17, -1e17}, true), (Rows{{0}}));
    EXPECT_EQ(convolved({{1}}, {1e17, -1e17, 4.0}, true), (Rows{{4}}));
    EXPECT_EQ(convolved({{1}}, {4.0, 1e17, -1e17}, false), (Rows{{0}}));
    EXPECT_EQ(convolved({{1}}, {1e17, -1e17, 4.0}, false), (Rows{{4}}));
}

TEST(Convolve1D, LeavesTheSourceAndKeepsItsFields) {
    const TQImage source = grey(kRows);
    const double kernel[3] = {0, 0, 1};
    const TQImage result = convolve1D(source, kernel, 3, true);
    EXPECT_EQ(rowsOf(source), kRows);
    EXPECT_EQ(result.width, 4);
    EXPECT_EQ(result.height, 3);
    EXPECT_EQ(result.channels, 1);
    EXPECT_EQ(result.color, TQ_IMG_GRAY);
}

TEST(Convolve1D, RefusesEvenAndNonPositiveSizes) {
    const TQImage source = grey(kRows);
    const std::vector<double> kernel(8, 0.125);
    for (const int size : {0, 2, 4, 8, -1, -3}) {
        EXPECT_THROW(convolve1D(source, kernel.data(), size, true), std::invalid_argument) << size;
        EXPECT_THROW(convolve1D(source, kernel.data(), size, false), std::invalid_argument);
    }
}

}  // namespace
