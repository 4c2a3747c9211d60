// JPEG pictures. Squares of 8 by 8 of one level come through unchanged at the best quality.

#include <gtest/gtest.h>

#include <cstdlib>
#include <string>
#include <vector>

#include "pictures/picture_formats.h"
#include "tests/preview/sheet/picture_files.h"

namespace {

using kelp_test::jpeg_file;
using kelp_test::JpegFile;
using kelp_test::put_number;
using kelp_test::refusal_by;
using Samples = std::vector<int>;

// Squares of these samples side by side.
JpegFile squares(const std::vector<Samples>& colours) {
    JpegFile jpeg;
    jpeg.width = static_cast<unsigned>(8 * colours.size());
    jpeg.height = 8;
    jpeg.channels = static_cast<int>(colours[0].size());
    for (int y = 0; y < 8; ++y) {
        for (const Samples& colour : colours) {
            for (int x = 0; x < 8; ++x) {
                jpeg.rows.append(colour.begin(), colour.end());
            }
        }
    }
    return jpeg;
}

// The level of each square, which must be flat.
std::vector<int> levels(const JpegFile& jpeg) {
    const std::vector<int> all = kelp_test::levels(pictureOfJpeg, jpeg_file(jpeg));
    EXPECT_EQ(all.size(), std::size_t{jpeg.width} * 8);
    std::vector<int> result;
    for (std::size_t x = 0; x + 7 < jpeg.width && !all.empty(); x += 8) {
        result.push_back(all[x]);
        for (std::size_t i = 0; i < 64; ++i) {
            EXPECT_EQ(all[x + i % 8 + i / 8 * jpeg.width], all[x]);
        }
    }
    return result;
}

TEST(Jpeg, GreyIsTakenAsItIs) {
    JpegFile jpeg = squares({{0}, {1}, {100}, {128}, {254}, {255}});
    const std::vector<int> expected{0, 1, 100, 128, 254, 255};
    EXPECT_EQ(levels(jpeg), expected);
    jpeg.progressive = true;
    EXPECT_EQ(levels(jpeg), expected);
}

TEST(Jpeg, ColoursAreTheirLuma) {
    JpegFile jpeg = squares({{200, 200, 200},
                             {200, 200, 200},
                             {255, 0, 0},
                             {255, 0, 0},
                             {0, 255, 0},
                             {0, 255, 0},
                             {0, 0, 255},
                             {0, 0, 255}});
    for (const bool progressive : {false, true}) {
        jpeg.progressive = progressive;
        const std::vector<int> result = kelp_test::levels(pictureOfJpeg, jpeg_file(jpeg));
        ASSERT_EQ(result.size(), 64U * 8U);
        // The file's own colours are rounded: a level to each side. In the middle of 16 pixels, as
        // colours are stored at half the resolution.
        EXPECT_NEAR(result[7], 200, 1);
        EXPECT_NEAR(result[16 + 7], 76, 1);   // 0.299 * 255
        EXPECT_NEAR(result[32 + 7], 150, 1);  // 0.587 * 255
        EXPECT_NEAR(result[48 + 7], 29, 1);   // 0.114 * 255
    }
}

// Cyan, magenta, yellow, key in parts of 255 of ink.
const std::vector<Samples> inks = {{0, 0, 0, 0},        {0, 0, 0, 255}, {255, 0, 0, 0},
                                   {0, 255, 0, 0},      {0, 0, 255, 0}, {0, 0, 0, 55},
                                   {155, 155, 155, 155}};
// Paper, black; without red 255 - 76.245, without green 255 - 149.685, without blue 255 - 29.07;
// 255 - 55; 100 * 100 / 255 = 39.2.
const std::vector<int> levels_of_inks = {255, 0, 179, 105, 226, 200, 39};

std::vector<Samples> inverted(std::vector<Samples> samples) {
    for (Samples& colour : samples) {
        for (int& sample : colour) {
            sample = 255 - sample;
        }
    }
    return samples;
}

TEST(Jpeg, InksAreSubtracted) {
    JpegFile jpeg = squares(inks);
    jpeg.adobe_marker = false;
    EXPECT_EQ(levels(jpeg), levels_of_inks);
}

TEST(Jpeg, InksOfFilesWithTheMarkerAreInverted) {
    JpegFile jpeg = squares(inverted(inks));
    EXPECT_EQ(levels(jpeg), levels_of_inks);
    jpeg.progressive = true;
    EXPECT_EQ(levels(jpeg), levels_of_inks);
}

TEST(Jpeg, InksStoredAsLumaAndColoursAreSubtracted) {
    JpegFile jpeg = squares(inverted({inks[0], inks[0], inks[1], inks[1], inks[5], inks[5]}));
    jpeg.luma_of_inks = true;
    EXPECT_EQ(levels(jpeg), (std::vector<int>{255, 255, 0, 0, 200, 200}));
}

TEST(Jpeg, SizesThatEndWithinASquareAreWhole) {
    JpegFile jpeg{5, 3, 1, std::string(15, '\x64')};
    EXPECT_EQ(kelp_test::levels(pictureOfJpeg, jpeg_file(jpeg)), std::vector<int>(15, 100));
}

TEST(Jpeg, OverTheLimitIsRefusedAndOneAtItIsNot) {
    const std::string file = jpeg_file(squares({{7}, {8}}));
    EXPECT_EQ(refusal_by(pictureOfJpeg, file, 128), "taken");
    EXPECT_EQ(refusal_by(pictureOfJpeg, file, 127),
              "a picture of 16 x 8 pixels is over the limit of 127");
}

TEST(Jpeg, WithoutItsEndIsBroken) {
    const std::string file = jpeg_file(squares({{7}, {8}, {250}, {9}}));
    EXPECT_TRUE(
        refusal_by(pictureOfJpeg, file.substr(0, file.size() - 4)).starts_with("a broken JPEG: "));
}

// The JFIF marker comes first: its unit at byte 13, the pixels across behind it.
unsigned resolution_of(char unit, unsigned pixels) {
    std::string file = jpeg_file({.width = 2, .height = 1, .rows = "ab"});
    file[13] = unit;
    put_number(file, 14, 2, pixels);
    return pictureOfJpeg(file, 100).dotsPerInch;
}

TEST(Jpeg, TellsItsResolutionInDotsPerInch) {
    EXPECT_EQ(resolution_of(1, 203), 203U);
    EXPECT_EQ(resolution_of(2, 80), 203U);  // 203.2
    EXPECT_EQ(resolution_of(0, 203), 0U);
}

}  // namespace
