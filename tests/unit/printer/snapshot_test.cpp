#include <gtest/gtest.h>

#include <fstream>
#include <initializer_list>
#include <iterator>
#include <string>

#include "tests/support/files.h"
#include "tests/support/temp_dir.h"
#include "tests/unit/image/allocation_failure.h"
#include "tests/unit/printer/support/fixed_time.h"
#include "tests/unit/printer/support/moved_files.h"
#include "tests/unit/printer/support/recording_printer.h"
#include "tests/unit/printer/support/stderr_capture.h"

namespace kelp_test {
namespace {

class Snapshot : public testing::Test {
  protected:
    ~Snapshot() override { page_index = 0; }

    std::string save(unsigned short depth = 8) {
        return stderr_of([&] { printer.saveImage(pixels.data(), 4, 1, 4, depth); });
    }
    void use_template(const std::string& name) {
        printer.setSnapshotTemplate((directory / name).c_str());
    }

    const TempDir directory;
    RecordingPrinter printer;
    Bytes pixels{0, 1, 2, 3};
};

constexpr const char* origin = "origin_%d-%d-%d_%d_%d_%d_%ld.bmp";

TEST_F(Snapshot, IsNamedByLocalTimeWithoutPaddingAndByItsNumber) {
    const FixedTime time(2026, 3, 5, 9, 7, 2);
    page_index = 3;
    use_template(origin);
    EXPECT_EQ(save(), "");
    EXPECT_EQ(read_directory(directory.path()).begin()->first, "origin_2026-3-5_9_7_2_3.bmp");
    EXPECT_EQ(page_index, 4UL);
}

TEST_F(Snapshot, TwoDigitTimesAreWrittenInFull) {
    const FixedTime time(2031, 12, 31, 23, 59, 58);
    page_index = 1234567890123UL;
    use_template(origin);
    save();
    EXPECT_EQ(read_directory(directory.path()).begin()->first,
              "origin_2031-12-31_23_59_58_1234567890123.bmp");
}

TEST_F(Snapshot, NumbersCountOnWithinASecond) {
    const FixedTime time(2026, 3, 5, 9, 7, 2);
    page_index = 0;
    use_template(origin);
    save();
    use_template("dithered_%d-%d-%d_%d_%d_%d_%ld.bmp");
    save();
    const auto files = read_directory(directory.path());
    EXPECT_EQ(files.size(), 2U);
    EXPECT_TRUE(files.contains("origin_2026-3-5_9_7_2_0.bmp"));
    EXPECT_TRUE(files.contains("dithered_2026-3-5_9_7_2_1.bmp"));
}

TEST_F(Snapshot, TheNumberIsSharedByAllPrinters) {
    const FixedTime time(2026, 3, 5, 9, 7, 2);
    page_index = 7;
    use_template(origin);
    save();
    RecordingPrinter other;
    other.setSnapshotTemplate((directory / "other_%d-%d-%d_%d_%d_%d_%ld.bmp").c_str());
    other.saveImage(pixels.data(), 4, 1, 4, 8);
    const auto files = read_directory(directory.path());
    EXPECT_TRUE(files.contains("origin_2026-3-5_9_7_2_7.bmp"));
    EXPECT_TRUE(files.contains("other_2026-3-5_9_7_2_8.bmp"));
}

TEST_F(Snapshot, ANewPrinterHasATemplateOfItsOwn) {
    const FixedTime time(2026, 3, 5, 9, 7, 2);
    MovedFiles files;
    page_index = 11;
    EXPECT_EQ(save(), "");
    ASSERT_EQ(files.opened().size(), 1U);
    EXPECT_EQ(files.opened()[0].path, "/var/spool/cups/tmp/prnimg_2026-3-5_9_7_2_11.bmp");
    EXPECT_EQ(files.opened()[0].mode, "wb+");
}

TEST_F(Snapshot, HoldsThePageAsABitmap) {
    use_template("page.bmp");
    save();
    const std::string file = read_file(directory / "page.bmp");
    ASSERT_EQ(file.size(), 1078U + 4U);
    EXPECT_EQ(file.substr(0, 2), "BM");
    EXPECT_EQ(file.substr(1078), std::string("\0\1\2\3", 4));
}

TEST_F(Snapshot, TakesOneBitPerPixelToo) {
    use_template("page.bmp");
    save(1);
    const std::string file = read_file(directory / "page.bmp");
    ASSERT_EQ(file.size(), 62U + 4U);
    // 1000, filled up with ones
    EXPECT_EQ(file.substr(62), std::string("\x8F\0\0\0", 4));
}

TEST_F(Snapshot, PassesBytesPerLineHeightAndWidthOn) {
    use_template("page.bmp");
    pixels = {1, 1, 1, 1, 1, 0,  //
              0, 1, 1, 1, 1, 1};
    printer.saveImage(pixels.data(), 6, 2, 5, 1);
    const std::string file = read_file(directory / "page.bmp");
    EXPECT_EQ(file.substr(18, 8), std::string("\5\0\0\0\2\0\0\0", 8));
    // bottom row 1000 00, top row 0000 01, each with two ones behind it
    EXPECT_EQ(file.substr(62), std::string("\x83\0\0\0\x07\0\0\0", 8));
}

TEST_F(Snapshot, AnOlderFileIsReplacedWhole) {
    use_template("page.bmp");
    write_file(directory / "page.bmp", std::string(5000, 'x'));
    save();
    EXPECT_EQ(read_file(directory / "page.bmp").size(), 1082U);
}

TEST_F(Snapshot, AFileThatCannotBeOpenedIsReportedAndStillCounted) {
    const FixedTime time(2026, 3, 5, 9, 7, 2);
    page_index = 21;
    use_template("missing/%d-%d-%d_%d_%d_%d_%ld.bmp");
    EXPECT_EQ(save(), "KelpPrinter::saveImage: unable to open the file " +
                          (directory / "missing/2026-3-5_9_7_2_21.bmp").string() + "\n");
    EXPECT_EQ(page_index, 22UL);
}

TEST_F(Snapshot, NeedsNoMemoryOfItsOwn) {
    for (const auto depth : std::initializer_list<unsigned short>{8, 1}) {
        use_template(std::to_string(depth));
        {
            const AllocationFailure none(1);
            EXPECT_NO_THROW(printer.saveImage(pixels.data(), 4, 1, 4, depth));
            EXPECT_EQ(none.refused(), 0U);
        }
        EXPECT_EQ(read_file(directory / std::to_string(depth)).size(), depth == 8 ? 1082U : 66U);
    }
}

TEST_F(Snapshot, ALinkInItsPlaceIsNotFollowed) {
    write_file(directory / "target", "precious");
    std::filesystem::create_symlink(directory / "target", directory / "page.bmp");
    use_template("page.bmp");
    EXPECT_EQ(save(), "KelpPrinter::saveImage: unable to open the file " +
                          (directory / "page.bmp").string() + "\n");
    EXPECT_EQ(read_file(directory / "target"), "precious");
}

TEST_F(Snapshot, ATemplateIsCutToItsField) {
    // 1023 characters are kept: the name behind them is lost.
    const std::string base = directory.path().string() + "/";
    const std::string slashes(1023 - base.size() - 4, '/');
    printer.setSnapshotTemplate((base + slashes + "kept-and-cut").c_str());
    EXPECT_EQ(save(), "");
    EXPECT_EQ(read_directory(directory.path()).begin()->first, "kept");
}

}  // namespace
}  // namespace kelp_test
