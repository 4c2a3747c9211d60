#include <gtest/gtest.h>

#include <algorithm>
#include <utility>
#include <vector>

#include "image/cx_image.h"
#include "tests/unit/image/image_pixels.h"

namespace {

using namespace kelp_test;

using Points = std::vector<std::pair<int, int>>;

/// Points (x, y) of index 7 in an image that was all 0.
Points drawn(int size, int startX, int endX, int startY, int endY) {
    CxImage image;
    const auto side = static_cast<std::size_t>(size);
    makeImage(image, 8, Rows(side, std::vector<int>(side, 0)));
    image.DrawLine(startX, endX, startY, endY, 7);
    Points points;
    const Rows rows = indicesOf(image);
    for (int y = 0; y < size; ++y) {
        for (int x = 0; x < size; ++x) {
            const int index = rows[static_cast<std::size_t>(y)][static_cast<std::size_t>(x)];
            EXPECT_TRUE(index == 0 || index == 7);
            if (index == 7) {
                points.emplace_back(x, y);
            }
        }
    }
    std::sort(points.begin(), points.end());
    return points;
}

TEST(CxImageDrawLine, TakesBothXValuesFirstThenBothYValues) {
    EXPECT_EQ(drawn(5, 0, 3, 0, 1), (Points{{0, 0}, {1, 0}, {2, 1}, {3, 1}}));
}

TEST(CxImageDrawLine, SetsTheSinglePointOfALineWithoutLength) {
    EXPECT_EQ(drawn(3, 0, 0, 0, 0), (Points{{0, 0}}));
    EXPECT_EQ(drawn(3, 2, 2, 1, 1), (Points{{2, 1}}));
}

TEST(CxImageDrawLine, DrawsRowsAndColumnsInBothDirections) {
    const Points row = {{1, 2}, {2, 2}, {3, 2}};
    EXPECT_EQ(drawn(5, 1, 3, 2, 2), row);
    EXPECT_EQ(drawn(5, 3, 1, 2, 2), row);
    const Points column = {{2, 1}, {2, 2}, {2, 3}};
    EXPECT_EQ(drawn(5, 2, 2, 1, 3), column);
    EXPECT_EQ(drawn(5, 2, 2, 3, 1), column);
}

TEST(CxImageDrawLine, DrawsTheFourDiagonals) {
    for (const int sx : {-1, 1}) {
        for (const int sy : {-1, 1}) {
            Points expected = {
                {3, 3}, {3 + sx, 3 + sy}, {3 + 2 * sx, 3 + 2 * sy}, {3 + 3 * sx, 3 + 3 * sy}};
            std::sort(expected.begin(), expected.end());
            EXPECT_EQ(drawn(7, 3, 3 + 3 * sx, 3, 3 + 3 * sy), expected);
        }
    }
}

TEST(CxImageDrawLine, StepsAlikeInAllEightOctants) {
    // dx 5, dy 2, den 5, num starts at 2 and takes 2 a step: 4 | 6 -> 1, over | 3 | 5 -> 0, over |
    // 2 | 4. So the minor axis moves with the steps to the third and the fifth point.
    const Points steps = {{0, 0}, {1, 0}, {2, 1}, {3, 1}, {4, 2}, {5, 2}};
    for (const int sx : {-1, 1}) {
        for (const int sy : {-1, 1}) {
            Points flat;
            Points steep;
            for (const auto& [major, minor] : steps) {
                flat.emplace_back(6 + sx * major, 6 + sy * minor);
                steep.emplace_back(6 + sx * minor, 6 + sy * major);
            }
            std::sort(flat.begin(), flat.end());
            std::sort(steep.begin(), steep.end());
            EXPECT_EQ(drawn(13, 6, 6 + 5 * sx, 6, 6 + 2 * sy), flat);
            EXPECT_EQ(drawn(13, 6, 6 + 2 * sx, 6, 6 + 5 * sy), steep);
        }
    }
}

TEST(CxImageDrawLine, StartsWithHalfTheLengthRoundedDown) {
    // dx 4, dy 1: num 2, 3, 4 -> 0, over: the step to the third point rises.
    EXPECT_EQ(drawn(6, 0, 4, 0, 1), (Points{{0, 0}, {1, 0}, {2, 1}, {3, 1}, {4, 1}}));
    // dx 5, dy 1: num 2, 3, 4, 5 -> 0, over: the step to the fourth.
    EXPECT_EQ(drawn(6, 0, 5, 0, 1), (Points{{0, 0}, {1, 0}, {2, 0}, {3, 1}, {4, 1}, {5, 1}}));
}

TEST(CxImageDrawLine, DependsOnTheDirectionItIsDrawnIn) {
    // Backwards from (3, 1): num 1, 2, 3 -> 0, over with the step to the third point.
    EXPECT_EQ(drawn(5, 3, 0, 1, 0), (Points{{0, 0}, {1, 0}, {2, 1}, {3, 1}}));
    // dx 4, dy 1 backwards: (4, 1), (3, 1), then over at x = 2.
    EXPECT_EQ(drawn(6, 4, 0, 1, 0), (Points{{0, 0}, {1, 0}, {2, 0}, {3, 1}, {4, 1}}));
}

TEST(CxImageDrawLine, LeavesOutThePointsOutsideTheImage) {
    EXPECT_EQ(drawn(3, -2, 4, 1, 1), (Points{{0, 1}, {1, 1}, {2, 1}}));
    EXPECT_EQ(drawn(3, -1, 3, -1, 3), (Points{{0, 0}, {1, 1}, {2, 2}}));
    EXPECT_EQ(drawn(3, 1, 1, -5, 9), (Points{{1, 0}, {1, 1}, {1, 2}}));
    EXPECT_EQ(drawn(3, 5, 9, 5, 9), Points{});
    EXPECT_EQ(drawn(3, -9, -5, 1, 1), Points{});
}

TEST(CxImageDrawLine, KeepsTheShapeOfALineThatEntersTheImage) {
    // dx 6, dy 2: num 3, 5, 7 -> 1 over, 3, 5, 7 -> 1 over: (-3, 0), (-2, 0), (-1, 1), (0, 1),
    // (1, 1), (2, 2), (3, 2).
    EXPECT_EQ(drawn(3, -3, 3, 0, 2), (Points{{0, 1}, {1, 1}, {2, 2}}));
}

TEST(CxImageDrawLine, StoresTheIndexAsTheDepthHoldsIt) {
    CxImage image;
    makeImage(image, 1, {{0, 0, 0}, {1, 1, 1}});
    image.DrawLine(0, 2, 0, 0, 3);
    image.DrawLine(1, 2, 1, 1, 2);
    EXPECT_EQ(indicesOf(image), (Rows{{1, 1, 1}, {1, 0, 0}}));
    makeImage(image, 4, {{0, 0, 0}});
    image.DrawLine(2, 1, 0, 0, 0x2B);
    EXPECT_EQ(indicesOf(image), (Rows{{0, 11, 11}}));
}

TEST(CxImageDrawLine, ChangesNothingInTrueColourOrAnEmptyImage) {
    CxImage image;
    makeTrueColour(image, 2, 1, 1);
    image.DrawLine(0, 1, 0, 0, 9);
    EXPECT_EQ(pixelBytes(image), (std::vector<int>{1, 2, 3, 4, 5, 6, 0, 0}));
    CxImage empty;
    empty.DrawLine(0, 10, 0, 10, 9);
    EXPECT_FALSE(empty.IsValid());
}

}  // namespace
