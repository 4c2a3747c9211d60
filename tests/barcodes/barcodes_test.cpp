// Barcodes on the printed test labels are read by a barcode reader.

#include <gtest/gtest.h>

#include <algorithm>
#include <ostream>

#include "tests/barcodes/test_label.h"

namespace kelp_test {
namespace {

struct Print {
    Model model;
    std::string halftone;
};

void PrintTo(const Print& print, std::ostream* out) {
    *out << print.model.name << " " << print.halftone;
}

// A label's halftones keep black and white: they are the ends of the range, with no error of their
// own and beyond each threshold, and the codes stand above the greys, whose error flows downwards.
// A stencil's chain does pass on some error of white beside black, but at the straight edges of a
// code it stays below the threshold.
std::vector<Print> all_prints() {
    std::vector<Print> prints;
    for (const Model& model : models()) {
        if (model.is_stencil()) {
            prints.push_back({model, "Tattoo"});
            prints.push_back({model, "Tattoo_X8"});
            continue;
        }
        for (const char* halftone : {"None", "FloydSteinberg", "Ordered", "Burkes", "Stucki",
                                     "JarvisJudiceNinke", "Sierra", "StevensonArce"}) {
            prints.push_back({model, halftone});
        }
    }
    return prints;
}

class Barcodes : public testing::TestWithParam<Print> {};

TEST_P(Barcodes, AreReadable) {
    const Print& print = GetParam();
    const Label label = print_test_label(print.model, print.halftone);
    const std::vector<std::string> expected = {"CODE-128:" + print.model.code128,
                                               "QR-Code:" + print.model.qr};
    EXPECT_EQ(barcodes_on(label), expected);
}

// Readers forgive bars that are somewhat off; this does not.
TEST_P(Barcodes, HaveBarsOfWholeModules) {
    const Print& print = GetParam();
    const Label label = print_test_label(print.model, print.halftone);
    const std::vector<unsigned> place = place_on(print.model, "barcodeplace");
    const unsigned left = place.at(0);
    const unsigned top = place.at(1);
    const unsigned module = place.at(2);
    const unsigned height = place.at(3);
    // start, text and checksum have 11 modules each, stop has 13
    const unsigned modules = 11 * (static_cast<unsigned>(print.model.code128.size()) + 2) + 13;

    for (unsigned y = top; y < top + height; ++y) {
        for (unsigned i = 0; i < modules; ++i) {
            for (unsigned x = 1; x < module; ++x) {
                ASSERT_EQ(label.dot(left + i * module + x, y), label.dot(left + i * module, y))
                    << "row " << y << ", module " << i;
            }
            ASSERT_EQ(label.dot(left + i * module, y), label.dot(left + i * module, top));
        }
        // Start B opens with 211214: two modules of bar, one of space; stop ends with a bar of two.
        // Beside them, ten modules of paper.
        for (unsigned i = 0; i < 10 * module; ++i) {
            ASSERT_FALSE(label.dot(left - 1 - i, y)) << "row " << y;
            ASSERT_FALSE(label.dot(left + modules * module + i, y)) << "row " << y;
        }
        ASSERT_TRUE(label.dot(left, y) && label.dot(left + module, y));
        ASSERT_FALSE(label.dot(left + 2 * module, y));
        ASSERT_FALSE(label.dot(left + (modules - 3) * module, y));
        ASSERT_TRUE(label.dot(left + (modules - 2) * module, y));
        ASSERT_TRUE(label.dot(left + (modules - 1) * module, y));
    }
}

INSTANTIATE_TEST_SUITE_P(EveryHalftone, Barcodes, testing::ValuesIn(all_prints()),
                         [](const testing::TestParamInfo<Print>& test) {
                             std::string name = test.param.model.name + "_" + test.param.halftone;
                             std::replace(name.begin(), name.end(), '-', '_');
                             return name;
                         });

}  // namespace
}  // namespace kelp_test
