// kelp-preview show as a program.

#include <gtest/gtest.h>

#include <filesystem>
#include <nlohmann/json.hpp>

#include "tests/preview/decoded.h"
#include "tests/preview/preview_program.h"
#include "tests/preview/read_png.h"
#include "tests/support/files.h"
#include "tests/support/run_process.h"
#include "tests/support/temp_dir.h"

namespace {

namespace fs = std::filesystem;
using kelp_test::block;
using kelp_test::Command;
using kelp_test::FromBytes;
using kelp_test::Picture;
using kelp_test::ProcessResult;
using kelp_test::read_directory;
using kelp_test::read_file;
using kelp_test::read_png;
using kelp_test::run_process;
using kelp_test::TempDir;
using kelp_test::ToFile;
using kelp_test::write_file;
using Rows = std::vector<std::string>;

class Program : public kelp_test::PreviewProgram {
  protected:
    const std::string one = block(4, 2, "12340F,");  // 1234 and 0F00
    const Rows dots = {"...#..#...##.#..", "....####........"};
};

TEST_F(Program, WritesOneLabelUnderTheGivenName) {
    write_file(dir / "job.bin", one);
    const ProcessResult result = run({"show", "job.bin", "-o", "out.png"});
    EXPECT_EQ(result.exit_status, 0) << result.error;
    EXPECT_EQ(result.error, "");
    EXPECT_NE(result.output.find("size:             16 x 2 dots"), std::string::npos);
    const Picture picture = read_png(dir / "out.png");
    EXPECT_EQ(picture.rows, dots);
    EXPECT_EQ(picture.bit_depth, 1U);
    EXPECT_EQ(picture.colour_type, 0U);  // grey
    // 203 dots per inch: 203 / 0.0254 = 7992.1
    EXPECT_EQ(picture.dots_per_metre_x, 7992U);
    EXPECT_EQ(picture.dots_per_metre_y, 7992U);
    EXPECT_EQ(read_directory(dir.path()).size(), 2U);  // nothing else is left
}

TEST_F(Program, NumbersThePicturesOfSeveralLabels) {
    const ProcessResult result =
        run({"show", "-", "-o", "a.b.png"}, one + block(1, 1, "80") + block(1, 1, "01"));
    EXPECT_EQ(result.exit_status, 0);
    EXPECT_EQ(read_png(dir / "a.b-1.png").rows, dots);
    EXPECT_EQ(read_png(dir / "a.b-2.png").rows, Rows{"#......."});
    EXPECT_EQ(read_png(dir / "a.b-3.png").rows, Rows{".......#"});
    EXPECT_EQ(read_directory(dir.path()).size(), 3U);
}

TEST_F(Program, NumbersANameWithoutAnExtensionAtItsEnd) {
    fs::create_directory(dir / "x.d");
    EXPECT_EQ(run({"show", "-o", "x.d/.p"}, one + one).exit_status, 0);
    EXPECT_TRUE(fs::exists(dir / "x.d/.p-1"));
    EXPECT_TRUE(fs::exists(dir / "x.d/.p-2"));
}

TEST_F(Program, TurnsALabelAsThePrinterWouldUnlessAsked) {
    EXPECT_EQ(run({"show", "-o", "turned.png"}, "^POI\n" + one).exit_status, 0);
    EXPECT_EQ(run({"show", "--as-sent", "-o", "sent.png"}, "^POI\n" + one).exit_status, 0);
    EXPECT_EQ(read_png(dir / "turned.png").rows, (Rows{"........####....", "..#.##...#..#..."}));
    EXPECT_EQ(read_png(dir / "sent.png").rows, dots);
}

TEST_F(Program, WritesJsonAndNothingElseOnStandardOutput) {
    const ProcessResult result = run({"show", "--json", "-o", "out.png"}, one + one + "^QQ");
    EXPECT_EQ(result.exit_status, 0);
    const auto json = nlohmann::json::parse(result.output);
    ASSERT_EQ(json["labels"].size(), 2U);
    EXPECT_EQ(json["labels"][1]["width_dots"], 16);
    EXPECT_EQ(json["labels"][1]["offset"], one.size());
    EXPECT_EQ(json["labels"][1]["picture"], "out-2.png");
    EXPECT_EQ(json["unknown_commands"][0]["command"], "^QQ");
    EXPECT_EQ(json["warnings"].size(), 0U);
}

TEST_F(Program, EndsWithTwoForATruncatedGraphicAndShowsItsRows) {
    const ProcessResult result = run({"show", "-o", "out.png"}, one.substr(0, one.find("0F,") + 1));
    EXPECT_EQ(result.exit_status, 2);
    EXPECT_NE(result.output.find("the graphic ends after 1 of 2 rows"), std::string::npos);
    EXPECT_EQ(read_png(dir / "out.png").rows, Rows{dots[0]});
}

TEST_F(Program, EndsWithTwoForAWarningBehindTheLastLabel) {
    EXPECT_EQ(run({"show"}, one + "hello\n").exit_status, 2);
}

TEST_F(Program, RefusesALabelOverTheLimitWithItsPlaceAndTheReason) {
    const ProcessResult result = run({"show", "--max-dots", "31", "-o", "out.png"}, one);
    EXPECT_EQ(result.exit_status, 1);
    EXPECT_EQ(
        result.error,
        "kelp-preview: byte 10: a graphic of 4 bytes, 2 a row, is over the limit of 31 dots\n");
    EXPECT_EQ(result.output, "");
    EXPECT_TRUE(read_directory(dir.path()).empty());
    EXPECT_EQ(run({"show", "--max-dots", "32"}, one).exit_status, 0);
}

TEST_F(Program, RefusesLimitsThatAreNone) {
    for (const char* limit : {"0", "-1", "x", "2147483649", ""}) {
        EXPECT_EQ(run({"show", "--max-dots", limit}, one).exit_status, 1) << limit;
    }
    EXPECT_EQ(run({"show", "--max-dots", "2147483648"}, one).exit_status, 0);
}

TEST_F(Program, TakesLabelsOf200MillionDotsAndNotMoreUnlessAsked) {
    // 25,000,000 bytes; only one row is there
    const auto graphic = [](const std::string& size) {
        return "^XX~DGR:A.GRF," + size + ",1000,,^XGR:A.GRF^XZ";
    };
    EXPECT_EQ(run({"show"}, graphic("25000000")).exit_status, 2);
    const ProcessResult over = run({"show"}, graphic("25001000"));
    EXPECT_EQ(over.exit_status, 1);
    EXPECT_EQ(over.error,
              "kelp-preview: byte 3: a graphic of 25001000 bytes, 1000 a row, is over the limit of "
              "200000000 dots\n");
    EXPECT_EQ(run({"show", "--max-dots", "200008000"}, graphic("25001000")).exit_status, 2);
}

TEST_F(Program, TakesLittleMemoryForALargeLabelThatIsNotThere) {
    Command command = given({"show", "--max-dots", "2147483648"});
    std::string stream;
    for (int i = 0; i < 50; ++i) {
        stream += "^XX~DGR:A" + std::to_string(i) + ".GRF,4194304,4096,,^XGR:A" +
                  std::to_string(i) + ".GRF^XZ";
    }
    command.input = FromBytes{stream};
    const ProcessResult result = run_process(command);
    EXPECT_EQ(result.exit_status, 2) << result.error;
    EXPECT_LT(result.peak_resident_kib, 200 * 1024);

    // 256 MiB declared, a row sent
    command.input = FromBytes{"^XX~DGR:A.GRF,268435456,4096,,^XGR:A.GRF^XZ"};
    const ProcessResult one_row = run_process(command);
    EXPECT_EQ(one_row.exit_status, 2) << one_row.error;
    EXPECT_LT(one_row.peak_resident_kib, 200 * 1024);
}

TEST_F(Program, SaysThatThereIsNoLabel) {
    const ProcessResult result = run({"show"}, "hello\n");
    EXPECT_EQ(result.exit_status, 1);
    EXPECT_EQ(result.error,
              "kelp-preview: no label in standard input (byte 0: no command, skipped: hello)\n");
    EXPECT_EQ(result.output, "");
    EXPECT_EQ(run({"show"}, "").exit_status, 1);
}

TEST_F(Program, ReplacesAPlantedLinkAndLeavesWhatItPointsTo) {
    write_file(dir / "precious", "kept");
    fs::create_symlink("precious", dir / "out.png");
    EXPECT_EQ(run({"show", "-o", "out.png"}, one).exit_status, 0);
    EXPECT_EQ(read_file(dir / "precious"), "kept");
    EXPECT_FALSE(fs::is_symlink(dir / "out.png"));
    EXPECT_EQ(read_png(dir / "out.png").rows, dots);
}

TEST_F(Program, LeavesAnotherLinkToTheOldPictureAsItWas) {
    write_file(dir / "out.png", "old");
    fs::create_hard_link(dir / "out.png", dir / "other");
    EXPECT_EQ(run({"show", "-o", "out.png"}, one).exit_status, 0);
    EXPECT_EQ(read_file(dir / "other"), "old");
}

TEST_F(Program, RefusesToWriteOverAFolderOrADevice) {
    fs::create_directory(dir / "folder.png");
    for (const char* name : {"folder.png", "/dev/null", "missing/out.png"}) {
        const ProcessResult result = run({"show", "-o", name}, one);
        EXPECT_EQ(result.exit_status, 1) << name;
        EXPECT_EQ(result.error.find(std::string("kelp-preview: ") + name + ": "), 0U)
            << result.error;
    }
    EXPECT_TRUE(fs::is_character_file("/dev/null"));
    EXPECT_EQ(std::distance(fs::directory_iterator(dir.path()), fs::directory_iterator()), 1);
}

TEST_F(Program, RefusesANameThatIsNoFile) {
    for (const char* name : {"-", "", "folder/"}) {
        EXPECT_EQ(run({"show", "-o", name}, one).exit_status, 1) << name;
    }
    EXPECT_TRUE(read_directory(dir.path()).empty());
}

TEST_F(Program, LeavesNothingWhenThePictureDoesNotFit) {
    Command command = given({"show", "-o", "out.png"});
    command.input = FromBytes{one};
    command.limits = {{RLIMIT_FSIZE, 20}};
    const ProcessResult result = run_process(command);
    EXPECT_EQ(result.exit_status, 1) << result.ending();
    EXPECT_EQ(result.error, "kelp-preview: out.png: File too large\n");
    EXPECT_TRUE(read_directory(dir.path()).empty());
}

TEST_F(Program, NamesAnInputThatCannotBeRead) {
    EXPECT_EQ(run({"show", "missing.bin"}).error,
              "kelp-preview: missing.bin: No such file or directory\n");
    EXPECT_EQ(run({"show", "missing.bin"}).exit_status, 1);
    const ProcessResult folder = run({"show", "."});
    EXPECT_EQ(folder.exit_status, 1);
    EXPECT_EQ(folder.error, "kelp-preview: .: Is a directory\n");
}

TEST_F(Program, FailsWhenStandardOutputCannotBeWritten) {
    for (const std::vector<std::string>& arguments :
         std::vector<std::vector<std::string>>{{"show"}, {"show", "--json"}, {"--help"}}) {
        Command command = given(arguments);
        command.input = FromBytes{one};
        command.output = ToFile{"/dev/full"};
        const ProcessResult result = run_process(command);
        EXPECT_EQ(result.exit_status, 1) << arguments[0];
        EXPECT_EQ(result.error, "kelp-preview: unable to write to standard output\n");
    }
}

TEST_F(Program, HelpsAndTellsItsVersion) {
    EXPECT_NE(run({"--help"}).output.find("show"), std::string::npos);
    EXPECT_EQ(run({"--help"}).exit_status, 0);
    EXPECT_NE(run({"show", "--help"}).output.find("--as-sent"), std::string::npos);
    const ProcessResult version = run({"--version"});
    EXPECT_EQ(version.exit_status, 0);
    EXPECT_EQ(version.output.find("kelp-preview "), 0U);
}

TEST_F(Program, RefusesUnknownArgumentsOnStandardError) {
    for (const std::vector<std::string>& arguments : std::vector<std::vector<std::string>>{
             {}, {"shew"}, {"show", "--no-such"}, {"show", "a", "b"}, {"show", "-o"}}) {
        const ProcessResult result = run(arguments);
        EXPECT_EQ(result.exit_status, 1);
        EXPECT_EQ(result.output, "");
        EXPECT_NE(result.error, "");
    }
}

}  // namespace
