#include "tests/tools/zpl_graphics.h"

#include <gtest/gtest.h>

#include <stdexcept>

namespace kelp_test {
namespace {

// The rows of the only label, '#' for ink.
std::vector<std::string> rows_of(std::string_view stream) {
    const std::vector<Label> labels = read_labels(stream);
    EXPECT_EQ(labels.size(), 1U);
    std::vector<std::string> rows;
    for (unsigned y = 0; y < labels.at(0).height; ++y) {
        rows.emplace_back();
        for (unsigned x = 0; x < labels[0].width; ++x) {
            rows.back() += labels[0].dot(x, y) ? '#' : '.';
        }
    }
    return rows;
}

std::string error_of(std::string_view stream) {
    try {
        read_labels(stream);
    } catch (const std::runtime_error& error) {
        return error.what();
    }
    return "none";
}

using Rows = std::vector<std::string>;

TEST(ZplGraphics, HexDigitsStandForFourDotsEachTheHighBitLeft) {
    EXPECT_EQ(rows_of("~DGR:A.GRF,2,1,\n1AE8^XZ"), (Rows{"...##.#.", "###.#..."}));
}

TEST(ZplGraphics, LettersRepeatTheDigitAfterThem) {
    // H is 2, J is 4.
    EXPECT_EQ(rows_of("~DGR:A.GRF,2,2,\nJ1"), (Rows{"...#...#...#...#"}));
    EXPECT_EQ(rows_of("~DGR:A.GRF,2,2,\nHFH0"), (Rows{"########........"}));
    // gK is 20 + 5, z is 400: together 425, and one digit more for 213 bytes.
    EXPECT_EQ(rows_of("~DGR:A.GRF,213,213,\nzgKF0"),
              (Rows{std::string(425 * 4, '#') + std::string(4, '.')}));
}

TEST(ZplGraphics, FillsAndRepeatsEndARow) {
    EXPECT_EQ(rows_of("~DGR:A.GRF,8,2,\n8,8!:,"), (Rows{"#...............", "#...############",
                                                        "#...############", "................"}));
}

TEST(ZplGraphics, TheLabelWidthCutsTheLastByte) {
    EXPECT_EQ(rows_of("^PW12\r\n^LL1\r\n~DGR:A.GRF,2,2,\nFFF0"), (Rows{"############"}));
    // truncated by the setup block: 11.99… dots
    EXPECT_EQ(rows_of("^PW11\r\n^LL1\r\n~DGR:A.GRF,2,2,\nFFF0"), (Rows{"############"}));
}

TEST(ZplGraphics, EveryGraphicOfTheStreamIsALabel) {
    EXPECT_EQ(read_labels("^XX~DGR:A.GRF,1,1,\nF0^XZ^XX~DGR:A.GRF,2,1,\n,,^XZ").size(), 2U);
    EXPECT_TRUE(read_labels("^XX^XZ").empty());
}

TEST(ZplGraphics, WhatNoPrinterCouldPrintIsAnErrorThatSaysWhy) {
    const auto expect_error = [](std::string_view stream, const std::string& why) {
        EXPECT_NE(error_of(stream).find(why), std::string::npos) << stream << error_of(stream);
    };
    expect_error("~DGR:A.GRF,2,1,\nF0", "ends too early");
    expect_error("~DGR:A.GRF", "',' is missing");
    expect_error("~DGR:A.GRF,x,1,\n", "no number");
    expect_error("~DGR:A.GRF,99999999999,1,\n", "no number");
    expect_error("~DGR:A.GRF,3,2,\n", "no whole rows");
    expect_error("~DGR:A.GRF,3,0,\n", "no whole rows");
    expect_error("~DGR:A.GRF,1,1,\n:", "no ':'");
    expect_error("~DGR:A.GRF,1,1,\na", "no 'a'");
    expect_error("~DGR:A.GRF,1,1,\nH,", "no ','");
    expect_error("~DGR:A.GRF,1,1,\nIF", "beyond its row");
    expect_error("~DGR:A.GRF,1,1,\nFFF^XZ", "more data");
    expect_error("^PW20\r\n~DGR:A.GRF,2,2,\n,", "do not fit");
}

TEST(ZplGraphics, ThePictureIsBlackWhereInkIs) {
    const Label label{.width = 2, .height = 1, .dots = {true, false}};
    EXPECT_EQ(pgm(label), std::string("P5\n2 1\n255\n\x00\xFF", 13));
    EXPECT_EQ(pgm(label, 2), std::string("P5\n4 2\n255\n\x00\x00\xFF\xFF\x00\x00\xFF\xFF", 19));
    EXPECT_EQ(pgm(label, 1, 1), std::string("P5\n4 3\n255\n\xFF\xFF\xFF\xFF"
                                            "\xFF\x00\xFF\xFF\xFF\xFF\xFF\xFF",
                                            23));
}

}  // namespace
}  // namespace kelp_test
