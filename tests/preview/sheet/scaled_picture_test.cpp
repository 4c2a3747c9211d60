#include "pictures/scaled_picture.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <vector>

namespace {

using Pixels = std::vector<unsigned char>;

template <typename Level>
GreyPicture picture_of(std::uint32_t width, std::uint32_t height, Level level) {
    GreyPicture picture{width, height, {}};
    for (std::uint32_t y = 0; y < height; ++y) {
        for (std::uint32_t x = 0; x < width; ++x) {
            picture.pixels.push_back(static_cast<unsigned char>(level(x, y)));
        }
    }
    return picture;
}

GreyPicture checkerboard(std::uint32_t width, std::uint32_t height) {
    return picture_of(width, height, [](auto x, auto y) { return (x + y) % 2 * 255; });
}

TEST(Scaled, OfTheSameSizeIsTheSame) {
    const GreyPicture picture =
        picture_of(37, 23, [](auto x, auto y) { return (x * x + y * 71) % 256; });
    const GreyPicture same = scaled(picture, {37, 23});
    EXPECT_EQ(same.width, 37U);
    EXPECT_EQ(same.height, 23U);
    EXPECT_EQ(same.pixels, picture.pixels);
}

TEST(Scaled, FlatGreyStaysFlatToTheEdges) {
    for (const unsigned level : {0U, 1U, 100U, 254U, 255U}) {
        const GreyPicture flat = picture_of(50, 40, [=](auto, auto) { return level; });
        for (const PictureSize size :
             {PictureSize{25, 20}, PictureSize{7, 3}, PictureSize{1, 1}, PictureSize{49, 39},
              PictureSize{51, 41}, PictureSize{333, 401}, PictureSize{50, 13},
              PictureSize{3, 200}}) {
            const GreyPicture result = scaled(flat, size);
            EXPECT_EQ(result.width, size.width);
            EXPECT_EQ(result.height, size.height);
            EXPECT_EQ(result.pixels, Pixels(std::size_t{size.width} * size.height,
                                            static_cast<unsigned char>(level)))
                << size.width;
        }
    }
}

TEST(Scaled, HalfACheckerboardIsMidGrey) {
    // Of each 2 by 2 two are black: 127.5.
    for (const unsigned char pixel : scaled(checkerboard(40, 60), {20, 30}).pixels) {
        EXPECT_NEAR(pixel, 127, 2);
    }
    for (const unsigned char pixel : scaled(checkerboard(400, 400), {40, 40}).pixels) {
        EXPECT_NEAR(pixel, 127, 2);
    }
}

TEST(Scaled, EachPixelIsTheMeanOfThoseItStandsFor) {
    // Squares of 8 by 8 of one level: in their middle other squares have no part.
    const GreyPicture squares =
        picture_of(64, 32, [](auto x, auto y) { return x / 8 * 30 + y / 8 * 10; });
    const GreyPicture half = scaled(squares, {32, 16});
    for (std::uint32_t y = 0; y < 4; ++y) {
        for (std::uint32_t x = 0; x < 8; ++x) {
            EXPECT_EQ(half.pixels[(y * 4 + 1) * 32 + x * 4 + 1], x * 30 + y * 10);
            EXPECT_EQ(half.pixels[(y * 4 + 2) * 32 + x * 4 + 2], x * 30 + y * 10);
        }
    }
}

TEST(Scaled, LargerKeepsTheRangeAndTheOrder) {
    const GreyPicture ramp = picture_of(10, 2, [](auto x, auto) { return 20 + x * 20; });
    const GreyPicture large = scaled(ramp, {100, 20});
    const auto [least, most] = std::minmax_element(large.pixels.begin(), large.pixels.end());
    EXPECT_EQ(*least, 20);
    EXPECT_EQ(*most, 200);
    EXPECT_TRUE(std::is_sorted(large.pixels.begin(), large.pixels.begin() + 100));
    EXPECT_EQ(large.pixels.front(), 20);
    EXPECT_EQ(large.pixels.back(), 200);
    EXPECT_NEAR(large.pixels[1049], 110, 2);  // the middle
}

TEST(Scaled, SidesOver20000AreRefusedAndThoseAtItAreScaled) {
    const auto line = [](std::uint32_t width) {
        return picture_of(width, 1, [](auto, auto) { return 9; });
    };
    EXPECT_THROW(scaled(line(20001), {100, 1}), PictureError);
    EXPECT_THROW(scaled(line(1), {1, 20001}), PictureError);
    for (const std::uint32_t width : {1U, 7U, 100U, 812U, 19999U}) {
        EXPECT_EQ(scaled(line(20000), {width, 1}).pixels, Pixels(width, 9)) << width;
        EXPECT_EQ(scaled(line(width), {20000, 1}).pixels, Pixels(20000, 9)) << width;
    }
    EXPECT_EQ(scaled(line(20001), {20001, 1}).pixels, Pixels(20001, 9));  // nothing to scale
}

}  // namespace
