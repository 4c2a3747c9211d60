#include <gtest/gtest.h>

#include "enhance/tq_image.h"
#include "tests/unit/enhance/grey_image.h"

namespace {

using namespace kelp_test;

constexpr auto kUnknown = static_cast<TQ_IMG_COLOR>(7);

TEST(CvtGray, CopiesAGreyImageByteForByte) {
    const TQImage source = grey({{0, 1, 127}, {128, 254, 255}});
    const TQImage result = cvtGray(source);
    EXPECT_EQ(result.color, TQ_IMG_GRAY);
    EXPECT_EQ(result.channels, 1);
    EXPECT_NE(result.data, source.data);
    EXPECT_EQ(rowsOf(result), (Rows{{0, 1, 127}, {128, 254, 255}}));
}

TEST(CvtGray, WeighsTheFirstByteOfBlueFirstLayoutsLeast) {
    // 10 * 0.114 + 20 * 0.587 + 30 * 0.299 = 1.14 + 11.74 + 8.97 = 21.85.
    EXPECT_EQ(rowsOf(cvtGray(coloured(1, 1, TQ_IMG_BGR, {10, 20, 30}))), (Rows{{22}}));
    EXPECT_EQ(rowsOf(cvtGray(coloured(1, 1, TQ_IMG_BGRA, {10, 20, 30, 200}))), (Rows{{22}}));
    // 100 of one byte alone: 11.4, 58.7 and 29.9.
    const TQImage single = coloured(3, 1, TQ_IMG_BGR, {100, 0, 0, 0, 100, 0, 0, 0, 100});
    EXPECT_EQ(rowsOf(cvtGray(single)), (Rows{{11, 59, 30}}));
}

TEST(CvtGray, WeighsTheFirstByteOfRedFirstLayoutsWith299) {
    // 10 * 0.299 + 20 * 0.587 + 30 * 0.114 = 2.99 + 11.74 + 3.42 = 18.15.
    EXPECT_EQ(rowsOf(cvtGray(coloured(1, 1, TQ_IMG_RGB, {10, 20, 30}))), (Rows{{18}}));
    EXPECT_EQ(rowsOf(cvtGray(coloured(1, 1, TQ_IMG_RGBA, {10, 20, 30, 200}))), (Rows{{18}}));
    EXPECT_EQ(rowsOf(cvtGray(coloured(1, 1, kUnknown, {10, 20, 30, 200}))), (Rows{{18}}));
    const TQImage single = coloured(3, 1, TQ_IMG_RGB, {100, 0, 0, 0, 100, 0, 0, 0, 100});
    EXPECT_EQ(rowsOf(cvtGray(single)), (Rows{{30, 59, 11}}));
}

TEST(CvtGray, StepsOverThreeOrFourBytesAPixel) {
    const TQImage three =
        coloured(2, 2, TQ_IMG_BGR, {0, 0, 0, 255, 255, 255, 50, 50, 50, 100, 100, 100});
    EXPECT_EQ(rowsOf(cvtGray(three)), (Rows{{0, 255}, {50, 100}}));
    for (const TQ_IMG_COLOR color : {TQ_IMG_BGRA, TQ_IMG_RGBA, kUnknown}) {
        const TQImage four =
            coloured(2, 2, color, {0, 0, 0, 9, 255, 255, 255, 9, 50, 50, 50, 9, 100, 100, 100, 9});
        EXPECT_EQ(rowsOf(cvtGray(four)), (Rows{{0, 255}, {50, 100}}));
    }
}

TEST(CvtGray, StepsByTheChannelsAsStored) {
    TQImage image = coloured(3, 1, TQ_IMG_BGRA, {0, 0, 0, 0, 60, 60, 60, 60, 90, 90, 90, 90});
    image.channels = 3;
    // The pixels now start at bytes 0, 3 and 6: (0, 0, 0), (0, 60, 60), (60, 60, 90).
    // 0.587 * 60 + 0.299 * 60 = 53.16; 0.701 * 60 + 0.299 * 90 = 68.97.
    EXPECT_EQ(rowsOf(cvtGray(image)), (Rows{{0, 53, 69}}));
}

TEST(CvtGray, KeepsEveryNeutralLevel) {
    // The weights sum to 1, and 255 is not exceeded by rounding.
    for (const TQ_IMG_COLOR color : {TQ_IMG_BGR, TQ_IMG_RGB}) {
        for (int level = 0; level < 256; ++level) {
            EXPECT_EQ(rowsOf(cvtGray(coloured(1, 1, color, {level, level, level}))),
                      (Rows{{level}}));
        }
    }
}

TEST(CvtGray, RoundsAHalfUp) {
    // 0.114 * 250 is 28.5 in single precision, 0.299 * 250 is 74.75 and 0.587 * 250 is 146.75.
    const TQImage single = coloured(3, 1, TQ_IMG_BGR, {250, 0, 0, 0, 250, 0, 0, 0, 250});
    EXPECT_EQ(rowsOf(cvtGray(single)), (Rows{{29, 147, 75}}));
}

TEST(CvtGray, KeepsTheSizeAndLeavesTheSource) {
    const TQImage source = coloured(1, 3, TQ_IMG_BGR, {1, 2, 3, 4, 5, 6, 7, 8, 9});
    const TQImage result = cvtGray(source);
    EXPECT_EQ(result.width, 1);
    EXPECT_EQ(result.height, 3);
    EXPECT_EQ(bytesOf(source), (std::vector<int>{1, 2, 3, 4, 5, 6, 7, 8, 9}));
}

TEST(CvtGray, GivesAnImageWithoutPixelsForOne) {
    for (const TQ_IMG_COLOR color : {TQ_IMG_GRAY, TQ_IMG_BGR}) {
        const TQImage result = cvtGray(TQImage(0, 4, color));
        EXPECT_EQ(result.width, 0);
        EXPECT_EQ(result.height, 4);
        EXPECT_EQ(result.color, TQ_IMG_GRAY);
        EXPECT_EQ(result.channels, 1);
    }
}

}  // namespace
