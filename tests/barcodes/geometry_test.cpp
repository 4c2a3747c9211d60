// What must stand on the printed test labels to the dot.

#include <gtest/gtest.h>

#include <algorithm>
#include <ostream>

#include "tests/barcodes/test_label.h"

namespace kelp_test {

void PrintTo(const Model& model, std::ostream* out) {
    *out << model.name;
}

namespace {

// By the threshold; stencil models have none.
Label plain_print(const Model& model) {
    return print_test_label(model, model.is_stencil() ? "Tattoo" : "None");
}

class TestLabel : public testing::TestWithParam<Model> {};

TEST_P(TestLabel, FillsItsPage) {
    const Label label = plain_print(GetParam());
    EXPECT_EQ(label.width, GetParam().width);
    EXPECT_EQ(label.height, GetParam().height);
}

TEST_P(TestLabel, HasItsFrameOnTheOutermostDots) {
    const Label label = plain_print(GetParam());
    for (unsigned x = 0; x < label.width; ++x) {
        ASSERT_TRUE(label.dot(x, 0)) << "top, column " << x;
        ASSERT_TRUE(label.dot(x, label.height - 1)) << "bottom, column " << x;
    }
    for (unsigned y = 0; y < label.height; ++y) {
        ASSERT_TRUE(label.dot(0, y)) << "left, row " << y;
        ASSERT_TRUE(label.dot(label.width - 1, y)) << "right, row " << y;
    }
    // One dot wide: between ticks, here at 1.5 mm, 12 dots, paper follows.
    EXPECT_FALSE(label.dot(12, 1));
    EXPECT_FALSE(label.dot(12, label.height - 2));
    EXPECT_FALSE(label.dot(1, 12));
    EXPECT_FALSE(label.dot(label.width - 2, 12));
}

// Ticks are 1 dot wide; that of n mm lies n × 203 / 25.4 dots from the edge: 7.99, 39.96, 79.92
// and 159.84 dots for 1, 5, 10 and 20 mm.
TEST_P(TestLabel, HasItsRulerTicksAtWholeMillimetres) {
    const Label label = plain_print(GetParam());
    for (const unsigned at : {8U, 40U, 80U, 160U}) {
        EXPECT_TRUE(label.dot(at, 2)) << at;
        EXPECT_FALSE(label.dot(at - 1, 2)) << at;
        EXPECT_FALSE(label.dot(at + 1, 2)) << at;
        EXPECT_TRUE(label.dot(2, at)) << at;
        EXPECT_FALSE(label.dot(2, at - 1)) << at;
        EXPECT_FALSE(label.dot(2, at + 1)) << at;
        EXPECT_TRUE(label.dot(at, label.height - 3)) << at;
        EXPECT_TRUE(label.dot(label.width - 3, at)) << at;
    }
    const std::vector<unsigned> lengths = place_on(GetParam(), "ticks");
    const auto length_of_tick = [&](unsigned column) {
        unsigned rows = 0;
        while (label.dot(column, rows)) {
            ++rows;
        }
        return rows;  // the frame is the first of them
    };
    EXPECT_EQ(length_of_tick(8), lengths.at(0));
    EXPECT_EQ(length_of_tick(40), lengths.at(1));
    EXPECT_EQ(length_of_tick(80), lengths.at(2));
}

// Two square rings of these lines, 4 dots apart, in a square of 32 dots.
bool on_ring(unsigned x, unsigned y, unsigned line) {
    const unsigned from_edge = std::min(std::min(x, 31 - x), std::min(y, 31 - y));
    return from_edge < line || (from_edge >= line + 4 && from_edge < 2 * line + 4);
}

TEST_P(TestLabel, HasWholeLinesOfOneToFourDots) {
    const Label label = plain_print(GetParam());
    const std::vector<unsigned> place = place_on(GetParam(), "finelinesplace");
    // A stencil's chain passes on error of white beside black, to open up solid black; at the
    // corners of fine white lines that adds up to single white dots in the black around them.
    const unsigned strays_allowed = GetParam().is_stencil() ? 3 : 0;
    for (unsigned line = 1; line <= 4; ++line) {
        const unsigned positive = place.at(0) + 36 * (line - 1);
        const unsigned negative = place.at(0) + 144 + 44 * (line - 1) + 4;
        unsigned strays = 0;
        for (unsigned y = 0; y < 32; ++y) {
            for (unsigned x = 0; x < 32; ++x) {
                ASSERT_EQ(label.dot(positive + x, place.at(1) + 4 + y), on_ring(x, y, line))
                    << "black line of " << line << " dots, at " << x << ", " << y;
                const bool printed = label.dot(negative + x, place.at(1) + 4 + y);
                if (on_ring(x, y, line)) {
                    ASSERT_FALSE(printed)
                        << "white line of " << line << " dots, at " << x << ", " << y;
                } else if (!printed) {
                    ++strays;
                }
            }
        }
        EXPECT_LE(strays, strays_allowed) << "beside white lines of " << line << " dots";
    }
}

INSTANTIATE_TEST_SUITE_P(EveryModel, TestLabel, testing::ValuesIn(models()),
                         [](const testing::TestParamInfo<Model>& test) {
                             std::string name = test.param.name;
                             std::replace(name.begin(), name.end(), '-', '_');
                             return name;
                         });

}  // namespace
}  // namespace kelp_test
