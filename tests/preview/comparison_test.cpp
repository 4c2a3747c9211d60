#include "preview/comparison.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "preview/png_writer.h"
#include "tests/preview/read_png.h"
#include "tests/support/files.h"
#include "tests/support/temp_dir.h"

namespace {

using kelp_preview::Bitmap;
using kelp_preview::compareDots;
using kelp_preview::compareSettings;
using kelp_preview::DotDifference;
using kelp_preview::Label;
using Rows = std::vector<std::string>;

Bitmap drawn(const Rows& rows) {
    Bitmap bitmap(rows.at(0).size(), rows.size());
    for (std::size_t y = 0; y < rows.size(); ++y) {
        for (std::size_t x = 0; x < rows[y].size(); ++x) {
            if (rows[y][x] == '#') {
                bitmap.setDot(x, y);
            }
        }
    }
    return bitmap;
}

TEST(CompareDots, FindsNothingInEqualPictures) {
    const Bitmap picture = drawn({"#..#......#", "..#........"});
    const DotDifference difference = compareDots(picture, picture);
    EXPECT_EQ(difference.count(), 0U);
    EXPECT_FALSE(difference.first);
}

TEST(CompareDots, CountsAddedAndMissingDotsAndFindsTheFirst) {
    const DotDifference difference = compareDots(drawn({"#..........", "..#.......#"}),  //
                                                 drawn({"#........#.", "..##......."}));
    EXPECT_EQ(difference.added, 2U);
    EXPECT_EQ(difference.missing, 1U);
    EXPECT_EQ(difference.first->column, 9U);
    EXPECT_EQ(difference.first->row, 0U);
}

TEST(CompareDots, TheFirstIsTheTopmostThenTheLeftmost) {
    const DotDifference difference = compareDots(drawn({"....", "..##", "#..."}),  //
                                                 drawn({"....", "....", "...."}));
    EXPECT_EQ(difference.first->column, 2U);
    EXPECT_EQ(difference.first->row, 1U);
}

TEST(CompareDots, WhatOnePictureDoesNotReachIsWhite) {
    const Bitmap small = drawn({"#."});
    const Bitmap large = drawn({"#........#", "...#......"});
    EXPECT_EQ(compareDots(small, large).added, 2U);
    EXPECT_EQ(compareDots(small, large).missing, 0U);
    EXPECT_EQ(compareDots(large, small).missing, 2U);
    EXPECT_EQ(compareDots(large, small).first->column, 9U);
    EXPECT_EQ(compareDots(drawn({"#."}), drawn({"#..", "..."})).count(), 0U);
}

TEST(CompareDots, ATallAndAWidePictureTakeNoTimeForTheCornerThatNeitherHas) {
    const Bitmap tall(8, 10'000'000);
    const Bitmap wide(80'000'000, 1);
    EXPECT_EQ(compareDots(tall, wide).count(), 0U);  // 10^14 dots in the corner
}

TEST(DifferencePng, ShowsAddedMissingAndCommonDotsInColoursOfTheirOwn) {
    const kelp_test::TempDir dir;
    kelp_test::write_file(dir / "d.png", kelp_preview::differencePng(drawn({"##..", "...."}),  //
                                                                     drawn({"#.#"})));
    const kelp_test::Picture picture = kelp_test::read_png(dir / "d.png");
    EXPECT_EQ(picture.rows, (Rows{"grb.", "...."}));
    EXPECT_EQ(picture.dots_per_metre_x, 7992U);  // 203 / 0.0254 = 7992.1
}

TEST(CompareSettings, HasALineForEachThatIsNotTheSame) {
    Label before;
    before.copies = 1;
    before.setup.darkness = 12;
    before.setup.speed = "4";
    before.setup.printMethod = "D";
    before.setup.mediaSensing = "Y";
    Label after = before;
    EXPECT_EQ(compareSettings(before, after), Rows());
    after.copies = 3;
    after.setup.darkness = std::nullopt;
    after.setup.width = 812;
    after.setup.length = 406;
    after.setup.sizeLine = "100.0 mm, 50.0 mm";
    after.setup.mediaSensing = "M";
    after.setup.orientation = "I";
    after.setup.speed = "6";
    after.setup.printMethod = "T";
    after.setup.afterPrint = "C";
    EXPECT_EQ(
        compareSettings(before, after),
        (Rows{"copies: 1 and 3", "page width: not set and 812", "page length: not set and 406",
              "size line: not set and 100.0 mm, 50.0 mm", "media sensing: gaps and marks",
              "orientation: not set and turned by 180 degrees", "speed: 4 and 6",
              "darkness: 12 and not set", "print method: direct thermal and thermal transfer",
              "after printing: not set and cut"}));
}

}  // namespace
