// Options on the command line, each seen in what the printer gets.

#include "tests/spooler/spooler_test.h"
#include "tests/support/files.h"

namespace kelp_test {
namespace {

// Width and length come from the raster: 812 dots of 25.4/203 mm are 101.6 mm, and 1218 are 152.4.
// Back in dots, single precision leaves a little less than a whole number, which is cut off.
const std::string default_setup =
    "SIZE 101.6 mm, 152.4 mm\r\n^XX\r\n^PW811\r\n^LL1217\r\n^MNY\r\n^PON\r\n^XZ\r\n\r\n";

struct Option {
    std::string text;
    std::string setup;  // the whole set-up block
};

std::string setup_of(const std::string& sensing, const std::string& direction,
                     const std::string& rest) {
    return "SIZE 101.6 mm, 152.4 mm\r\n^XX\r\n^PW811\r\n^LL1217\r\n" + sensing + direction + rest +
           "^XZ\r\n\r\n";
}

class OptionsTest : public SpoolerTest {
  protected:
    std::string picture(const Sheet& sheet) const {
        return document("a.pdf", Format::pdf, sheet, asymmetric_picture(sheet));
    }
    PrintedLabel first_label(const std::string& queue, const std::string& options,
                             const std::string& path) {
        const Printed printed = print(queue, {"-o", options, path});
        return printed.labels().at(0);
    }
};

unsigned dots_of(const PrintedLabel& label) {
    unsigned dots = 0;
    for (unsigned y = 0; y < label.rows.size(); ++y) {
        dots += label.dots_in_row(y);
    }
    return dots;
}

TEST_F(OptionsTest, EachOptionReachesThePrinter) {
    const std::string path = document("a.pdf", Format::pdf, label_sheet, numbered_pages(1));
    const std::vector<Option> options{
        {"Darkness=20", setup_of("^MNY\r\n", "^PON\r\n", "~SD20\r\n")},
        {"Darkness=0", setup_of("^MNY\r\n", "^PON\r\n", "~SD0\r\n")},
        {"Darkness=-1", default_setup},
        {"PrintSpeed=4", setup_of("^MNY\r\n", "^PON\r\n", "^PR4\r\n")},
        {"PrintSpeed=4 Darkness=30", setup_of("^MNY\r\n", "^PON\r\n", "^PR4\r\n~SD30\r\n")},
        {"MediaMethod=Direct", setup_of("^MNY\r\n", "^PON\r\n", "^MTD\r\n")},
        {"MediaMethod=Transfer", setup_of("^MNY\r\n", "^PON\r\n", "^MTT\r\n")},
        {"PostAction=TearOff", setup_of("^MNY\r\n", "^PON\r\n", "^MMT,N\r\n")},
        {"PostAction=PeelOff", setup_of("^MNY\r\n", "^PON\r\n", "^MMP,N\r\n")},
        {"PostAction=Cut", setup_of("^MNY\r\n", "^PON\r\n", "^MMC,N\r\n")},
        {"PaperType=LabelMark", setup_of("^MNM\r\n", "^PON\r\n", "")},
        {"PaperType=Normal", setup_of("", "^PON\r\n", "")},
        {"PaperType=Continue GapsHeight=0", setup_of("^MNN\r\n", "^PON\r\n", "")},
        {"Origin=Rotation180", setup_of("^MNY\r\n", "^POI\r\n", "")}};
    for (const Option& option : options) {
        SCOPED_TRACE(option.text);
        EXPECT_EQ(first_label("label", option.text, path).setup, option.setup);
    }
}

TEST_F(OptionsTest, AFreshQueueSendsOnlyWhatALabelNeeds) {
    const Printed printed = print_on_label({picture(label_sheet)});
    EXPECT_EQ(printed.labels().at(0).setup, default_setup);
}

// 40 dots lie well within the block in the left top corner.
TEST_F(OptionsTest, MirrorImagePutsTheLeftToTheRight) {
    const std::string path = picture(label_sheet);
    const PrintedLabel plain = first_label("label", "HalftoneType=None", path);
    EXPECT_TRUE(plain.prints(40, 40));
    EXPECT_FALSE(plain.prints(811 - 40, 40));
    const PrintedLabel mirrored = first_label("label", "HalftoneType=None MirrorImage=True", path);
    EXPECT_FALSE(mirrored.prints(40, 40));
    EXPECT_TRUE(mirrored.prints(811 - 40, 40));
}

TEST_F(OptionsTest, NegativeOnAStencilQueueChangesInkAndPaper) {
    const std::string path = picture(stencil_sheet);
    const PrintedLabel plain = first_label("stencil", "NegativeImage=True", path);
    EXPECT_TRUE(plain.prints(40, 40));
    EXPECT_FALSE(plain.prints(40, 1000));
    const PrintedLabel negative = first_label("stencil", "NegativeImage=False", path);
    EXPECT_FALSE(negative.prints(40, 40));
    EXPECT_TRUE(negative.prints(40, 1000));
}

// The wedge's greys become more dots or fewer. More ink for a higher value on a label, less on a
// stencil, and more again in its negative.
TEST_F(OptionsTest, BrightnessMovesTheGreysAsItsLabelsSay) {
    const std::string label = picture(label_sheet);
    EXPECT_GT(dots_of(first_label("label", "HalftoneType=None Brightness=10", label)),
              dots_of(first_label("label", "HalftoneType=None Brightness=-10", label)));
    const std::string stencil = picture(stencil_sheet);
    EXPECT_LT(dots_of(first_label("stencil", "Brightness=10", stencil)),
              dots_of(first_label("stencil", "Brightness=-10", stencil)));
    EXPECT_GT(dots_of(first_label("stencil", "NegativeImage=False Brightness=10", stencil)),
              dots_of(first_label("stencil", "NegativeImage=False Brightness=-10", stencil)));
}

// The names of the choices that the queue's driver offers.
std::vector<std::string> choices(const std::string& ppd, const std::string& option) {
    std::vector<std::string> names;
    const std::string start = "\n*" + option + " ";
    for (std::size_t line = ppd.find(start); line != std::string::npos;
         line = ppd.find(start, line + 1)) {
        const std::size_t name = line + start.size();
        names.push_back(ppd.substr(name, ppd.find('/', name) - name));
    }
    return names;
}

class HalftonesTest : public OptionsTest, public testing::WithParamInterface<std::string> {};

// Black is ink and white is paper whatever becomes of the greys, and no two halftones are one.
TEST_P(HalftonesTest, PrintTheGreysEachInItsOwnWay) {
    const bool is_label = GetParam() == "label";
    const std::string path = picture(is_label ? label_sheet : stencil_sheet);
    const std::vector<std::string> names =
        choices(read_file(ppd_of(is_label ? "label-4inch" : "stencil-a5")), "HalftoneType");
    ASSERT_GE(names.size(), 2U);
    std::vector<std::vector<std::string>> seen;
    for (const std::string& name : names) {
        SCOPED_TRACE(name);
        const PrintedLabel label =
            print_unchecked(GetParam(), {"-o", "HalftoneType=" + name, path}).labels().at(0);
        EXPECT_TRUE(label.prints(40, 40)) << "no ink";
        EXPECT_FALSE(label.prints(40, 1000)) << "no paper";
        for (const auto& other : seen) {
            EXPECT_FALSE(label.rows == other) << "like another";
        }
        seen.push_back(label.rows);
    }
}

INSTANTIATE_TEST_SUITE_P(Queues, HalftonesTest, testing::Values("label", "stencil"),
                         [](const auto& queue) { return queue.param; });

// Dots at 203 to the inch: 4 x 203 = 812 and 2 x 203 = 406.
TEST_F(OptionsTest, AnotherPageSizeIsAnotherLabel) {
    const PrintedLabel label = first_label("label", "PageSize=4x2in", picture({288, 144}));
    EXPECT_EQ(label.rows.size(), 406U);
    EXPECT_EQ(label.row_bytes, 102U);
    EXPECT_TRUE(label.setup.starts_with("SIZE 101.6 mm, 50.8 mm\r\n")) << label.setup;
}

// 50 mm are 399.6 dots; the width that suits the filter below that is 396, which are 49.5 mm. 30 mm
// are 239.8 dots.
TEST_F(OptionsTest, ACustomSizeInMillimetresIsALabelOfThatSize) {
    const PrintedLabel label = first_label("label", "PageSize=Custom.50x30mm", picture({141, 85}));
    EXPECT_EQ(label.row_bytes, 50U);
    EXPECT_NEAR(static_cast<double>(label.rows.size()), 239.8, 1.0);
    EXPECT_TRUE(label.setup.starts_with("SIZE 49.5 mm, ")) << label.setup;
}

TEST_F(OptionsTest, ACustomSizeInInchesIsALabelOfThatSize) {
    const PrintedLabel label = first_label("label", "PageSize=Custom.2x1.5in", picture({144, 108}));
    EXPECT_EQ(label.row_bytes, 51U);  // 404 dots
    EXPECT_NEAR(static_cast<double>(label.rows.size()), 304.5, 1.0);
}

}  // namespace
}  // namespace kelp_test
