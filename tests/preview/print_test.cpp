// kelp-preview print as a program, with the spooler's real filters and ours.

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <map>
#include <nlohmann/json.hpp>
#include <string>
#include <vector>

#include "tests/preview/preview_program.h"
#include "tests/preview/read_png.h"
#include "tests/support/files.h"

namespace {

namespace fs = std::filesystem;
using kelp_test::Command;
using kelp_test::Picture;
using kelp_test::ProcessResult;
using kelp_test::read_file;
using kelp_test::read_png;
using kelp_test::run_process;
using kelp_test::write_file;
using Arguments = std::vector<std::string>;

// A square inch of black in the lower left corner of a label of 4 by 6 inches.
constexpr const char* square =
    "%!PS\n<< /PageSize [288 432] >> setpagedevice 0 0 72 72 rectfill showpage\n";

class Print : public kelp_test::PreviewProgram {
  protected:
    Print() {
        make_spooler();
        write_file(dir / "square.ps", square);
    }

    ProcessResult print(const std::string& file, const Arguments& more = {}) {
        Arguments arguments{"print",
                            "--ppd",
                            KELP_PPD_DIR "/kelp-label-4inch.ppd",
                            "--cups-files",
                            (dir / "spooler/cups-files.conf").string(),
                            "-o",
                            "PageSize=4x6in"};
        arguments.insert(arguments.end(), more.begin(), more.end());
        arguments.insert(arguments.end(), {"--", file});
        Command command = given(arguments);
        command.environment = environment();
        return run_process(command);
    }

  private:
    std::map<std::string, std::string> environment() const {
        return {{"PATH", "/usr/bin:/bin"}, {"HOME", dir.path().string()}, {"LC_ALL", "C"}};
    }

    // The machine's filters and ours, of which rastertokelp finds its fixed paths in our folder.
    void make_spooler() {
        fs::create_directories(dir / "spooler");
        fs::create_directories(dir / "world/var/spool/cups/tmp");
        fs::create_directories(dir / "world/tmp");
        Command make;
        make.program = "/bin/bash";
        make.arguments = {"-c", ". " KELP_ROOT "/scripts/lib.sh && spooler_folders \"$1\" \"$2\"",
                          "bash", (dir / "spooler").string(),
                          fs::path(KELP_FILTER).parent_path().string()};
        make.environment = environment();
        const ProcessResult made = run_process(make);
        ASSERT_EQ(made.exit_status, 0) << made.error;
        const fs::path filter = dir / "spooler/cups/filter/rastertokelp";
        fs::remove(filter);
        write_file(filter,
                   "#!/bin/sh\nASAN_OPTIONS=verify_asan_link_order=0 "
                   "LD_PRELOAD=" KELP_TEST_WORLD_LIBRARY " KELP_TEST_WORLD=" +
                       (dir / "world").string() + " exec " KELP_FILTER " \"$@\"\n");
        fs::permissions(filter, fs::perms(0755));
    }
};

TEST_F(Print, TakesADocumentToItsDescriptionPictureAndStream) {
    const ProcessResult result =
        print("square.ps", {"-o", "HalftoneType=None", "--output", "out.png", "--stream", "out.zpl",
                            "--log", "out.log"});
    ASSERT_EQ(result.exit_status, 0) << result.error;
    EXPECT_EQ(result.error, "");
    // 4 inches are 812 dots, in rows of whole bytes 816; 6 inches are 1218.
    EXPECT_TRUE(result.output.starts_with("Label 1\n  size:             816 x 1218 dots"))
        << result.output;
    EXPECT_NE(result.output.find("  picture:          out.png\n"), std::string::npos);

    // An inch is 203 dots; a dot more may be touched.
    const Picture picture = read_png(dir / "out.png");
    ASSERT_EQ(picture.rows.size(), 1218U);
    for (const std::size_t y : {1218U - 203U, 1218U - 100U, 1217U}) {
        EXPECT_EQ(picture.rows[y].substr(0, 203), std::string(203, '#')) << y;
        EXPECT_EQ(picture.rows[y].substr(204), std::string(816 - 204, '.')) << y;
    }
    EXPECT_EQ(picture.rows[1218 - 205], std::string(816, '.'));

    EXPECT_TRUE(read_file(dir / "out.zpl").starts_with(std::string(64, '\n') + "SIZE "));
    EXPECT_NE(read_file(dir / "out.log").find("DEBUG:header.cupsWidth:812"), std::string::npos);
    EXPECT_EQ(run({"show", "out.zpl", "-o", "out.png"}).output, result.output);
}

TEST_F(Print, PassesOnOptionsAndCopies) {
    const ProcessResult result =
        print("square.ps", {"--copies", "3", "-o", "Darkness=12", "-o", "PrintSpeed=4", "--json"});
    ASSERT_EQ(result.exit_status, 0) << result.error;
    const auto label = nlohmann::json::parse(result.output)["labels"][0];
    EXPECT_EQ(label["copies"], 3);
    EXPECT_EQ(label["darkness"], 12);
    EXPECT_EQ(label["speed"], "4");
}

TEST_F(Print, TakesAnyNameForAFile) {
    for (const char* name : {"-o.ps", "with space.ps", "$(id).ps", "%d'\".ps"}) {
        write_file(dir / name, square);
        EXPECT_EQ(print(name).exit_status, 0) << name;
    }
}

TEST_F(Print, TakesOneValueForEachOption) {
    Command command = given({"print", "--ppd", KELP_PPD_DIR "/kelp-label-4inch.ppd", "-o",
                             "PageSize=4x6in", "missing.ps", "--json"});
    EXPECT_EQ(run_process(command).error, "kelp-preview: no regular file: missing.ps\n");
}

TEST_F(Print, TakesTheTypeThatItIsTold) {
    const ProcessResult text = print("square.ps", {"--type", "text/plain", "--log", "log"});
    EXPECT_EQ(text.exit_status, 0) << text.error;
    EXPECT_NE(read_file(dir / "log").find("texttopdf"), std::string::npos);
    EXPECT_EQ(print("square.ps", {"--type", "no/such"}).exit_status, 1);
}

TEST_F(Print, TellsInALineWhyADocumentIsNotPrinted) {
    write_file(dir / "broken.pdf", "%PDF-1.4\nno more");
    write_file(dir / "empty.ps", "%!PS\n");
    write_file(dir / "unknown", std::string("\x01\x02\x03\x00\xFF", 5));
    fs::create_directory(dir / "folder.ps");
    for (const std::string file :
         {"broken.pdf", "empty.ps", "unknown", "folder.ps", "missing.ps"}) {
        const ProcessResult result = print(file, {"--output", "out.png", "--stream", "out.zpl"});
        EXPECT_EQ(result.exit_status, 1) << file;
        EXPECT_EQ(result.output, "");
        EXPECT_TRUE(result.error.starts_with("kelp-preview: ")) << result.error;
        EXPECT_NE(result.error.find(file), std::string::npos) << result.error;
        EXPECT_EQ(std::count(result.error.begin(), result.error.end(), '\n'), 1) << result.error;
        EXPECT_FALSE(fs::exists(dir / "out.png"));
        EXPECT_FALSE(fs::exists(dir / "out.zpl"));
    }
    EXPECT_NE(print("broken.pdf").error.find("damaged file"), std::string::npos);
}

TEST_F(Print, ShowsNothingOfAJobWhoseFilterFailsInTheMiddle) {
    const fs::path filter = dir / "spooler/cups/filter/rastertokelp";
    std::string script = read_file(filter);
    const std::size_t exec = script.find(" exec ");
    script.replace(exec, 6, " ");
    write_file(filter, script + "echo 'ERROR:No more paper' >&2\nexit 1\n");
    const ProcessResult result = print("square.ps", {"--output", "out.png"});
    EXPECT_EQ(result.exit_status, 1);
    EXPECT_EQ(result.output, "");
    EXPECT_EQ(result.error, "kelp-preview: square.ps is not printed: ERROR:No more paper\n");
    EXPECT_FALSE(fs::exists(dir / "out.png"));
}

TEST_F(Print, KeepsTheLogOfADocumentThatIsNotPrinted) {
    write_file(dir / "broken.pdf", "%PDF-1.4\nno more");
    EXPECT_EQ(print("broken.pdf", {"--log", "log"}).exit_status, 1);
    EXPECT_NE(read_file(dir / "log").find("ERROR:"), std::string::npos);
}

TEST_F(Print, NeedsAPpdThatIsThere) {
    EXPECT_EQ(run({"print", "square.ps"}).exit_status, 1);
    const ProcessResult result = run({"print", "square.ps", "--ppd", "missing.ppd"});
    EXPECT_EQ(result.exit_status, 1);
    EXPECT_NE(result.error.find("missing.ppd"), std::string::npos);
}

}  // namespace
