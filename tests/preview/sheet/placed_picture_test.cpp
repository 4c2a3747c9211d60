#include "pictures/placed_picture.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <vector>

namespace {

using Pixels = std::vector<unsigned char>;

// Every row is the same.
GreyPicture striped(const Pixels& row, std::uint32_t height, std::uint32_t dots_per_inch = 0) {
    GreyPicture picture{static_cast<std::uint32_t>(row.size()), height, {}, dots_per_inch};
    for (std::uint32_t y = 0; y < height; ++y) {
        picture.pixels.insert(picture.pixels.end(), row.begin(), row.end());
    }
    return picture;
}

GreyPicture flat(std::uint32_t width, std::uint32_t height, std::uint32_t dots_per_inch = 0) {
    return striped(Pixels(width, 7), height, dots_per_inch);
}

TEST(Turned, GoesCounterclockwise) {
    const GreyPicture picture{3, 2, {1, 2, 3, 4, 5, 6}, 203};
    EXPECT_EQ(turned(picture, 0).pixels, picture.pixels);
    const GreyPicture once = turned(picture, 1);
    EXPECT_EQ(once.width, 2U);
    EXPECT_EQ(once.height, 3U);
    EXPECT_EQ(once.dotsPerInch, 203U);
    EXPECT_EQ(once.pixels, (Pixels{3, 6, 2, 5, 1, 4}));
    EXPECT_EQ(turned(picture, 2).width, 3U);
    EXPECT_EQ(turned(picture, 2).pixels, (Pixels{6, 5, 4, 3, 2, 1}));
    EXPECT_EQ(turned(picture, 3).width, 2U);
    EXPECT_EQ(turned(picture, 3).pixels, (Pixels{4, 1, 5, 2, 6, 3}));
}

struct Expected {
    GreyPicture picture;
    PictureScaling scaling;
    PictureSize size;  // on a page of 90 x 60 dots at 203 dots per inch
};

TEST(Placed, IsAsLargeAsItsScalingHasIt) {
    for (const Expected& expected : std::vector<Expected>{
             {flat(30, 10), PictureScaling::Fit, {90, 30}},
             {flat(10, 30), PictureScaling::Fit, {20, 60}},
             {flat(300, 100), PictureScaling::Fit, {90, 30}},
             {flat(30, 10), PictureScaling::Fill, {90, 60}},
             {flat(10, 30), PictureScaling::Fill, {90, 60}},
             {flat(1000, 10), PictureScaling::Fill, {90, 60}},
             {flat(7, 3), PictureScaling::Fill, {90, 60}},  // 4.5 pixels of 20 dots
             {flat(14, 30), PictureScaling::Fill, {90, 60}},
             {flat(20000, 1), PictureScaling::Fill, {90, 60}},
             {flat(30, 10), PictureScaling::Own, {30, 10}},
             {flat(30, 10, 203), PictureScaling::Own, {30, 10}},
             {flat(30, 10, 406), PictureScaling::Own, {15, 5}},
             {flat(200, 10, 203), PictureScaling::Own, {90, 10}},
             {flat(400, 400, 406), PictureScaling::Own, {90, 60}},
             // Never less than a dot.
             {flat(1, 1, 20000), PictureScaling::Own, {1, 1}},
             {flat(1, 1300), PictureScaling::Fit, {1, 60}},
             {flat(1300, 1), PictureScaling::Fit, {90, 1}},
             {flat(20000, 1), PictureScaling::Fit, {90, 1}},
             {flat(1, 20000), PictureScaling::Fill, {90, 60}},
             {flat(1, 1), PictureScaling::Fill, {90, 60}},
         }) {
        const GreyPicture dots = placed(expected.picture, {90, 60}, 203, expected.scaling);
        EXPECT_EQ(dots.width, expected.size.width) << expected.picture.width;
        EXPECT_EQ(dots.height, expected.size.height) << expected.picture.width;
        EXPECT_EQ(dots.pixels, Pixels(std::size_t{dots.width} * dots.height, 7));
    }
}

TEST(Placed, InThePagesResolutionIsDotForDot) {
    const GreyPicture picture = striped({1, 200, 3, 100, 5}, 2, 203);
    EXPECT_EQ(placed(picture, {90, 60}, 203, PictureScaling::Own).pixels, picture.pixels);
}

TEST(Placed, IsCutOffEvenly) {
    EXPECT_EQ(placed(striped({1, 2, 3, 4, 5, 6}, 1), {4, 60}, 203, PictureScaling::Own).pixels,
              (Pixels{2, 3, 4, 5}));
    const GreyPicture upright{1, 6, {1, 2, 3, 4, 5, 6}};
    EXPECT_EQ(placed(upright, {90, 4}, 203, PictureScaling::Own).pixels, (Pixels{2, 3, 4, 5}));
    // Filled, a pixel is 6 dots high and wide: of 30 pixels the middle 15 are seen.
    Pixels row(30, 0);
    std::fill_n(row.begin() + 7, 15, static_cast<unsigned char>(100));
    EXPECT_EQ(placed(striped(row, 10), {90, 60}, 203, PictureScaling::Fill).pixels,
              Pixels(90 * 60, 100));
}

TEST(Placed, LosesNoThinLine) {
    // A line in black on white, an eighth of a dot wide.
    Pixels row(720, 255);
    row[400] = 0;
    const GreyPicture dots = placed(striped(row, 480), {90, 60}, 203, PictureScaling::Fit);
    ASSERT_EQ(dots.width, 90U);
    unsigned missing = 0;
    for (std::size_t x = 0; x < 90; ++x) {
        missing += 255U - dots.pixels[30 * 90 + x];
    }
    EXPECT_NEAR(missing, 255 / 8, 4);
}

TEST(FitsInOwnSize, WhereItTellsItsResolutionAndIsNotLarger) {
    const PictureSize page{90, 60};
    EXPECT_TRUE(fitsInOwnSize(flat(90, 60, 203), page, 203));
    EXPECT_FALSE(fitsInOwnSize(flat(91, 60, 203), page, 203));
    EXPECT_FALSE(fitsInOwnSize(flat(90, 61, 203), page, 203));
    EXPECT_TRUE(fitsInOwnSize(flat(180, 120, 406), page, 203));
    EXPECT_FALSE(fitsInOwnSize(flat(10, 10), page, 203));
}

TEST(Placed, WhatCannotBeScaledIsRefused) {
    EXPECT_THROW(placed(flat(20001, 1), {90, 60}, 203, PictureScaling::Fit), PictureError);
}

}  // namespace
