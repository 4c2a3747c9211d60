#include "fitter/row_converter.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "fitter/fit_error.h"
#include "tests/fitter/rasters.h"

namespace kelp_test {
namespace {

constexpr Polarity black_space = Polarity::kBlackSpace;
constexpr Polarity white_space = Polarity::kWhiteSpace;

std::string inverted(std::string samples) {
    for (char& sample : samples) {
        sample = static_cast<char>(~sample);
    }
    return samples;
}

// The samples, and that not one byte behind them is written.
std::string converted(const Kind& kind, Polarity polarity, const std::string& row,
                      std::size_t dots) {
    const RowConverter convert = rowConverter(page_of(kind, 1, 1, "").header, polarity);
    std::string samples(dots + 16, '~');
    convert(reinterpret_cast<const unsigned char*>(row.data()), dots,
            reinterpret_cast<unsigned char*>(samples.data()));
    EXPECT_EQ(samples.substr(dots), std::string(16, '~')) << kind.name;
    return samples.substr(0, dots);
}

TEST(RowConverter, ABytesValueIsKeptOrTurned) {
    std::string all;
    std::string turned;
    for (int value = 0; value < 256; ++value) {
        all.push_back(static_cast<char>(value));
        turned.push_back(static_cast<char>(255 - value));
    }
    EXPECT_EQ(converted(k8, black_space, all, 256), all);
    EXPECT_EQ(converted(k8, white_space, all, 256), turned);
    for (const Kind& kind : {w8, sw8}) {
        EXPECT_EQ(converted(kind, white_space, all, 256), all);
        EXPECT_EQ(converted(kind, black_space, all, 256), turned);
    }
}

TEST(RowConverter, EveryBitOfEveryByteIsADot) {
    for (int byte = 0; byte < 256; ++byte) {
        const std::string row(1, static_cast<char>(byte));
        std::string set;
        for (int mask = 128; mask > 0; mask /= 2) {
            set.push_back((byte & mask) != 0 ? '\xFF' : '\0');
        }
        EXPECT_EQ(converted(k1, black_space, row, 8), set) << byte;
        EXPECT_EQ(converted(k1, white_space, row, 8), inverted(set)) << byte;
        for (const Kind& kind : {w1, sw1}) {
            EXPECT_EQ(converted(kind, white_space, row, 8), set) << byte;
            EXPECT_EQ(converted(kind, black_space, row, 8), inverted(set)) << byte;
        }
    }
}

// 11010010 01111000 10000001, cut behind every dot: the other bits of the last byte are padding.
TEST(RowConverter, ARowOfBitsMayEndAnywhere) {
    const std::string row = "\xD2\x78\x81";
    const std::string dots = "110100100111100010000001";
    for (std::size_t count = 0; count <= dots.size(); ++count) {
        std::string expected;
        for (std::size_t x = 0; x < count; ++x) {
            expected.push_back(dots[x] == '1' ? '\xFF' : '\0');
        }
        EXPECT_EQ(converted(k1, black_space, row, count), expected) << count;
        EXPECT_EQ(converted(w1, black_space, row, count), inverted(expected)) << count;
    }
}

struct Luma {
    int red, green, blue, grey;
};

TEST(RowConverter, ColorsBecomeTheirLuma) {
    for (const Luma& color : {
             Luma{0, 0, 0, 0},        Luma{255, 255, 255, 255}, Luma{255, 0, 0, 76},  // 76.245
             Luma{0, 255, 0, 150},                                                    // 149.685
             Luma{0, 0, 255, 29},                                                     // 29.07
             Luma{1, 0, 0, 0},                                                        // 0.299
             Luma{0, 1, 0, 1},                                                        // 0.587
             Luma{0, 0, 4, 0},                                                        // 0.456
             Luma{0, 0, 5, 1},                                                        // 0.570
             Luma{10, 20, 30, 18},     // 2.99 + 11.74 + 3.42 = 18.15
             Luma{200, 100, 50, 124},  // 59.8 + 58.7 + 5.7 = 124.2
             Luma{0, 10, 15, 8},       // 5.87 + 1.71 = 7.58
             Luma{100, 100, 0, 89},    // 88.6
             Luma{0, 80, 10, 48},      // 46.96 + 1.14 = 48.1
             Luma{1, 2, 9, 2},         // 0.299 + 1.174 + 1.026 = 2.499
             Luma{0, 0, 250, 29},      // 28.5 exactly, half goes up
             Luma{50, 50, 50, 50},    Luma{128, 128, 128, 128}, Luma{254, 254, 254, 254},
         }) {
        std::string row{static_cast<char>(color.red), static_cast<char>(color.green),
                        static_cast<char>(color.blue)};
        const std::string grey(1, static_cast<char>(color.grey));
        const int expected_thousandths = 299 * color.red + 587 * color.green + 114 * color.blue;
        for (const Kind& kind : {rgb, srgb}) {
            EXPECT_EQ(converted(kind, white_space, row, 1), grey) << expected_thousandths;
            EXPECT_EQ(converted(kind, black_space, row, 1), inverted(grey)) << expected_thousandths;
        }
    }
}

TEST(RowConverter, TakesThreeBytesForADotOfColor) {
    const std::string row("\xFF\x00\x00\x00\xFF\x00\x00\x00\xFF\xFF\xFF\xFF\x01", 13);
    EXPECT_EQ(converted(rgb, white_space, row, 4), "\x4C\x96\x1D\xFF");
    EXPECT_EQ(converted(rgb, white_space, row, 2), "\x4C\x96");
    EXPECT_EQ(converted(srgb, black_space, row, 0), "");
}

TEST(RowConverter, WhiteIsWhite) {
    EXPECT_EQ(whiteSample(black_space), 0);
    EXPECT_EQ(whiteSample(white_space), 255);
}

// Of planes and bands a pixel has the bits of one color.
TEST(RowConverter, RefusesSeveralPlanesOfGrey) {
    for (const cups_order_t order : {CUPS_ORDER_BANDED, CUPS_ORDER_PLANAR}) {
        cups_page_header2_t header{};
        header.cupsColorSpace = CUPS_CSPACE_K;
        header.cupsColorOrder = order;
        header.cupsBitsPerColor = header.cupsBitsPerPixel = 8;
        header.cupsNumColors = 3;
        EXPECT_THROW(rowConverter(header, black_space), FitError);
        header.cupsNumColors = 1;
        EXPECT_NO_THROW(rowConverter(header, black_space));
    }
}

TEST(RowConverter, RefusesOtherSpacesDepthsAndOrders) {
    for (unsigned space = 0; space < 64; ++space) {
        for (const unsigned bits : {1U, 2U, 4U, 8U, 16U}) {
            for (const unsigned colors : {1U, 3U, 4U}) {
                for (unsigned order = 0; order < 3; ++order) {
                    const bool grey = space == 0 || space == 3 || space == 18;
                    const bool color = space == 1 || space == 19;
                    const bool good = (grey && colors == 1 && (bits == 1 || bits == 8)) ||
                                      (color && colors == 3 && bits == 8 && order == 0);
                    cups_page_header2_t header{};
                    header.cupsColorSpace = static_cast<cups_cspace_t>(space);
                    header.cupsColorOrder = static_cast<cups_order_t>(order);
                    header.cupsBitsPerColor = bits;
                    header.cupsBitsPerPixel = bits * colors;
                    header.cupsNumColors = colors;
                    if (good) {
                        EXPECT_NO_THROW(rowConverter(header, black_space)) << space;
                    } else {
                        EXPECT_THROW(rowConverter(header, black_space), FitError) << space;
                    }
                }
            }
        }
    }
}

}  // namespace
}  // namespace kelp_test
