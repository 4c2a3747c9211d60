#include "tools/kelp-preview/sheet/contact_sheet.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "tests/preview/sheet/sheet_program.h"
#include "tests/support/grey_pages.h"
#include "tools/kelp-preview/sheet/caption.h"

namespace {

using kelp_preview::Bitmap;
using kelp_test::dot_rows;
using kelp_test::Random;
using Rows = std::vector<std::string>;

Bitmap random_dots(unsigned width, unsigned height, Random& random) {
    Bitmap dots(width, height);
    for (unsigned y = 0; y < height; ++y) {
        for (unsigned x = 0; x < width; ++x) {
            if (random.one_in(2)) {
                dots.setDot(x, y);
            }
        }
    }
    return dots;
}

std::vector<SheetCell> random_cells(unsigned count, unsigned width, unsigned height,
                                    Random& random) {
    std::vector<SheetCell> cells;
    for (unsigned i = 0; i < count; ++i) {
        cells.push_back({random_dots(width, height, random),
                         random_dots(static_cast<unsigned>(random.between(1, 90)),
                                     static_cast<unsigned>(random.between(1, 30)), random)});
    }
    return cells;
}

// Draws on a sheet where every place may be drawn on once.
class Paper {
  public:
    Paper(std::uint64_t width, std::uint64_t height) : rows(height, std::string(width, ' ')) {}

    void put(std::uint64_t x, std::uint64_t y, char mark) {
        ASSERT_EQ(rows.at(y).at(x), ' ') << "two things at " << x << ", " << y;
        rows[y][x] = mark;
    }
    void put(std::uint64_t left, std::uint64_t top, const Rows& dots) {
        for (std::size_t y = 0; y < dots.size(); ++y) {
            for (std::size_t x = 0; x < dots[y].size(); ++x) {
                put(left + x, top + y, dots[y][x]);
            }
        }
    }
    Rows finished() const {
        Rows result = rows;
        for (std::string& row : result) {
            std::replace(row.begin(), row.end(), ' ', '.');
        }
        return result;
    }

  private:
    Rows rows;
};

Rows framed(const Bitmap& print) {
    Rows rows{std::string(print.width + 2, '#')};
    for (const std::string& row : dot_rows(print)) {
        rows.push_back("#" + row + "#");
    }
    rows.push_back(rows.front());
    return rows;
}

TEST(ContactSheet, HasEveryPrintInAFrameWithItsCaptionAboveAndNothingElse) {
    Random random(5);
    for (unsigned round = 0; round < 100; ++round) {
        const auto cells =
            random_cells(1 + round % 10, static_cast<unsigned>(random.between(1, 99)),
                         static_cast<unsigned>(random.between(1, 99)), random);
        const SheetLayout layout = layOutSheet(cells);
        Paper paper(layout.width, layout.height);
        for (std::size_t i = 0; i < cells.size(); ++i) {
            const std::uint64_t left = layout.printLeft + i % layout.columns * layout.cellWidth;
            const std::uint64_t top = layout.printTop + i / layout.columns * layout.cellHeight;
            paper.put(left - 1, top - 1, framed(cells[i].print));
            paper.put(left - 1, top - 1 - cells[i].caption.height, dot_rows(cells[i].caption));
        }
        ASSERT_EQ(dot_rows(drawSheet(cells)), paper.finished()) << round;
    }
}

std::uint64_t columns(unsigned count, unsigned width, unsigned height) {
    Random random(6);
    std::vector<SheetCell> cells(count, {random_dots(width, height, random), Bitmap(1, 1)});
    return layOutSheet(cells).columns;
}

TEST(ContactSheet, IsNearTheShapeOfAScreenWithoutEmptyPlaces) {
    EXPECT_EQ(columns(10, 400, 400), 5U);   // 5 : 2 is nearer to 3 : 2 than 2 : 5
    EXPECT_EQ(columns(10, 400, 1200), 5U);  // 5 : 6, not 10 : 3
    EXPECT_EQ(columns(10, 1200, 300), 2U);  // 8 : 5
    EXPECT_EQ(columns(10, 40, 4000), 10U);
    EXPECT_EQ(columns(6, 400, 400), 3U);
    EXPECT_EQ(columns(1, 400, 400), 1U);
}

TEST(Caption, IsThereInLinesUnderEachOther) {
    const Bitmap one = drawCaption({"Ordered"}, 20);
    const Bitmap two = drawCaption({"Ordered", "Ordered"}, 20);
    EXPECT_GT(blackDots(one), 50U);
    EXPECT_GT(blackDots(two), blackDots(one) + 50);
    EXPECT_GE(two.height, one.height + 20);
    EXPECT_LT(blackDots(two), 2 * blackDots(one));  // the second is not bold
}

TEST(Caption, IsNotCutOff) {
    // As much of it with more room below, at the right and above.
    const Bitmap caption = drawCaption({"ÅgjQ"}, 40);
    EXPECT_EQ(blackDots(drawCaption({"ÅgjQ", ""}, 40)), blackDots(caption));
    EXPECT_EQ(blackDots(drawCaption({"ÅgjQ          "}, 40)), blackDots(caption));
    EXPECT_EQ(blackDots(drawCaption({"", "ÅgjQ"}, 40)),
              blackDots(drawCaption({"", "ÅgjQ", ""}, 40)));
}

TEST(Caption, SaysWhatItIsTold) {
    EXPECT_NE(dot_rows(drawCaption({"Stucki"}, 14)), dot_rows(drawCaption({"Sierra"}, 14)));
    EXPECT_NE(dot_rows(drawCaption({"x", "37.50 %"}, 14)),
              dot_rows(drawCaption({"x", "37.51 %"}, 14)));
    EXPECT_EQ(blackDots(drawCaption({""}, 14)), 0U);
}

}  // namespace
