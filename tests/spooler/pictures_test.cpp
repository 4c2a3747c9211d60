// Where the ink is: in the raster that reaches the filter, and on the label.

#include <ostream>

#include "tests/spooler/spooler_test.h"

namespace kelp_test {
namespace {

constexpr double dots_per_point = 203.0 / 72.0;

unsigned dots(double points) {
    return static_cast<unsigned>(points * dots_per_point);
}

// From 0, paper, to 255, ink, whichever way round the raster counts.
int ink(const GivenPage& page, double x, double y) {
    const int value = page.at(dots(x), dots(y));
    return page.header.cupsColorSpace == CUPS_CSPACE_K ? value : 255 - value;
}

struct Case {
    const char* queue;
    Sheet sheet;
    Format format;
    const char* file;
};

void PrintTo(const Case& value, std::ostream* out) {
    *out << value.queue << ", " << value.file;
}

class PicturesTest : public SpoolerTest, public testing::WithParamInterface<Case> {
  protected:
    Sheet sheet() const { return GetParam().sheet; }
    double middle() const { return sheet().width / 2.0; }
    std::string picture(const std::string& postscript) const {
        return document(GetParam().file, GetParam().format, sheet(), postscript);
    }
};

// The points lie well within the shapes of asymmetric_picture(), and where these would be had the
// picture been mirrored, turned or transposed.
TEST_P(PicturesTest, KeepTheirPolarityAndPlace) {
    const Printed printed = print(GetParam().queue, {picture(asymmetric_picture(sheet()))});
    const std::vector<GivenPage> pages = printed.record.pages();
    const std::vector<PrintedLabel> labels = printed.labels();
    ASSERT_EQ(pages.size(), 1U);
    ASSERT_EQ(labels.size(), 1U);
    const double right = sheet().width - 18;
    const double bottom = sheet().height - 18;

    struct Point {
        double x;
        double y;
        bool is_ink;
        const char* what;
    };
    for (const Point& point :
         {Point{18, 18, true, "the block"}, Point{right, 18, false, "mirrored"},
          Point{18, bottom, false, "upside down"}, Point{right, bottom, false, "turned"},
          Point{middle() - 9, 63, true, "the bar"},
          Point{middle() + 9, 63, false, "beyond the bar's end"},
          Point{63, middle() - 9, false, "transposed"}}) {
        SCOPED_TRACE(point.what);
        EXPECT_NEAR(ink(pages[0], point.x, point.y), point.is_ink ? 255 : 0, 15);
        EXPECT_EQ(labels[0].prints(dots(point.x), dots(point.y)), point.is_ink);
    }
    EXPECT_TRUE(labels[0].prints(0, 0)) << "the block reaches into the corner";
    for (int step = 1; step < 8; ++step) {
        const double x = middle() + 9 * step + 4.5;
        EXPECT_LT(ink(pages[0], x, 18), ink(pages[0], x - 9, 18) - 10) << "step " << step;
    }
}

// From 100 to 120 points above the bottom: two rows at each edge may go either way.
TEST_P(PicturesTest, AFullWidthBarBetweenWhiteRowsPrintsAsABar) {
    const int width = sheet().width;
    const Printed printed =
        print(GetParam().queue,
              {picture("0 setgray 0 100 " + std::to_string(width) + " 20 rectfill showpage\n")});
    const std::vector<PrintedLabel> labels = printed.labels();
    ASSERT_EQ(labels.size(), 1U);
    const std::vector<GivenPage> pages = printed.record.pages();
    ASSERT_EQ(pages.size(), 1U);
    const unsigned page_width = pages[0].header.cupsWidth;
    const unsigned first = dots(sheet().height - 120);
    const unsigned last = dots(sheet().height - 100);
    ASSERT_LT(last, labels[0].rows.size());
    for (unsigned y = 0; y < labels[0].rows.size(); ++y) {
        if (y > first + 1 && y + 1 < last) {
            EXPECT_EQ(labels[0].dots_in_row(y), page_width) << "row " << y;
        } else if (y + 2 < first || y > last + 2) {
            EXPECT_EQ(labels[0].dots_in_row(y), 0U) << "row " << y;
        }
    }
}

// A picture of another shape than the page's is scaled to the page's width. Its bar down the left
// edge, a tenth of the width, stays straight: a raster as wide as the picture would print slanted.
TEST_P(PicturesTest, OfAnotherShapeThanThePageStandStraight) {
    const std::string path =
        document(GetParam().file, GetParam().format, {90, 120}, "0 0 9 120 rectfill showpage\n");
    const Printed printed = print(GetParam().queue, {"-o", "print-scaling=fit", path});
    const std::vector<GivenPage> pages = printed.record.pages();
    ASSERT_EQ(pages.size(), 1U);
    const unsigned width = pages[0].header.cupsWidth;
    const unsigned height = dots(sheet().height + 0.1);
    EXPECT_EQ(width % 8, 4U);
    EXPECT_NEAR(width, dots(sheet().width), 8);
    EXPECT_NEAR(pages[0].header.cupsHeight, height, 1);

    const std::vector<PrintedLabel> labels = printed.labels();
    ASSERT_EQ(labels.size(), 1U);
    // A document is centred, a picture starts at the top; both are 120/90 as high as wide.
    const unsigned half = width * 2 / 3;
    const unsigned middle_row = GetParam().format == Format::pdf ? height / 2 : half;
    for (const unsigned y : {middle_row - half + 20, middle_row, middle_row + half - 20}) {
        SCOPED_TRACE(y);
        EXPECT_TRUE(labels[0].prints(width / 20, y));
        EXPECT_FALSE(labels[0].prints(width / 5, y));
        EXPECT_FALSE(labels[0].prints(width / 2, y));
    }
}

INSTANTIATE_TEST_SUITE_P(All, PicturesTest,
                         testing::Values(Case{"label", {288, 432}, Format::pdf, "a.pdf"},
                                         Case{"label", {288, 432}, Format::png, "a.png"},
                                         Case{"label", {288, 432}, Format::jpeg, "a.jpg"},
                                         Case{"stencil", {420, 595}, Format::pdf, "a.pdf"},
                                         Case{"stencil", {420, 595}, Format::png, "a.png"},
                                         Case{"stencil", {420, 595}, Format::jpeg, "a.jpg"}),
                         [](const auto& picture) {
                             return std::string(picture.param.queue) + "_" +
                                    std::string(picture.param.file).substr(2);
                         });

}  // namespace
}  // namespace kelp_test
