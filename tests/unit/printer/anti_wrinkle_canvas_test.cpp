#include <gtest/gtest.h>

#include <cstring>
#include <memory>
#include <string>

#include "printer/anti_wrinkle.h"

namespace kelp_test {
namespace {

cups_page_header2_t header_of(const std::string& page_size) {
    cups_page_header2_t header{};
    page_size.copy(header.cupsPageSizeName, sizeof header.cupsPageSizeName);
    return header;
}

AntiWrinkleCanvas canvas(int resolution, unsigned level, const std::string& page_size) {
    return antiWrinkleCanvas(resolution, level, header_of(page_size));
}

std::string size_of(const AntiWrinkleCanvas& canvas) {
    return std::to_string(canvas.width) + "x" + std::to_string(canvas.height);
}

TEST(AntiWrinkleCanvas, AMillimetreIsRoundedToTheNearestDot) {
    // 20300 / 254 = 79, + 5, / 10 = 8; 30000 / 254 = 118, + 5, / 10 = 12
    EXPECT_EQ(canvas(203, 2, "A4").lineH, 8U);
    EXPECT_EQ(canvas(300, 2, "A4").lineH, 12U);
    // 60000 / 254 = 236, + 5, / 10 = 24
    EXPECT_EQ(canvas(600, 2, "A4").lineH, 24U);
}

TEST(AntiWrinkleCanvas, SideBarsAreTheLevelInMillimetres) {
    // level * 100 * resolution / 254: 79, 159, 239; 118, 236, 354
    EXPECT_EQ(canvas(203, 1, "A4").lineV, 8U);
    EXPECT_EQ(canvas(203, 2, "A4").lineV, 16U);
    EXPECT_EQ(canvas(203, 3, "A4").lineV, 24U);
    EXPECT_EQ(canvas(300, 1, "A4").lineV, 12U);
    EXPECT_EQ(canvas(300, 2, "A4").lineV, 24U);
    EXPECT_EQ(canvas(300, 3, "A4").lineV, 35U) << "354 + 5 = 359, cut";
    EXPECT_EQ(canvas(300, 0, "A4").lineV, 0U);
    EXPECT_EQ(canvas(300, 13, "A4").lineV, 154U) << "390000 / 254 = 1535, + 5 = 1540";
}

TEST(AntiWrinkleCanvas, SizesAt203DotsPerInch) {
    // resolution * a / 254, + 5, / 10, with bars of 16 and 8 on either side:
    //   20000: 15984, 1598   27500: 21978, 2198   21000: 16783, 1678
    //   25700: 20539, 2054   11800:  9430,  943   10000:  7992,  799
    EXPECT_EQ(size_of(canvas(203, 2, "A4")), "1630x2214");
    EXPECT_EQ(size_of(canvas(203, 2, "Letter")), "1710x2070");
    EXPECT_EQ(size_of(canvas(203, 2, "Tattoo_A5")), "1630x959");
    EXPECT_EQ(size_of(canvas(203, 2, "Tattoo_A6")), "831x959");
}

TEST(AntiWrinkleCanvas, SizesAt300DotsPerInch) {
    // bars of 24 and 12 on either side:
    //   20000: 23622, 2362   27500: 32480, 3248   21000: 24803, 2480
    //   25700: 30354, 3035   11800: 13937, 1394   10000: 11811, 1181
    EXPECT_EQ(size_of(canvas(300, 2, "A4")), "2410x3272");
    EXPECT_EQ(size_of(canvas(300, 2, "Letter")), "2528x3059");
    EXPECT_EQ(size_of(canvas(300, 2, "Tattoo_A5")), "2410x1418");
    EXPECT_EQ(size_of(canvas(300, 2, "Tattoo_A6")), "1229x1418");
}

TEST(AntiWrinkleCanvas, KnowsThePageSizesName) {
    for (const char* name : {"A4", "Letter", "Tattoo_A5", "Tattoo_A6"}) {
        EXPECT_STREQ(canvas(203, 2, name).pageSizeName, name);
    }
}

TEST(AntiWrinkleCanvas, NamesAreComparedExactly) {
    for (const char* name : {"", "a4", "A", "A4 ", "A4.Transverse", "LETTER", "Lette", "Letters",
                             "Tattoo_A4", "tattoo_A5", "Tattoo_A56", "Tattoo_"}) {
        const AntiWrinkleCanvas unknown = canvas(203, 2, name);
        EXPECT_EQ(unknown.pageSizeName, nullptr) << name;
        EXPECT_EQ(size_of(unknown), "0x0") << name;
        EXPECT_EQ(unknown.lineH, 8U);
        EXPECT_EQ(unknown.lineV, 16U);
    }
}

TEST(AntiWrinkleCanvas, ANameThatFillsItsFieldIsUnknown) {
    // On the heap, so that a sanitizer sees a read past the field, which is the header's last.
    const auto header = std::make_unique<cups_page_header2_t>();
    std::memset(header->cupsPageSizeName, 'A', sizeof header->cupsPageSizeName);
    EXPECT_EQ(antiWrinkleCanvas(203, 2, *header).pageSizeName, nullptr);
}

TEST(AntiWrinkleCanvas, HugeLevelsWrap) {
    // (2^32 - 1) * 100 * 300 = -30000 = 4294937296; / 254 = 16909201; + 5, / 10 = 1690920
    EXPECT_EQ(canvas(300, 0xFFFFFFFF, "A4").lineV, 1690920U);
    EXPECT_EQ(canvas(300, 0xFFFFFFFF, "A4").width, 2362U + 2 * 1690920U);
    // 0x80000000 * 100 is 0
    EXPECT_EQ(canvas(300, 0x80000000, "A4").lineV, 0U);
}

TEST(AntiWrinkleMargins, ASmallerImageIsCentred) {
    const AntiWrinkleCanvas a6 = canvas(203, 2, "Tattoo_A6");  // 831 x 959
    EXPECT_EQ(antiWrinkleMargins(a6, 31, 59).ex, 400U);
    EXPECT_EQ(antiWrinkleMargins(a6, 31, 59).ey, 450U);
}

TEST(AntiWrinkleMargins, AnOddDifferenceLosesADot) {
    const AntiWrinkleCanvas a6 = canvas(203, 2, "Tattoo_A6");
    EXPECT_EQ(antiWrinkleMargins(a6, 30, 58).ex, 400U);
    EXPECT_EQ(antiWrinkleMargins(a6, 30, 58).ey, 450U);
    EXPECT_EQ(antiWrinkleMargins(a6, 830, 958).ex, 0U);
    EXPECT_EQ(antiWrinkleMargins(a6, 830, 958).ey, 0U);
}

TEST(AntiWrinkleMargins, EachDirectionIsItsOwn) {
    const AntiWrinkleCanvas a6 = canvas(203, 2, "Tattoo_A6");
    EXPECT_EQ(antiWrinkleMargins(a6, 831, 59).ex, 0U);
    EXPECT_EQ(antiWrinkleMargins(a6, 831, 59).ey, 450U);
    EXPECT_EQ(antiWrinkleMargins(a6, 31, 960).ex, 400U);
    EXPECT_EQ(antiWrinkleMargins(a6, 31, 960).ey, 0U);
    EXPECT_EQ(antiWrinkleMargins(a6, 5000, 5000).ex, 0U);
}

TEST(AntiWrinkleMargins, SizesCompareAsSignedNumbers) {
    // 0x80000000 is less than 0.
    const AntiWrinkleCanvas huge{.width = 0x80000000, .height = 0x7FFFFFFF};
    EXPECT_EQ(antiWrinkleMargins(huge, 1, 1).ex, 0U);
    EXPECT_EQ(antiWrinkleMargins(huge, 1, 1).ey, 0x3FFFFFFFU);
}

TEST(AntiWrinkleMargins, AnUnknownPageSizeHasNone) {
    const AntiWrinkleMargins none = antiWrinkleMargins(canvas(203, 2, "?"), 8, 8);
    EXPECT_EQ(none.ex, 0U);
    EXPECT_EQ(none.ey, 0U);
}

}  // namespace
}  // namespace kelp_test
