// PNG pictures of every kind in grey: 0.299 R + 0.587 G + 0.114 B to the nearest level, what is
// transparent on white.

#include <gtest/gtest.h>
#include <png.h>
#include <zlib.h>

#include <string>
#include <vector>

#include "pictures/picture_formats.h"
#include "tests/preview/sheet/picture_files.h"

namespace {

using kelp_test::png_file;
using kelp_test::png_that_declares;
using kelp_test::PngFile;
using kelp_test::put_number;
using kelp_test::refusal_by;
using Levels = std::vector<int>;

Levels levels(const PngFile& png) {
    return kelp_test::levels(pictureOfPng, png_file(png));
}

std::string bytes(const std::vector<int>& values) {
    return {values.begin(), values.end()};
}

TEST(Png, GreyOfEveryDepth) {
    EXPECT_EQ(levels({5, 1, 1, PNG_COLOR_TYPE_GRAY, bytes({0b10110000})}),
              (Levels{255, 0, 255, 255, 0}));
    EXPECT_EQ(levels({4, 1, 2, PNG_COLOR_TYPE_GRAY, bytes({0b00011011})}),
              (Levels{0, 85, 170, 255}));  // thirds
    EXPECT_EQ(levels({3, 1, 4, PNG_COLOR_TYPE_GRAY, bytes({0x01, 0xF0})}),
              (Levels{0, 17, 255}));  // fifteenths
    EXPECT_EQ(levels({3, 2, 8, PNG_COLOR_TYPE_GRAY, bytes({0, 1, 77, 128, 254, 255})}),
              (Levels{0, 1, 77, 128, 254, 255}));
}

TEST(Png, GreyOf16BitsIsTheNearestOf8) {
    // Of 257 parts: 0x00FF is 0.99, 0x7FFF 127.498, 0x8000 127.502, 0x8080 128, 0xFF00 254.01.
    EXPECT_EQ(levels({6, 1, 16, PNG_COLOR_TYPE_GRAY,
                      bytes({0, 0xFF, 0x7F, 0xFF, 0x80, 0, 0x80, 0x80, 0xFF, 0, 0xFF, 0xFF})}),
              (Levels{1, 127, 128, 128, 254, 255}));
}

TEST(Png, ColoursAreTheirLuma) {
    // 76.245, 149.685, 29.07; 255 - 29.07; 0.299 * 10 + 0.587 * 20 + 0.114 * 30 = 18.15
    EXPECT_EQ(levels({5, 1, 8, PNG_COLOR_TYPE_RGB,
                      bytes({255, 0, 0, 0, 255, 0, 0, 0, 255, 255, 255, 0, 10, 20, 30})}),
              (Levels{76, 150, 29, 226, 18}));
    EXPECT_EQ(levels({2, 1, 16, PNG_COLOR_TYPE_RGB,
                      bytes({0xFF, 0xFF, 0, 0, 0, 0, 10, 10, 20, 20, 30, 30})}),
              (Levels{76, 18}));
}

TEST(Png, AlphaLiesOnWhite) {
    // 100 at 51 of 255: 100 / 5 + 255 * 4 / 5 = 224; 0 at 128: 255 * 127 / 255 = 127.
    EXPECT_EQ(levels({4, 1, 8, PNG_COLOR_TYPE_GRAY_ALPHA, bytes({100, 51, 0, 0, 0, 128, 7, 255})}),
              (Levels{224, 255, 127, 7}));
    // Red at 51: 76 / 5 + 204 = 219.2.
    EXPECT_EQ(
        levels({3, 1, 8, PNG_COLOR_TYPE_RGBA, bytes({255, 0, 0, 51, 0, 255, 0, 255, 9, 9, 9, 0})}),
        (Levels{219, 150, 255}));
    EXPECT_EQ(levels({2, 1, 16, PNG_COLOR_TYPE_GRAY_ALPHA,
                      bytes({100, 100, 51, 51, 128, 128, 255, 255})}),
              (Levels{224, 128}));
    EXPECT_EQ(levels({2, 1, 16, PNG_COLOR_TYPE_RGBA,
                      bytes({255, 255, 0, 0, 0, 0, 51, 51, 0, 0, 0, 0, 0, 0, 0, 0})}),
              (Levels{219, 255}));
}

TEST(Png, PalettesOfEveryDepthWithAndWithoutAlpha) {
    const std::vector<std::uint32_t> colours{0xFF0000, 0x00FF00, 0x0000FF, 0x0A141E};
    const auto png = [&](int depth, const Levels& rows, const std::string& alpha) {
        PngFile file{4, 1, depth, PNG_COLOR_TYPE_PALETTE, bytes(rows)};
        file.palette = {colours.begin(), colours.begin() + (depth == 1 ? 2 : 4)};
        file.palette_alpha = alpha;
        return levels(file);
    };
    EXPECT_EQ(png(1, {0b01100000}, ""), (Levels{76, 150, 150, 76}));
    EXPECT_EQ(png(2, {0b00011011}, ""), (Levels{76, 150, 29, 18}));
    EXPECT_EQ(png(4, {0x01, 0x23}, ""), (Levels{76, 150, 29, 18}));
    EXPECT_EQ(png(8, {3, 2, 1, 0}, ""), (Levels{18, 29, 150, 76}));
    EXPECT_EQ(png(8, {0, 1, 2, 3}, bytes({51, 0})), (Levels{219, 255, 29, 18}));
}

TEST(Png, ATransparentColourIsWhite) {
    PngFile grey{4, 1, 2, PNG_COLOR_TYPE_GRAY, bytes({0b00011011})};
    grey.transparent_colour = {1};
    EXPECT_EQ(levels(grey), (Levels{0, 255, 170, 255}));
    PngFile colours{2, 1, 8, PNG_COLOR_TYPE_RGB, bytes({255, 0, 0, 254, 0, 0})};
    colours.transparent_colour = {255, 0, 0};
    EXPECT_EQ(levels(colours), (Levels{255, 76}));  // 75.946
}

TEST(Png, InterlacedOnesAreTheSame) {
    std::string pixels;
    for (int i = 0; i < 11 * 13; ++i) {
        pixels += static_cast<char>(i * 37);
    }
    PngFile png{11, 13, 8, PNG_COLOR_TYPE_GRAY, pixels};
    const Levels straight = levels(png);
    EXPECT_EQ(straight[1], 37);
    EXPECT_EQ(straight[7], 3);  // 259
    png.interlaced = true;
    EXPECT_EQ(levels(png), straight);
}

TEST(Png, OverTheLimitIsRefusedAndOneAtItIsNot) {
    const std::string file = png_file({5, 4, 8, PNG_COLOR_TYPE_GRAY, std::string(20, 'x')});
    EXPECT_EQ(refusal_by(pictureOfPng, file, 20), "taken");
    EXPECT_EQ(refusal_by(pictureOfPng, file, 19),
              "a picture of 5 x 4 pixels is over the limit of 19");
    EXPECT_EQ(refusal_by(pictureOfPng, png_that_declares(1000000, 1000000), 2'000'000'000),
              "a picture of 1000000 x 1000000 pixels is over the limit of 2000000000");
}

TEST(Png, WithoutRoomForThePixelsInTheFileIsRefused) {
    EXPECT_EQ(refusal_by(pictureOfPng, png_that_declares(30000, 30000), 2'000'000'000),
              "a broken PNG: it ends early");
    // A page of one tone is packed as densely as can be.
    const std::string page = png_file({8000, 800, 1, PNG_COLOR_TYPE_GRAY, std::string(800000, 0)});
    EXPECT_EQ(refusal_by(pictureOfPng, page, 6'400'000), "taken") << page.size();
}

TEST(Png, OfMoreBytesThanTheLibraryCanCountIsRefusedAndNotCalledBroken) {
    // Its 2^30 pixels take 2^32 bytes. The rest of the file is as long as so many pixels need.
    const std::string file = png_that_declares(32768, 32768) + std::string(140'000, '\0');
    EXPECT_EQ(refusal_by(pictureOfPng, file, 2'000'000'000),
              "a PNG of over 1073741823 pixels cannot be read");
}

TEST(Png, WithoutWidthOrHeightIsRefused) {
    EXPECT_TRUE(refusal_by(pictureOfPng, png_that_declares(0, 4)).starts_with("a broken PNG: "));
    EXPECT_TRUE(refusal_by(pictureOfPng, png_that_declares(4, 0)).starts_with("a broken PNG: "));
}

// A PNG with a "pHYs" chunk behind its header: so many pixels per unit, 1 for a metre.
std::string png_with_resolution(std::uint32_t pixels, char unit) {
    std::string chunk(9 + 12, '\0');
    put_number(chunk, 0, 4, 9);
    chunk.replace(4, 4, "pHYs");
    put_number(chunk, 8, 4, pixels);
    put_number(chunk, 12, 4, pixels);
    chunk[16] = unit;
    put_number(chunk, 17, 4,
               static_cast<std::uint32_t>(
                   crc32(0, reinterpret_cast<const unsigned char*>(chunk.data()) + 4, 13)));
    return png_file({2, 1, 8, PNG_COLOR_TYPE_GRAY, "ab"}).insert(33, chunk);
}

unsigned resolution_of(const std::string& file) {
    return pictureOfPng(file, 100).dotsPerInch;
}

TEST(Png, TellsItsResolutionInDotsPerInch) {
    EXPECT_EQ(resolution_of(png_with_resolution(7992, 1)), 203U);  // 202.997
    EXPECT_EQ(resolution_of(png_with_resolution(2835, 1)), 72U);   // 72.009
    EXPECT_EQ(resolution_of(png_with_resolution(1, 1)), 0U);
}

TEST(Png, HasNoResolutionWhereItTellsNone) {
    EXPECT_EQ(resolution_of(png_file({2, 1, 8, PNG_COLOR_TYPE_GRAY, "ab"})), 0U);
    EXPECT_EQ(resolution_of(png_with_resolution(7992, 0)), 0U);
    EXPECT_EQ(resolution_of(png_with_resolution(0xFFFFFFFF, 1)), 0U);
}

}  // namespace
