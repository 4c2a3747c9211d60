#include <gtest/gtest.h>

#include <cstddef>
#include <functional>
#include <string>

#include "tests/unit/printer/support/page.h"

namespace kelp_test {
namespace {

class AntiWrinkleBorder : public testing::Test {
  protected:
    AntiWrinkleBorder() { printer.setPageHeader(&header); }

    void page_size(const std::string& name) {
        name.copy(header.cupsPageSizeName, sizeof header.cupsPageSizeName - 1);
    }
    // A grey image of one level.
    void image_of(unsigned width, unsigned height, unsigned char level) {
        const Bytes pixels(std::size_t{width} * height, level);
        image.CreateFromArray(pixels.data(), width, height, 8, width, false);
    }
    std::string frame() {
        return stderr_of([&] { printer.EnableAntiWrink(image); });
    }
    std::string size() const {
        return std::to_string(image.GetWidth()) + "x" + std::to_string(image.GetHeight());
    }
    // Pixels that differ from what a bar or its absence makes of them.
    int wrong_pixels(const std::function<int(int x, int y)>& expected) const {
        int wrong = 0;
        for (int y = 0; y < static_cast<int>(image.GetHeight()); ++y) {
            for (int x = 0; x < static_cast<int>(image.GetWidth()); ++x) {
                wrong += image.GetPixelIndex(x, y) != expected(x, y);
            }
        }
        return wrong;
    }

    cups_page_header2_t header{};
    RecordingPrinter printer;
    CxImage image;
};

const std::string invalid = "DEBUG:EnableAntiWrink: Image or pageHdr_ is not valid, returning.\n";

TEST_F(AntiWrinkleBorder, AnEmptyImageIsLeftAlone) {
    printer.setAntiWrinkle(2);
    EXPECT_EQ(frame(), invalid);
    EXPECT_FALSE(image.IsValid());
}

TEST_F(AntiWrinkleBorder, WithoutAPageHeaderTheImageIsLeftAlone) {
    image_of(8, 8, 7);
    printer.setAntiWrinkle(2).setPageHeader(nullptr);
    EXPECT_EQ(frame(), invalid);
    EXPECT_EQ(wrong_pixels([](int, int) { return 7; }), 0);
}

TEST_F(AntiWrinkleBorder, ASmallImageIsCentredOnItsCanvasAndFramed) {
    printer.set_resolution(203);
    printer.setAntiWrinkle(2);
    page_size("Tattoo_A6");  // 831 x 959, bars of 16 and 8
    image_of(31, 59, 7);     // 400 and 450 to either side
    EXPECT_EQ(frame(),
              "DEBUG:EnableAntiWrink: AntiWrinkle level: 2, line_v: 16 points, line_h: 8 points.\n"
              "DEBUG:EnableAntiWrink: Page size is Tattoo_A6, CanvasWidth: 831, CanvasHeight: "
              "959\n"
              "DEBUG:EnableAntiWrink: Image width is less than canvas width, exPoints: 400\n"
              "DEBUG:EnableAntiWrink: Image height is less than canvas height, eyPoints: 450\n"
              "DEBUG:EnableAntiWrink: Image expanded successfully.\n"
              "DEBUG:EnableAntiWrink: Drawing left line. point(0, 0, 16, 959)\n"
              "DEBUG:EnableAntiWrink: Drawing top line. point(0, 0, 831, 8)\n"
              "DEBUG:EnableAntiWrink: Drawing right line. point(815, 0, 831, 959)\n"
              "DEBUG:EnableAntiWrink: Drawing bottom line. point(0, 951, 831, 959)\n");
    EXPECT_EQ(size(), "831x959");
    // White margins and white bars are the same index in a grey palette.
    EXPECT_EQ(wrong_pixels([](int x, int y) {
                  return x >= 400 && x < 431 && y >= 450 && y < 509 ? 7 : 255;
              }),
              0);
}

TEST_F(AntiWrinkleBorder, AnOddDifferenceLeavesTheImageADotShort) {
    printer.set_resolution(203);
    printer.setAntiWrinkle(2);
    page_size("Tattoo_A6");
    image_of(30, 58, 7);
    EXPECT_EQ(frame(),
              "DEBUG:EnableAntiWrink: AntiWrinkle level: 2, line_v: 16 points, line_h: 8 points.\n"
              "DEBUG:EnableAntiWrink: Page size is Tattoo_A6, CanvasWidth: 831, CanvasHeight: "
              "959\n"
              "DEBUG:EnableAntiWrink: Image width is less than canvas width, exPoints: 400\n"
              "DEBUG:EnableAntiWrink: Image height is less than canvas height, eyPoints: 450\n"
              "DEBUG:EnableAntiWrink: Image expanded successfully.\n"
              "DEBUG:EnableAntiWrink: Drawing left line. point(0, 0, 16, 959)\n"
              "DEBUG:EnableAntiWrink: Drawing top line. point(0, 0, 831, 8)\n"
              "DEBUG:EnableAntiWrink: Drawing right line. point(815, 0, 831, 959)\n"
              "DEBUG:EnableAntiWrink: Drawing bottom line. point(0, 951, 831, 959)\n");
    EXPECT_EQ(size(), "830x958");
}

TEST_F(AntiWrinkleBorder, ADifferenceOfOneDotIsNoExpansion) {
    printer.set_resolution(203);
    printer.setAntiWrinkle(2);
    page_size("Tattoo_A6");
    image_of(830, 958, 7);
    EXPECT_EQ(frame(),
              "DEBUG:EnableAntiWrink: AntiWrinkle level: 2, line_v: 16 points, line_h: 8 points.\n"
              "DEBUG:EnableAntiWrink: Page size is Tattoo_A6, CanvasWidth: 831, CanvasHeight: "
              "959\n"
              "DEBUG:EnableAntiWrink: Image width is less than canvas width, exPoints: 0\n"
              "DEBUG:EnableAntiWrink: Image height is less than canvas height, eyPoints: 0\n"
              "DEBUG:EnableAntiWrink: Drawing left line. point(0, 0, 16, 959)\n"
              "DEBUG:EnableAntiWrink: Drawing top line. point(0, 0, 831, 8)\n"
              "DEBUG:EnableAntiWrink: Drawing right line. point(815, 0, 831, 959)\n"
              "DEBUG:EnableAntiWrink: Drawing bottom line. point(0, 951, 831, 959)\n");
    EXPECT_EQ(size(), "830x958");
    // The right bar has 15 of its 16 columns in the image, the bottom bar 7 of its 8 rows.
    EXPECT_EQ(wrong_pixels(
                  [](int x, int y) { return x < 16 || x >= 815 || y < 8 || y >= 951 ? 255 : 7; }),
              0);
}

TEST_F(AntiWrinkleBorder, ALargerImageIsFramedInItsMiddleAndNotCropped) {
    printer.set_resolution(203);
    printer.setAntiWrinkle(2);
    page_size("Tattoo_A6");
    image_of(842, 964, 7);  // 11 and 5 more than the canvas
    EXPECT_EQ(frame(),
              "DEBUG:EnableAntiWrink: AntiWrinkle level: 2, line_v: 16 points, line_h: 8 points.\n"
              "DEBUG:EnableAntiWrink: Page size is Tattoo_A6, CanvasWidth: 831, CanvasHeight: "
              "959\n"
              "DEBUG:EnableAntiWrink: Image width is greater than canvas width, offset.x: 5\n"
              "DEBUG:EnableAntiWrink: Image height is greater than canvas height, offset.y: 2\n"
              "DEBUG:EnableAntiWrink: Drawing left line. point(5, 2, 21, 961)\n"
              "DEBUG:EnableAntiWrink: Drawing top line. point(5, 2, 836, 10)\n"
              "DEBUG:EnableAntiWrink: Drawing right line. point(820, 2, 836, 961)\n"
              "DEBUG:EnableAntiWrink: Drawing bottom line. point(5, 953, 836, 961)\n");
    EXPECT_EQ(size(), "842x964");
    EXPECT_EQ(wrong_pixels([](int x, int y) {
                  const bool outside = x < 5 || x >= 836 || y < 2 || y >= 961;
                  const bool inside = x >= 21 && x < 820 && y >= 10 && y < 953;
                  return outside || inside ? 7 : 255;
              }),
              0);
}

TEST_F(AntiWrinkleBorder, AnImageMayBeSmallerOneWayAndLargerTheOther) {
    printer.set_resolution(203);
    printer.setAntiWrinkle(2);
    page_size("Tattoo_A6");
    image_of(833, 59, 7);
    EXPECT_EQ(frame(),
              "DEBUG:EnableAntiWrink: AntiWrinkle level: 2, line_v: 16 points, line_h: 8 points.\n"
              "DEBUG:EnableAntiWrink: Page size is Tattoo_A6, CanvasWidth: 831, CanvasHeight: "
              "959\n"
              "DEBUG:EnableAntiWrink: Image height is less than canvas height, eyPoints: 450\n"
              "DEBUG:EnableAntiWrink: Image expanded successfully.\n"
              "DEBUG:EnableAntiWrink: Image width is greater than canvas width, offset.x: 1\n"
              "DEBUG:EnableAntiWrink: Drawing left line. point(1, 0, 17, 959)\n"
              "DEBUG:EnableAntiWrink: Drawing top line. point(1, 0, 832, 8)\n"
              "DEBUG:EnableAntiWrink: Drawing right line. point(816, 0, 832, 959)\n"
              "DEBUG:EnableAntiWrink: Drawing bottom line. point(1, 951, 832, 959)\n");
    EXPECT_EQ(size(), "833x959");
    // The left bar runs over the image's own rows too.
    EXPECT_EQ(image.GetPixelIndex(0, 480), 7);
    EXPECT_EQ(image.GetPixelIndex(1, 480), 255);
    EXPECT_EQ(image.GetPixelIndex(16, 480), 255);
    EXPECT_EQ(image.GetPixelIndex(17, 480), 7);
    EXPECT_EQ(image.GetPixelIndex(832, 480), 7);
}

TEST_F(AntiWrinkleBorder, AnImageOfTheCanvasSizeIsNeitherExpandedNorShifted) {
    printer.set_resolution(203);
    printer.setAntiWrinkle(2);
    page_size("Tattoo_A6");
    image_of(831, 959, 7);
    const std::string log = frame();
    EXPECT_EQ(lines_of(log).size(), 6U) << log;
    EXPECT_EQ(log.find("than canvas"), std::string::npos) << log;
    EXPECT_EQ(wrong_pixels(
                  [](int x, int y) { return x < 16 || x >= 815 || y < 8 || y >= 951 ? 255 : 7; }),
              0);
}

TEST_F(AntiWrinkleBorder, AnUnknownPageSizeDrawsNothing) {
    printer.set_resolution(203);
    printer.setAntiWrinkle(2);
    page_size("A5");
    image_of(40, 31, 7);
    // The canvas is 0 x 0, in the middle of the image; the counters of empty bars stay where they
    // began.
    EXPECT_EQ(frame(),
              "DEBUG:EnableAntiWrink: AntiWrinkle level: 2, line_v: 16 points, line_h: 8 points.\n"
              "DEBUG:EnableAntiWrink: Image width is greater than canvas width, offset.x: 20\n"
              "DEBUG:EnableAntiWrink: Image height is greater than canvas height, offset.y: 15\n"
              "DEBUG:EnableAntiWrink: Drawing left line. point(20, 15, 20, 15)\n"
              "DEBUG:EnableAntiWrink: Drawing top line. point(20, 15, 20, 23)\n"
              "DEBUG:EnableAntiWrink: Drawing right line. point(4, 15, 4, 15)\n"
              "DEBUG:EnableAntiWrink: Drawing bottom line. point(20, 7, 20, 15)\n");
    EXPECT_EQ(wrong_pixels([](int, int) { return 7; }), 0);
    EXPECT_EQ(size(), "40x31");
}

TEST_F(AntiWrinkleBorder, TheResolutionIs300UnlessASubclassSetsIt) {
    printer.setAntiWrinkle(1);
    header.HWResolution[0] = header.HWResolution[1] = 203;  // not looked at
    page_size("Tattoo_A6");                                 // 1205 x 1418, bars of 12 and 12
    image_of(5, 8, 7);
    EXPECT_EQ(frame(),
              "DEBUG:EnableAntiWrink: AntiWrinkle level: 1, line_v: 12 points, line_h: 12 "
              "points.\n"
              "DEBUG:EnableAntiWrink: Page size is Tattoo_A6, CanvasWidth: 1205, CanvasHeight: "
              "1418\n"
              "DEBUG:EnableAntiWrink: Image width is less than canvas width, exPoints: 600\n"
              "DEBUG:EnableAntiWrink: Image height is less than canvas height, eyPoints: 705\n"
              "DEBUG:EnableAntiWrink: Image expanded successfully.\n"
              "DEBUG:EnableAntiWrink: Drawing left line. point(0, 0, 12, 1418)\n"
              "DEBUG:EnableAntiWrink: Drawing top line. point(0, 0, 1205, 12)\n"
              "DEBUG:EnableAntiWrink: Drawing right line. point(1193, 0, 1205, 1418)\n"
              "DEBUG:EnableAntiWrink: Drawing bottom line. point(0, 1406, 1205, 1418)\n");
    EXPECT_EQ(size(), "1205x1418");
}

TEST_F(AntiWrinkleBorder, EveryPageSizeIsNamedInTheLog) {
    printer.set_resolution(203);
    printer.setAntiWrinkle(2);
    const std::pair<const char*, const char*> sizes[] = {
        {"A4", "Page size is A4, CanvasWidth: 1630, CanvasHeight: 2214\n"},
        {"Letter", "Page size is Letter, CanvasWidth: 1710, CanvasHeight: 2070\n"},
        {"Tattoo_A5", "Page size is Tattoo_A5, CanvasWidth: 1630, CanvasHeight: 959\n"},
        {"Tattoo_A6", "Page size is Tattoo_A6, CanvasWidth: 831, CanvasHeight: 959\n"}};
    for (const auto& [name, line] : sizes) {
        header = {};
        page_size(name);
        image_of(30, 30, 0);
        const std::string log = frame();
        EXPECT_NE(log.find(line), std::string::npos) << log;
    }
}

TEST_F(AntiWrinkleBorder, ACanvasThatCannotBeMadeLeavesTheImageAsItWas) {
    printer.setAntiWrinkle(0xFFFFFFFF);
    page_size("A4");
    image_of(8, 8, 7);
    // line_v 1690920: 2362 + 2 * 1690920 = 3384202 columns, 3272 rows: more than 32 bits of bits
    EXPECT_EQ(frame(),
              "DEBUG:EnableAntiWrink: AntiWrinkle level: -1, line_v: 1690920 points, line_h: 12 "
              "points.\n"
              "DEBUG:EnableAntiWrink: Page size is A4, CanvasWidth: 3384202, CanvasHeight: 3272\n"
              "DEBUG:EnableAntiWrink: Image width is less than canvas width, exPoints: 1692097\n"
              "DEBUG:EnableAntiWrink: Image height is less than canvas height, eyPoints: 1632\n"
              "DEBUG:EnableAntiWrink: Failed to expand image, returning.\n");
    EXPECT_EQ(size(), "8x8");
    EXPECT_EQ(wrong_pixels([](int, int) { return 7; }), 0);
}

TEST_F(AntiWrinkleBorder, AHugeLevelOnAnUnknownPageSizeEndsAtOnce) {
    printer.setAntiWrinkle(0xFFFFFFFF);
    page_size("A5");
    image_of(8, 8, 7);
    EXPECT_EQ(frame(),
              "DEBUG:EnableAntiWrink: AntiWrinkle level: -1, line_v: 1690920 points, line_h: 12 "
              "points.\n"
              "DEBUG:EnableAntiWrink: Image width is greater than canvas width, offset.x: 4\n"
              "DEBUG:EnableAntiWrink: Image height is greater than canvas height, offset.y: 4\n"
              "DEBUG:EnableAntiWrink: Drawing left line. point(4, 4, 4, 4)\n"
              "DEBUG:EnableAntiWrink: Drawing top line. point(4, 4, 4, 16)\n"
              "DEBUG:EnableAntiWrink: Drawing right line. point(-1690916, 4, -1690916, 4)\n"
              "DEBUG:EnableAntiWrink: Drawing bottom line. point(4, -8, 4, 4)\n");
    EXPECT_EQ(wrong_pixels([](int, int) { return 7; }), 0);
}

}  // namespace
}  // namespace kelp_test
