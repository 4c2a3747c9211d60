// kelp-preview diff as a program.

#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <vector>

#include "tests/preview/decoded.h"
#include "tests/preview/preview_program.h"
#include "tests/preview/read_png.h"
#include "tests/support/files.h"

namespace {

using kelp_test::block;
using kelp_test::read_directory;
using kelp_test::read_png;
using kelp_test::write_file;
using Rows = std::vector<std::string>;

class Diff : public kelp_test::PreviewProgram {
  protected:
    kelp_test::ProcessResult diff(const std::string& before, const std::string& after,
                                  const Rows& more = {}) {
        write_file(dir / "a", before);
        write_file(dir / "b", after);
        Rows arguments{"diff", "a", "b"};
        arguments.insert(arguments.end(), more.begin(), more.end());
        return run(arguments);
    }

    const std::string one = block(2, 1, "8001");    // #....... and .......#
    const std::string other = block(2, 1, "80C1");  // #....... and ##.....#
};

TEST_F(Diff, OfEqualStreamsIsStatus0) {
    const auto result = diff(one + other, one + other, {"-o", "d.png"});
    EXPECT_EQ(result.exit_status, 0);
    EXPECT_EQ(result.output,
              "Label 1: equal, 8 x 2 dots\nLabel 2: equal, 8 x 2 dots\n2 labels, all equal\n");
    EXPECT_EQ(result.error, "");
    EXPECT_EQ(read_directory(dir.path()).size(), 2U);  // no picture
}

TEST_F(Diff, ComparesTheDotsNotTheBytes) {
    EXPECT_EQ(diff(block(2, 1, "I01"), block(2, 1, ",01")).exit_status, 0);
}

TEST_F(Diff, OfStreamsThatDifferIsStatus1WithTheCountAndTheFirstDot) {
    const auto result = diff(one + one, one + other, {"-o", "d.png"});
    EXPECT_EQ(result.exit_status, 1);
    EXPECT_EQ(result.output,
              "Label 1: equal, 8 x 2 dots\n"
              "Label 2: different\n"
              "  2 dots differ: 2 added, 0 missing; the first at column 0, row 1 is added\n"
              "1 of 2 labels differ\n");
    EXPECT_EQ(read_png(dir / "d-2.png").rows, (Rows{"g.......", "bb.....g"}));
    EXPECT_EQ(read_directory(dir.path()).size(), 3U);
}

TEST_F(Diff, OfSingleLabelsMakesThePictureOfTheGivenName) {
    const auto result = diff(other, one, {"-o", "d.png"});
    EXPECT_EQ(result.exit_status, 1);
    EXPECT_NE(result.output.find(
                  "2 dots differ: 0 added, 2 missing; the first at column 0, row 1 is missing"),
              std::string::npos);
    EXPECT_EQ(read_png(dir / "d.png").rows, (Rows{"g.......", "rr.....g"}));
}

TEST_F(Diff, NamesSettingsThatDifferUnlessOnlyDotsCount) {
    const std::string slow = "^PR2\r\n" + one;
    const auto result = diff(one, slow);
    EXPECT_EQ(result.exit_status, 1);
    EXPECT_EQ(result.output, "Label 1: different\n  speed: not set and 2\n1 of 1 labels differ\n");
    EXPECT_EQ(diff(one, slow, {"--dots-only"}).exit_status, 0);
    EXPECT_EQ(diff(one, other, {"--dots-only"}).exit_status, 1);
}

TEST_F(Diff, ComparesLabelsAsThePrinterTurnsThem) {
    // 80 01 turned by 180 degrees is itself, 80 C1 is not.
    EXPECT_EQ(diff(one, "^POI\r\n" + one, {"--dots-only"}).exit_status, 0);
    const auto result = diff(other, "^POI\r\n" + other, {"--dots-only"});
    EXPECT_EQ(result.exit_status, 1);
    // #.......  and  #.....##
    // ##.....#       .......#
    EXPECT_NE(result.output.find(
                  "4 dots differ: 2 added, 2 missing; the first at column 6, row 0 is added"),
              std::string::npos)
        << result.output;
}

TEST_F(Diff, NamesSizesThatDifferAlsoWhereTheRestIsWhite) {
    const auto result = diff(one, block(3, 1, "800100"));
    EXPECT_EQ(result.exit_status, 1);
    EXPECT_EQ(result.output,
              "Label 1: different\n  size: 8 x 2 dots and 8 x 3 dots\n1 of 1 labels differ\n");
}

TEST_F(Diff, NamesLabelsThatOnlyOneStreamHas) {
    const auto result = diff(one + one, one, {"-o", "d.png"});
    EXPECT_EQ(result.exit_status, 1);
    EXPECT_EQ(result.output,
              "Label 1: equal, 8 x 2 dots\nLabel 2: only in a\n1 of 2 labels differ\n");
    EXPECT_EQ(read_png(dir / "d-2.png").rows, (Rows{"r.......", ".......r"}));
    EXPECT_NE(diff(one, one + one).output.find("Label 2: only in b\n"), std::string::npos);
}

TEST_F(Diff, ReadsStandardInputForOneStream) {
    write_file(dir / "a", one);
    EXPECT_EQ(run({"diff", "a", "-"}, one).exit_status, 0);
    EXPECT_EQ(run({"diff", "-", "a"}, other).exit_status, 1);
    const auto both = run({"diff", "-", "-"}, one);
    EXPECT_EQ(both.exit_status, 2);
    EXPECT_EQ(both.error, "kelp-preview: only one of the two streams can be standard input\n");
}

TEST_F(Diff, OfWhatCannotBeReadIsTroubleWithStatus2) {
    EXPECT_EQ(diff(one, "no labels").exit_status, 2);
    EXPECT_EQ(diff("", "").exit_status, 2);
    EXPECT_EQ(run({"diff", "a", "missing"}).exit_status, 2);
    EXPECT_EQ(run({"diff", "a"}).exit_status, 2);
    EXPECT_EQ(run({"diff", "a", "b", "--sideways"}).exit_status, 2);
    EXPECT_EQ(diff(one, one, {"-o", "missing/d.png"}).exit_status, 0);  // nothing to draw
    EXPECT_EQ(diff(one, other, {"-o", "missing/d.png"}).exit_status, 2);
    const auto refused = diff(one, block(0, 1, ""));
    EXPECT_EQ(refused.exit_status, 2);
    EXPECT_EQ(refused.error,
              "kelp-preview: b: byte 10: a graphic of 0 bytes, 1 a row, has no rows\n");
}

TEST_F(Diff, TellsWhatIsNotRightInAStream) {
    // 10 bytes, a header of 19 and 4 digits stand before it.
    const auto result = diff(one, "^XX\r\n^PQ1\n~DGR:CUPS.GRF,2,1,\n8001,^FO0,0^XGR:CUPS.GRF^XZ");
    EXPECT_EQ(result.exit_status, 0);
    EXPECT_EQ(result.error,
              "kelp-preview: b: byte 33: more data than the graphic has room for, skipped\n");
}

TEST_F(Diff, NamesFilesInOneLineWhateverTheirNamesAre) {
    const std::string name = "b\n\x1B[2Jkelp-preview: faked";
    const std::string shown = "b\\x0A\\x1B[2Jkelp-preview: faked";
    write_file(dir / "a", one);
    write_file(dir / name, one + one + "x");
    const auto result = run({"diff", "a", name});
    EXPECT_EQ(result.exit_status, 1);
    EXPECT_EQ(result.output,
              "Label 1: equal, 8 x 2 dots\nLabel 2: only in " + shown + "\n1 of 2 labels differ\n");
    const std::string place = std::to_string(2 * one.size());
    EXPECT_EQ(result.error,
              "kelp-preview: " + shown + ": byte " + place + ": no command, skipped: x\n");
    EXPECT_EQ(run({"diff", "a", name + "x"}).error,
              "kelp-preview: " + shown + "x: No such file or directory\n");
}

TEST_F(Diff, DrawsNoPictureOverTheLimit) {
    // Each within the limit, a picture that holds both is not.
    const auto result = diff(block(100, 1, std::string(100, ',')), block(100, 100, ","),
                             {"--max-dots", "800", "-o", "d.png"});
    EXPECT_EQ(result.exit_status, 2);
    EXPECT_EQ(result.error,
              "kelp-preview: the picture of label 1 would be over the limit of 800 dots\n");
}

}  // namespace
