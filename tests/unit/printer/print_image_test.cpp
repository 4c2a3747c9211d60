#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>
#include <string>

#include "enhance/tattoo.h"
#include "tests/support/files.h"
#include "tests/unit/printer/support/fixed_time.h"
#include "tests/unit/printer/support/moved_files.h"
#include "tests/unit/printer/support/page.h"

namespace kelp_test {
namespace {

class PrintImage : public testing::Test {
  protected:
    PrintImage() { page_index = 3; }
    ~PrintImage() override { page_index = 0; }

    // Prints a page. The log keeps what it says, with the processing result's address as "RESULT"
    // and the address reported for the content as "RESULT + offset".
    void print(const Bytes& pixels, unsigned long bytesPerLine, unsigned long height,
               unsigned long width) {
        log = stderr_of([&] { printer.printImage(pixels.data(), bytesPerLine, height, width); });
        const std::uintptr_t result =
            take_number("Freed the memory for processing result, address: 0x", 16);
        const std::uintptr_t content = take_number("pointer address: ", 10);
        put("Freed the memory for processing result, address: 0x", "RESULT");
        put("pointer address: ", "RESULT + " + std::to_string(content - result));
    }

    const FixedTime time{2026, 3, 5, 9, 7, 2};
    MovedFiles files;
    RecordingPrinter printer;
    std::string log;

  private:
    // Removes the number that stands behind a text from the log.
    std::uintptr_t take_number(const std::string& text, int base) {
        const std::size_t at = log.find(text);
        if (at == std::string::npos) {
            ADD_FAILURE() << "no \"" << text << "\" in\n" << log;
            return 0;
        }
        std::size_t digits = 0;
        const std::uintptr_t number = std::stoull(log.substr(at + text.size()), &digits, base);
        log.erase(at + text.size(), digits);
        return number;
    }
    // Puts another text where a number was taken, "0x" before it gone.
    void put(std::string text, const std::string& value) {
        std::size_t at = log.find(text);
        if (text.ends_with("0x")) {
            text.resize(text.size() - 2);
            log.erase(at + text.size(), 2);
        }
        log.insert(at + text.size(), value);
    }
};

// 16 wide in lines of 20 bytes, 20 high; only row 10 is inked.
Bytes one_inked_row() {
    Bytes pixels(20 * 20);
    // The blank-row counters take rows a width apart, whatever the line length: row 10 is there.
    for (std::size_t x = 0; x < 16; ++x) {
        pixels[10 * 16 + x] = 255;
    }
    return pixels;
}

const std::string begin =
    "DEBUG:printImage: Start processing image, input width: 16, height: 20, bytes per line: 20\n"
    "DEBUG:printImage: Memory allocated successfully, size: 400 bytes\n";
const std::string middle =
    "DEBUG:printImage: Saving original image, file path will be generated based on time\n"
    "DEBUG:printImage: Memory for processing result allocated successfully, size: 400 bytes\n"
    "DEBUG:PageProcess: TQ dithering is disabled\n"
    "DEBUG:PageProcess: Successfully created CxImage from array with stride 20\n"
    "DEBUG:PageProcess: Applied default dithering and increased bit depth\n"
    "DEBUG:PageProcess: negativePrint_ 0\n"
    "DEBUG:PageProcess: Filled the output buffer with processed pixels, length: 320\n";
const std::string end =
    "DEBUG:printImage: Saving processed image, file path will be generated based on time\n"
    "DEBUG:printImage: Starting to print the processed image\n"
    "DEBUG:printImage: Freed the allocated memory, address: (nil)\n"
    "DEBUG:printImage: Freed the memory for processing result, address: RESULT\n"
    "DEBUG:printImage: Image processing completed\n";

TEST_F(PrintImage, WithoutFlagsNothingIsMeasured) {
    print(one_inked_row(), 20, 20, 16);
    // Width and bytes per line have changed places in the last line of the middle.
    EXPECT_EQ(log, begin + middle +
                       "DEBUG:printImage: Processed image information - pointer address: RESULT + "
                       "0, width: 20, height: 20, bytes per line: 16, number of top blank lines: "
                       "0, number of bottom blank lines: 0, adjusted height: 20\n" +
                       end);
}

TEST_F(PrintImage, TheTopAloneIsMeasuredWithoutAnAdjustment) {
    printer.setRemoveBlankEdges(0x02);
    print(one_inked_row(), 20, 20, 16);
    // Rows are 20 bytes long and 16 apart, so that row 9 reaches into row 10: seen from the row
    // after row 8.
    EXPECT_EQ(log, begin +
                       "DEBUG:printImage: Removal of top blank edges detected, number of top "
                       "blank lines: 8\n" +
                       middle +
                       "DEBUG:printImage: Processed image information - pointer address: RESULT + "
                       "0, width: 20, height: 20, bytes per line: 16, number of top blank lines: "
                       "8, number of bottom blank lines: 0, adjusted height: 20\n" +
                       end);
}

TEST_F(PrintImage, TheBottomAloneIsMeasuredAndAdjusts) {
    printer.setRemoveBlankEdges(0x08);
    print(one_inked_row(), 20, 20, 16);
    EXPECT_EQ(log, begin +
                       "DEBUG:printImage: Removal of bottom blank edges detected, number of "
                       "bottom blank lines: 11\n" +
                       middle +
                       "DEBUG:printImage: Adjusted image height to 11, pointer offset by 0 bytes\n"
                       "DEBUG:printImage: Processed image information - pointer address: RESULT + "
                       "0, width: 20, height: 20, bytes per line: 16, number of top blank lines: "
                       "0, number of bottom blank lines: 11, adjusted height: 11\n" +
                       end);
}

TEST_F(PrintImage, BothAreMeasuredBottomFirst) {
    printer.setRemoveBlankEdges(0x0A);
    print(one_inked_row(), 20, 20, 16);
    // 8 rows of 20 bytes
    EXPECT_EQ(log, begin +
                       "DEBUG:printImage: Removal of bottom blank edges detected, number of "
                       "bottom blank lines: 11\n"
                       "DEBUG:printImage: Removal of top blank edges detected, number of top "
                       "blank lines: 8\n" +
                       middle +
                       "DEBUG:printImage: Adjusted image height to 3, pointer offset by 160 "
                       "bytes\n"
                       "DEBUG:printImage: Processed image information - pointer address: RESULT + "
                       "160, width: 20, height: 20, bytes per line: 16, number of top blank "
                       "lines: 8, number of bottom blank lines: 11, adjusted height: 3\n" +
                       end);
}

TEST_F(PrintImage, OtherFlagsMeasureNothing) {
    printer.setRemoveBlankEdges(0xF5);
    print(one_inked_row(), 20, 20, 16);
    EXPECT_EQ(log.find("blank edges"), std::string::npos) << log;
    EXPECT_EQ(log.find("Adjusted"), std::string::npos) << log;
}

TEST_F(PrintImage, ThePackedPageOfTheExampleHasItsContentReported) {
    printer.setRemoveBlankEdges(0x0A);
    Bytes pixels(16 * 20);
    pixels[10 * 16 + 5] = 255;
    print(pixels, 16, 20, 16);
    EXPECT_NE(log.find("number of bottom blank lines: 11\n"), std::string::npos) << log;
    EXPECT_NE(log.find("number of top blank lines: 9\n"), std::string::npos) << log;
    EXPECT_NE(log.find("Adjusted image height to 2, pointer offset by 144 bytes\n"),
              std::string::npos)
        << log;
    EXPECT_NE(log.find("RESULT + 144, width: 16"), std::string::npos) << log;
}

TEST_F(PrintImage, ABlankPageIsNotAdjusted) {
    printer.setRemoveBlankEdges(0x0A);
    print(Bytes(16 * 20), 16, 20, 16);
    EXPECT_NE(log.find("number of bottom blank lines: 0\n"), std::string::npos) << log;
    EXPECT_NE(log.find("number of top blank lines: 20\n"), std::string::npos) << log;
    EXPECT_EQ(log.find("Adjusted"), std::string::npos) << log;
    EXPECT_NE(log.find("number of top blank lines: 20, number of bottom blank lines: 0, adjusted "
                       "height: 20\n"),
              std::string::npos)
        << log;
}

TEST_F(PrintImage, AnEndThatIsNotBehindTheTopIsNotAdjusted) {
    printer.setRemoveBlankEdges(0x0A);
    print({255, 255, 255, 255, 0, 0, 0, 0}, 4, 2, 4);  // end 1, top 2
    EXPECT_EQ(log.find("Adjusted"), std::string::npos) << log;
    print({255, 255, 255, 255}, 4, 1, 4);  // end 1, top 1
    EXPECT_NE(log.find("lines: 1, number of bottom blank lines: 1, adjusted height: 1\n"),
              std::string::npos)
        << log;
    EXPECT_EQ(log.find("Adjusted"), std::string::npos) << log;
}

TEST_F(PrintImage, SkippedPixelsAreNotMeasured) {
    printer.setRemoveBlankEdges(0x0A).setSkipRightPixels(4);
    Bytes pixels(16 * 6);
    pixels[3 * 16 + 12] = 255;  // the first of the four skipped
    print(pixels, 16, 6, 16);
    EXPECT_NE(log.find("number of bottom blank lines: 0\n"), std::string::npos) << log;
    EXPECT_NE(log.find("number of top blank lines: 6\n"), std::string::npos) << log;
}

TEST_F(PrintImage, TheWholePageIsPrintedWhateverWasMeasured) {
    printer.setRemoveBlankEdges(0x0A);
    Bytes pixels(5 * 4);
    pixels[2 * 5 + 1] = 255;
    print(pixels, 5, 4, 5);
    ASSERT_EQ(printer.prints.size(), 1U);
    const auto& page = printer.prints[0];
    EXPECT_EQ(page.bytesPerLine, 8UL);
    EXPECT_EQ(page.height, 4UL);
    EXPECT_EQ(page.width, 5UL);
    Bytes expected(8 * 4);
    expected[2 * 8 + 1] = 1;
    EXPECT_EQ(page.bytes, expected);
    EXPECT_EQ(page.address, printer.processedImage()->GetBits());
}

TEST_F(PrintImage, ThePrintersHalftoneIsUsed) {
    printer.setHalftoneType(DitherStevensonArce);
    print({40, 200, 40, 255}, 4, 1, 4);
    // the first row of the computed matrix: 0 192 48 240
    EXPECT_EQ(printer.prints.at(0).bytes, (Bytes{1, 1, 0, 1}));
}

TEST_F(PrintImage, SnapshotsShowThePageBeforeAndAfter) {
    print({0, 200, 255, 100, 129,  //
           255, 0, 0, 0, 0},
          5, 2, 5);
    EXPECT_EQ(files.snapshots(), (std::vector<std::string>{"dithered_2026-3-5_9_7_2_4.bmp",
                                                           "origin_2026-3-5_9_7_2_3.bmp"}));
    EXPECT_EQ(page_index, 5UL);
    const std::string directory = "/var/spool/cups/tmp/";
    ASSERT_EQ(files.opened().size(), 2U);
    EXPECT_EQ(files.opened()[0].path, directory + "origin_2026-3-5_9_7_2_3.bmp");
    EXPECT_EQ(files.opened()[1].path, directory + "dithered_2026-3-5_9_7_2_4.bmp");

    const std::string origin = read_file(files.real_path(files.opened()[0].path));
    ASSERT_EQ(origin.size(), 1078U + 10U);
    EXPECT_EQ(origin.substr(18, 8), std::string("\5\0\0\0\2\0\0\0", 8));
    EXPECT_EQ(origin.substr(1078), std::string("\x00\xC8\xFF\x64\x81\xFF\0\0\0\0", 10));

    // 10 bytes from rows that are 8 apart: the second row's first two pixels
    const std::string dithered = read_file(files.real_path(files.opened()[1].path));
    ASSERT_EQ(dithered.size(), 1078U + 10U);
    EXPECT_EQ(dithered.substr(18, 8), std::string("\5\0\0\0\2\0\0\0", 8));
    EXPECT_EQ(dithered.substr(1078), std::string("\0\1\1\0\1\0\0\0\1\0", 10));
}

TEST_F(PrintImage, TheFirstSnapshotIsAsWideAsThePixelsNotTheLines) {
    print({0, 200, 255, 9, 9, 9,  //
           255, 0, 7, 9, 9, 9},
          6, 2, 3);
    const std::string origin = read_file(files.real_path(files.opened().at(0).path));
    EXPECT_EQ(origin.substr(18, 8), std::string("\3\0\0\0\2\0\0\0", 8));
    // 3 * 2 bytes as they come: the first line, its gap included
    EXPECT_EQ(origin.substr(1078), std::string("\x00\xC8\xFF\x09\x09\x09", 6));
}

TEST_F(PrintImage, ASecondPageGoesOnCountingSnapshots) {
    print(Bytes(4), 4, 1, 4);
    print(Bytes(4), 4, 1, 4);
    EXPECT_EQ(files.snapshots().size(), 4U);
    EXPECT_EQ(files.opened().at(3).path, "/var/spool/cups/tmp/dithered_2026-3-5_9_7_2_6.bmp");
    EXPECT_EQ(printer.prints.size(), 2U);
}

TEST_F(PrintImage, SnapshotsCanBeLeftOut) {
    print(one_inked_row(), 20, 20, 16);
    const Bytes printed = printer.prints.back().bytes;
    const std::size_t before = files.snapshots().size();
    printer.setSnapshots(false);
    print(one_inked_row(), 20, 20, 16);
    EXPECT_EQ(files.snapshots().size(), before);
    EXPECT_EQ(page_index, 3 + before);
    EXPECT_EQ(log.find("Saving"), std::string::npos);
    EXPECT_EQ(printer.prints.back().bytes, printed);
}

TEST_F(PrintImage, SnapshotsThatCannotBeOpenedDoNotStopThePage) {
    files.remove_snapshot_directory();
    print(Bytes(4), 4, 1, 4);
    const std::string failure = "KelpPrinter::saveImage: unable to open the file ";
    const std::string origin = "generated based on time\n" + failure +
                               "/var/spool/cups/tmp/origin_2026-3-5_9_7_2_3.bmp\nDEBUG:";
    const std::string dithered = "generated based on time\n" + failure +
                                 "/var/spool/cups/tmp/dithered_2026-3-5_9_7_2_4.bmp\nDEBUG:";
    EXPECT_NE(log.find(origin), std::string::npos) << log;
    EXPECT_NE(log.find(dithered), std::string::npos) << log;
    EXPECT_EQ(printer.prints.size(), 1U);
    EXPECT_EQ(page_index, 5UL);
}

TEST_F(PrintImage, ATattooPageInLongerLinesIsTakenAsPackedAllTheSame) {
    // As PageProcess does: 64 pixels of each line of 128 bytes are written, the others stay 0, and
    // what is read are the first 64 rows of 64.
    Bytes pixels(std::size_t{128} * 64);
    Bytes sheared(std::size_t{64} * 64);
    for (std::size_t i = 0; i < pixels.size(); ++i) {
        pixels[i] = static_cast<unsigned char>(i * i * 7);
        if (i % 128 < 64 && i < sheared.size()) {
            sheared[i] = pixels[i];
        }
    }
    TQImage grey(64, 64, TQ_IMG_GRAY, sheared.data());
    const TQImage expected = tqTattooDithering(grey);
    printer.setHalftoneType(DitherTattoo);
    print(pixels, 128, 64, 64);
    ASSERT_EQ(printer.prints.size(), 1U);
    EXPECT_EQ(printer.prints[0].bytes, Bytes(expected.data, expected.data + sheared.size()));
}

}  // namespace
}  // namespace kelp_test
