// kelp-preview sheet as a program: names, limits, the table.

#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <vector>

#include "tests/preview/read_png.h"
#include "tests/preview/sheet/sheet_program.h"
#include "tests/support/files.h"

namespace {

namespace fs = std::filesystem;
using kelp_test::Arguments;
using kelp_test::Picture;
using kelp_test::ProcessResult;
using kelp_test::read_file;
using kelp_test::read_png;
using kelp_test::write_file;

class Sheet : public kelp_test::SheetProgram {
  protected:
    // 3 of 8 pixels are black. 4 is a width that needs no more at the right.
    const std::string tiny = std::string("P5 4 2 255\n") + std::string("\0\0\xFF\xFF", 4) +
                             std::string("\0\xFF\xFF\xFF", 4);
    Sheet() { write_file(dir / "tiny.pgm", tiny); }

    // Taken dot for dot.
    ProcessResult tiny_sheet(const Arguments& more = {}) {
        Arguments arguments{"tiny.pgm", "--pixels-are-dots"};
        arguments.insert(arguments.end(), more.begin(), more.end());
        return sheet(arguments);
    }
    std::string tiny_refusal(const Arguments& more) { return refusal_of(tiny_sheet(more)); }
    std::size_t files() {
        return static_cast<std::size_t>(
            std::distance(fs::directory_iterator(dir.path()), fs::directory_iterator()));
    }
};

TEST_F(Sheet, TellsTheShareOfBlackDotsOfEachHalftone) {
    const ProcessResult result = tiny_sheet({"--halftone", "None", "-o", "out.png"});
    EXPECT_EQ(result.exit_status, 0);
    EXPECT_EQ(result.error, "");
    const auto rows = read_png(dir / "out.png").rows;
    EXPECT_EQ(result.output,
              "HalftoneType         what prints                black dots\n"
              "None                 threshold                     37.50 %\n"
              "out.png: " +
                  std::to_string(rows[0].size()) + " x " + std::to_string(rows.size()) +
                  " dots, each print 4 x 2\n");
}

TEST_F(Sheet, CountsThePaddingAtTheRightWithThePage) {
    write_file(dir / "five.pgm", "P5 5 1 255\n" + std::string(5, '\0'));
    // 5 black of a page of 12
    EXPECT_NE(sheet({"five.pgm", "--pixels-are-dots", "--halftone", "None"})
                  .output.find("threshold                     41.67 %\n"),
              std::string::npos);
}

TEST_F(Sheet, NegativeTurnsStencilsRoundAndMakesOthersSolid) {
    write_file(dir / "white.pgm", "P5 4 2 255\n" + std::string(8, '\xFF'));
    const std::string as_is = sheet({"white.pgm", "--pixels-are-dots"}).output;
    const std::string negative = sheet({"white.pgm", "--pixels-are-dots", "--negative"}).output;
    for (const char* name : {"None", "Ordered", "Burkes", "Tattoo", "Tattoo_X8"}) {
        const auto share = [&](const std::string& table) {
            const std::size_t line = table.find("\n" + std::string(name) + " ") + 1;
            return table.substr(line + 48, 10);
        };
        EXPECT_EQ(share(as_is), "    0.00 %") << name;
        EXPECT_EQ(share(negative), "  100.00 %") << name;
    }
}

TEST_F(Sheet, HasAllHalftonesOrTheChosenOnesInTheSameOrder) {
    const auto names = [](const std::string& table) {
        std::vector<std::string> result;
        for (std::size_t line = table.find('\n') + 1; line < table.size();
             line = table.find('\n', line) + 1) {
            result.push_back(table.substr(line, table.find(' ', line) - line));
        }
        result.pop_back();  // the line of the sheet
        return result;
    };
    EXPECT_EQ(names(tiny_sheet().output),
              (std::vector<std::string>{"None", "FloydSteinberg", "Ordered", "Burkes", "Stucki",
                                        "JarvisJudiceNinke", "Sierra", "StevensonArce", "Tattoo",
                                        "Tattoo_X8"}));
    EXPECT_EQ(names(tiny_sheet({"--halftone", "Tattoo", "--halftone", "Burkes"}).output),
              (std::vector<std::string>{"Burkes", "Tattoo"}));
}

TEST_F(Sheet, IsABlackAndWhitePictureOfTheResolution) {
    tiny_sheet({"-o", "out.png"});
    const Picture picture = read_png(dir / "out.png");
    EXPECT_EQ(picture.bit_depth, 1U);
    EXPECT_EQ(picture.colour_type, 0U);
    EXPECT_EQ(picture.dots_per_metre_x, 7992U);  // 203 / 0.0254
    EXPECT_EQ(picture.dots_per_metre_y, 7992U);
}

TEST_F(Sheet, ScalesAPictureToThePage) {
    // 4 x 2 is 812 x 406 on a label of 4 x 6 inches, and 100 x 50 in 100 x 100 dots: 104 with what
    // stands at the right, 100 being 4 more than 96 already.
    EXPECT_NE(sheet({"tiny.pgm", "--halftone", "None"}).output.find("each print 812 x 406\n"),
              std::string::npos);
    EXPECT_NE(sheet({"tiny.pgm", "--halftone", "None", "--page", "100x100"})
                  .output.find("each print 100 x 50\n"),
              std::string::npos);
    EXPECT_NE(sheet({"tiny.pgm", "--halftone", "None", "--page", "102x100"})
                  .output.find("each print 108 x 51\n"),
              std::string::npos);
}

TEST_F(Sheet, HasANameLikeThePictureInTheWorkingFolder) {
    fs::create_directory(dir / "sub");
    fs::rename(dir / "tiny.pgm", dir / "sub/photo.one.pgm");
    const ProcessResult result = sheet({"sub/photo.one.pgm", "--pixels-are-dots"});
    EXPECT_NE(result.output.find("\nphoto.one-sheet.png: "), std::string::npos);
    EXPECT_FALSE(read_png(dir / "photo.one-sheet.png").rows.empty());
    EXPECT_EQ(files(), 2U);
}

TEST_F(Sheet, TakesOddNamesOfPictures) {
    for (const char* name : {"-x.pgm", "--help", "@x", "%d.pgm", "a b.pgm", "a\nb.pgm", "$HOME"}) {
        write_file(dir / name, tiny);
        EXPECT_EQ(sheet({"--pixels-are-dots", "-o", "out.png", "--", name}).exit_status, 0) << name;
        EXPECT_EQ(sheet({"--pixels-are-dots", "--", name}).exit_status, 0) << name;
        EXPECT_TRUE(fs::exists(dir / (fs::path(name).stem().string() + "-sheet.png"))) << name;
    }
}

TEST_F(Sheet, DoesNotReplaceThePicture) {
    fs::rename(dir / "tiny.pgm", dir / "tiny.png");
    fs::create_symlink("tiny.png", dir / "link.png");
    fs::create_hard_link(dir / "tiny.png", dir / "same.png");
    fs::create_symlink("tiny.png", dir / "link-sheet.png");
    fs::create_directory(dir / "sub");
    for (const std::string name :
         {"tiny.png", "./tiny.png", "sub/../tiny.png", "link.png", "same.png"}) {
        EXPECT_EQ(refusal({"tiny.png", "--pixels-are-dots", "-o", name}),
                  "the sheet would replace the picture tiny.png")
            << name;
    }
    EXPECT_EQ(refusal({"link.png", "--pixels-are-dots"}),
              "the sheet would replace the picture link.png");
    EXPECT_EQ(refusal({"link.png", "--pixels-are-dots", "-o", (dir / "tiny.png").string()}),
              "the sheet would replace the picture link.png");
    EXPECT_EQ(read_file(dir / "tiny.png"), tiny);
    EXPECT_EQ(files(), 5U);
}

TEST_F(Sheet, ReplacesAPlantedLinkAndLeavesWhatItPointsTo) {
    write_file(dir / "precious", "kept");
    fs::create_symlink("precious", dir / "tiny-sheet.png");
    fs::create_symlink("missing", dir / "out.png");
    EXPECT_EQ(tiny_sheet().exit_status, 0);
    EXPECT_EQ(tiny_sheet({"-o", "out.png"}).exit_status, 0);
    EXPECT_EQ(read_file(dir / "precious"), "kept");
    EXPECT_FALSE(fs::exists(dir / "missing"));
    EXPECT_FALSE(fs::is_symlink(dir / "tiny-sheet.png"));
    EXPECT_EQ(read_png(dir / "tiny-sheet.png").rows, read_png(dir / "out.png").rows);
}

TEST_F(Sheet, OverTheLimitIsRefusedAndOneAtItIsNot) {
    // Ten prints of 4 x 2
    EXPECT_EQ(tiny_refusal({"--max-dots", "79"}),
              "a sheet of 10 prints of 4 x 2 dots is over the limit of 79");
    EXPECT_EQ(tiny_refusal({"--max-dots", "7"}),
              "tiny.pgm: a picture of 4 x 2 pixels is over the limit of 7");
    EXPECT_EQ(files(), 1U);
    EXPECT_EQ(tiny_sheet({"--max-dots", "80"}).exit_status, 0);
    EXPECT_EQ(tiny_sheet({"--max-dots", "8", "--halftone", "None"}).exit_status, 0);
}

TEST_F(Sheet, LeavesNothingWhenItDoesNotFitOrHasNoPlace) {
    // The cache of fonts, which would not fit either, is written with the first sheet.
    ASSERT_EQ(tiny_sheet({}).exit_status, 0);
    fs::remove(dir / "tiny-sheet.png");
    kelp_test::Command command = sheet_command({"tiny.pgm", "--pixels-are-dots"});
    command.limits = {{RLIMIT_FSIZE, 20}};
    EXPECT_EQ(refusal_of(run_process(command)), "tiny-sheet.png: File too large");
    EXPECT_EQ(tiny_refusal({"-o", "missing/out.png"}),
              "missing/out.png: No such file or directory");
    fs::create_directory(dir / "tiny-sheet.png");
    EXPECT_EQ(tiny_refusal({}), "tiny-sheet.png: Is a directory");
    EXPECT_EQ(files(), 2U);
}

TEST_F(Sheet, FailsWhenStandardOutputCannotBeWritten) {
    kelp_test::Command command = sheet_command({"tiny.pgm", "--pixels-are-dots"});
    command.output = kelp_test::ToFile{"/dev/full"};
    EXPECT_EQ(refusal_of(run_process(command)), "unable to write to standard output");
}

TEST_F(Sheet, RefusesOptionsThatMeanNothing) {
    for (const Arguments& arguments : std::vector<Arguments>{{},
                                                             {"--page", "4x6cm"},
                                                             {"--page", "A4", "--pixels-are-dots"},
                                                             {"--halftone", "none"},
                                                             {"--halftone", ""},
                                                             {"--brightness", "101"},
                                                             {"--brightness", "-101"},
                                                             {"--brightness", "dark"},
                                                             {"--page-number", "0"},
                                                             {"--page-number", "-1"},
                                                             {"--max-dots", "0"},
                                                             {"-o", "-"},
                                                             {"-o", "sub/"},
                                                             {"tiny.pgm"}}) {
        Arguments all = arguments;
        if (!all.empty()) {
            all.push_back("tiny.pgm");
        }
        const ProcessResult result = sheet(all);
        EXPECT_EQ(result.exit_status, 1) << testing::PrintToString(all);
        EXPECT_EQ(result.output, "");
        EXPECT_NE(result.error, "");
    }
    EXPECT_EQ(files(), 1U);
}

}  // namespace
