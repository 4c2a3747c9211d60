// Pictures that were cut off or damaged.

#include <gtest/gtest.h>
#include <png.h>

#include <map>
#include <random>
#include <string>
#include <vector>

#include "pictures/picture_formats.h"
#include "tests/preview/sheet/picture_files.h"
#include "tests/preview/sheet/sheet_program.h"

namespace {

using kelp_test::jpeg_file;
using kelp_test::JpegFile;
using kelp_test::png_file;
using kelp_test::PngFile;
using kelp_test::Reader;

struct Whole {
    std::string name;
    Reader reader;
    std::string file;
};

std::string wave(std::size_t count) {
    std::string bytes;
    for (std::size_t i = 0; i < count; ++i) {
        bytes += static_cast<char>(i * i / 7 + i * 3);
    }
    return bytes;
}

std::vector<Whole> whole_files() {
    PngFile palette{17, 13, 4, PNG_COLOR_TYPE_PALETTE, wave(9 * 13), true};
    for (std::uint32_t i = 0; i < 16; ++i) {
        palette.palette.push_back(i * 0x100F07);
    }
    palette.palette_alpha = wave(9);
    return {{"GreyPng", pictureOfPng, png_file({20, 15, 8, PNG_COLOR_TYPE_GRAY, wave(300)})},
            {"PalettePng", pictureOfPng, png_file(palette)},
            {"DeepPng", pictureOfPng, png_file({9, 9, 16, PNG_COLOR_TYPE_RGBA, wave(9 * 9 * 8)})},
            {"GreyJpeg", pictureOfJpeg, jpeg_file({20, 20, 1, wave(400)})},
            {"ColourJpeg", pictureOfJpeg, jpeg_file({19, 21, 3, wave(19 * 21 * 3)})},
            {"ProgressiveJpeg", pictureOfJpeg, jpeg_file({19, 21, 3, wave(19 * 21 * 3), true})},
            {"InkJpeg", pictureOfJpeg, jpeg_file({12, 12, 4, wave(12 * 12 * 4)})},
            {"BinaryPgm", pictureOfPgm, kelp_test::pgm({20, 15, wave(300)})},
            {"DeepPgm", pictureOfPgm, "P5 #x\n12 10 65535\n" + wave(240)},
            {"PlainPgm", pictureOfPgm, "P2 # plain\n4 3\n300\n0 1 2 3 100 150 299 300 9 8 7 6"}};
}

class Damaged : public testing::TestWithParam<Whole> {};

TEST_P(Damaged, CutOffAnywhereGivesAnErrorOrTheWholePicture) {
    const auto& [name, reader, file] = GetParam();
    const std::vector<unsigned char> pixels = reader(file, 10'000).pixels;
    std::size_t taken = 0;
    for (std::size_t length = 0; length < file.size(); ++length) {
        try {
            // On the heap, so that reading beyond it is found.
            const std::string cut(file, 0, length);
            EXPECT_EQ(reader(cut, 10'000).pixels, pixels) << length;
            ++taken;
        } catch (const PictureError& error) {
            EXPECT_STRNE(error.what(), "");
        }
    }
    EXPECT_LE(taken, 24U);  // without what follows the pixels: checks, the end's mark
}

TEST_P(Damaged, BytesGiveAnErrorOrAPictureOfTheLimitAtMost) {
    constexpr std::uint64_t limit = 10'000;
    const auto& [name, reader, file] = GetParam();
    std::mt19937 random(71);
    int taken = 0;
    int refused = 0;
    for (int round = 0; round < 3000; ++round) {
        std::string damaged = file;
        for (unsigned count = 1 + random() % 4; count > 0; --count) {
            // The head more often than the rest.
            const std::size_t place = random() % (random() % 2 == 0 ? 40 : damaged.size());
            damaged[place % damaged.size()] = static_cast<char>(random());
        }
        try {
            const GreyPicture picture = reader(damaged, limit);
            EXPECT_EQ(picture.pixels.size(), std::size_t{picture.width} * picture.height);
            EXPECT_LE(picture.pixels.size(), limit);
            ++taken;
        } catch (const PictureError& error) {
            EXPECT_STRNE(error.what(), "");
            ++refused;
        }
    }
    EXPECT_GT(taken, 0);
    EXPECT_GT(refused, 0);
}

INSTANTIATE_TEST_SUITE_P(Pictures, Damaged, testing::ValuesIn(whole_files()),
                         [](const testing::TestParamInfo<Whole>& of) { return of.param.name; });

}  // namespace
