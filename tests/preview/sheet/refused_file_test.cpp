// Files that are no picture, or cannot be read: status 1, a clear line, and no file is left.

#include <gtest/gtest.h>
#include <png.h>
#include <sys/stat.h>
#include <unistd.h>

#include <filesystem>
#include <string>

#include "tests/preview/sheet/picture_files.h"
#include "tests/preview/sheet/sheet_program.h"
#include "tests/support/files.h"

namespace {

namespace fs = std::filesystem;
using namespace std::string_literals;
using kelp_test::write_file;

class RefusedFile : public kelp_test::SheetProgram {
  protected:
    std::string refusal_of_bytes(const std::string& content) {
        write_file(dir / "in", content);
        return refusal({"in", "-o", "out.png"});
    }
    ~RefusedFile() override {
        for (const auto& entry : fs::directory_iterator(dir.path())) {
            EXPECT_EQ(entry.path().extension(), "") << entry.path();  // no sheet, whole or in part
        }
    }

    const std::string no_picture = "in: no PNG, JPEG, PGM, PDF or PostScript file";
};

TEST_F(RefusedFile, OfAnotherKind) {
    for (const std::string& content :
         {""s, "P"s, "\x89PN"s, "\xFF\xD8"s, "Dear reader, P5 is no picture.\n"s, "GIF89a"s,
          "P6 1 1 255 abc"s, "%PD"s, std::string(3000, '\0'),
          std::string(1024, ' ') + "%PDF-1.4"}) {
        EXPECT_EQ(refusal_of_bytes(content), no_picture) << content.substr(0, 10);
    }
}

TEST_F(RefusedFile, OfAPictureThatIsCutOff) {
    EXPECT_TRUE(refusal_of_bytes("\x89PNG\r\n\x1A\n").starts_with("in: a broken PNG: "));
    EXPECT_TRUE(refusal_of_bytes("\xFF\xD8\xFF").starts_with("in: a broken JPEG: "));
    EXPECT_EQ(refusal_of_bytes("P5"), "in: a broken PGM: it ends early");
}

TEST_F(RefusedFile, AFolderAPipeADeviceAndNothingAreNamed) {
    fs::create_directory(dir / "folder");
    ASSERT_EQ(mkfifo((dir / "pipe").c_str(), 0600), 0);
    EXPECT_EQ(refusal({"folder"}), "folder: not a regular file");
    EXPECT_EQ(refusal({"pipe"}), "pipe: not a regular file");
    EXPECT_EQ(refusal({"/dev/zero"}), "/dev/zero: not a regular file");
    EXPECT_EQ(refusal({"missing"}), "missing: No such file or directory");
    EXPECT_EQ(refusal({"-"}), "-: No such file or directory");
    EXPECT_EQ(refusal({"new\nline\x1B"}), "new\\x0Aline\\x1B: No such file or directory");
}

TEST_F(RefusedFile, WithoutPermissionIsNamed) {
    write_file(dir / "in", "P5 1 1 255\na");
    fs::permissions(dir / "in", fs::perms::none);
    kelp_test::Command command = sheet_command({"in"});
    if (geteuid() == 0) {
        // Not even root's own files, without the power over all files.
        command.arguments.insert(command.arguments.begin(),
                                 {"--bounding-set=-dac_override,-dac_read_search",
                                  "--inh-caps=-all", "--", command.program.string()});
        command.program = "/usr/bin/setpriv";
    }
    EXPECT_EQ(refusal_of(run_process(command)), "in: Permission denied");
}

TEST_F(RefusedFile, AHugeSizeTakesNoMemory) {
    // The head of a JPEG declares its height and width behind FF C0 (or C2), length and precision.
    std::string jpeg = kelp_test::jpeg_file({8, 8, 3, std::string(192, 'x')});
    std::string progressive = kelp_test::jpeg_file({8, 8, 3, std::string(192, 'x'), true});
    for (std::string* file : {&jpeg, &progressive}) {
        const std::size_t head = file->find(file == &jpeg ? "\xFF\xC0" : "\xFF\xC2");
        ASSERT_NE(head, std::string::npos);
        kelp_test::put_number(*file, head + 5, 2, 3000);
        kelp_test::put_number(*file, head + 7, 2, 65000);  // 195 million, within the limit
    }
    for (const std::string& content :
         {jpeg, progressive, kelp_test::png_that_declares(14000, 14000), "P5 14000 14000 255\nab"s,
          "P2 14000 14000 255 1 2"s, "P5 14000 14000 65535\nab"s}) {
        write_file(dir / "in", content);
        const kelp_test::ProcessResult result = run_process(sheet_command({"in"}));
        EXPECT_TRUE(refusal_of(result).starts_with("in: a broken ")) << result.error;
        EXPECT_LT(result.peak_resident_kib, 200 * 1024) << content.substr(0, 10);
    }
    for (const std::string& content :
         {kelp_test::png_that_declares(20000, 20000), "P5 20000 20000 255\nab"s}) {
        EXPECT_EQ(refusal_of_bytes(content),
                  "in: a picture of 20000 x 20000 pixels is over the limit of 200000000");
    }
}

TEST_F(RefusedFile, AHugePageTakesNoMemory) {
    write_file(dir / "in", "P5 1 1 255\na");
    const kelp_test::ProcessResult result =
        run_process(sheet_command({"in", "--page", "32000x32000"}));
    EXPECT_EQ(refusal_of(result),
              "in: a picture of 32000 x 32000 pixels is over the limit of 200000000");
    EXPECT_LT(result.peak_resident_kib, 200 * 1024);
}

TEST_F(RefusedFile, APictureHasOnePage) {
    write_file(dir / "in", "P5 1 1 255\na");
    EXPECT_EQ(refusal({"in", "--page-number", "2"}), "in: a picture has one page");
}

TEST_F(RefusedFile, APictureThatSpeaksOfADocumentIsAPicture) {
    write_file(dir / "in", "P2 #%PDF-1.4\n1 1 255 x");
    EXPECT_EQ(refusal({"in"}), "in: a broken PGM: a number is missing");
}

}  // namespace
