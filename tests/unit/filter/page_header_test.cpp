#include "filter/page_header.h"

#include <gtest/gtest.h>

#include <string>

#include "tests/support/raster_stream.h"
#include "tests/unit/printer/support/stderr_capture.h"

namespace kelp_test {
namespace {

// What is said about a header; nothing for one that can be printed.
std::string verdict(const cups_page_header2_t& header) {
    bool printable = false;
    const std::string log = stderr_of([&] { printable = isPrintablePage(header); });
    EXPECT_EQ(printable, log.empty()) << log;
    return log;
}

cups_page_header2_t header_of(unsigned width, unsigned bytes_per_line, unsigned height) {
    Page page;
    page.width = width;
    page.bytes_per_line = bytes_per_line;
    page.height = height;
    return page_header(page);
}

// That the header is refused in one error line that names the field and its value.
void expect_refused(const cups_page_header2_t& header, const std::string& field,
                    const std::string& value) {
    const std::string log = verdict(header);
    EXPECT_EQ(lines_of(log).size(), 1U) << log;
    EXPECT_TRUE(log.starts_with("ERROR:")) << log;
    EXPECT_NE(log.find(field), std::string::npos) << log;
    EXPECT_NE(log.find(value), std::string::npos) << log;
}

TEST(PageHeader, OfAPlainPageIsPrintable) {
    EXPECT_EQ(verdict(header_of(812, 812, 1218)), "");
    EXPECT_EQ(verdict(header_of(1, 1, 1)), "");
}

TEST(PageHeader, MayHaveLinesLongerThanTheirPixels) {
    EXPECT_EQ(verdict(header_of(10, 11, 2)), "");
    EXPECT_EQ(verdict(header_of(0, 8, 2)), "");
}

TEST(PageHeader, IsRefusedWithLinesShorterThanTheirPixels) {
    expect_refused(header_of(10, 9, 2), "cupsBytesPerLine", "9");
    expect_refused(header_of(812, 102, 2), "cupsBytesPerLine", "102");
    expect_refused(header_of(0xFFFFFFFF, 1, 1), "cupsBytesPerLine", "1");
}

TEST(PageHeader, IsRefusedWithoutAResolution) {
    cups_page_header2_t header = header_of(16, 16, 2);
    header.HWResolution[0] = 0;
    expect_refused(header, "HWResolution", "0");
    header = header_of(16, 16, 2);
    header.HWResolution[1] = 0;
    expect_refused(header, "HWResolution", "0");
    header.HWResolution[0] = 0;
    expect_refused(header, "HWResolution", "0");
}

TEST(PageHeader, APageJustUnderTwoGibibytesIsPrintable) {
    EXPECT_EQ(verdict(header_of(1, 0x7FFFFFFF, 1)), "");
    EXPECT_EQ(verdict(header_of(1, 1, 0x7FFFFFFF)), "");
    EXPECT_EQ(verdict(header_of(1, 65536, 32767)), "");
}

TEST(PageHeader, APageOfTwoGibibytesIsRefused) {
    expect_refused(header_of(1, 65536, 32768), "cupsBytesPerLine", "65536");
    expect_refused(header_of(1, 65536, 32768), "cupsHeight", "32768");
    expect_refused(header_of(1, 0x80000000, 1), "cupsBytesPerLine", "2147483648");
    expect_refused(header_of(1, 1, 0x80000000), "cupsHeight", "2147483648");
}

TEST(PageHeader, ThePageSizeIsComputedInSixtyFourBits) {
    // 2^32 and 2^32 + 65536 are 0 and 65536 in 32 bits.
    expect_refused(header_of(1, 65536, 65536), "cupsHeight", "65536");
    expect_refused(header_of(1, 65536, 65537), "cupsHeight", "65537");
    expect_refused(header_of(1, 0xFFFFFFFF, 0xFFFFFFFF), "cupsHeight", "4294967295");
}

TEST(PageHeader, IsLoggedFieldByField) {
    cups_page_header2_t header{};
    header.NumCopies = 4;
    header.HWResolution[0] = 203;
    header.HWResolution[1] = 300;
    header.cupsWidth = 812;
    header.cupsHeight = 1218;
    header.cupsMediaType = 5;
    header.cupsBitsPerColor = 6;
    header.cupsBitsPerPixel = 8;
    header.cupsBytesPerLine = 816;
    header.cupsColorOrder = CUPS_ORDER_PLANAR;
    header.cupsColorSpace = CUPS_CSPACE_K;
    header.cupsCompression = 7;
    header.cupsRowCount = 9;
    header.cupsRowFeed = 10;
    header.cupsRowStep = 11;
    EXPECT_EQ(stderr_of([&] { logPageHeader(header, 12); }),
              "DEBUG:PAGE: 12 4\n"
              "\n"
              "DEBUG:header.HWResolution[0]:203\n"
              "\n"
              "DEBUG:header.HWResolution[1]:300\n"
              "DEBUG:header.cupsWidth:812\n"
              "DEBUG:header.cupsHeight:1218\n"
              "DEBUG:header.cupsMediaType:5\n"
              "DEBUG:header.cupsBitsPerColor:6\n"
              "DEBUG:header.cupsBitsPerPixel:8\n"
              "DEBUG:header.cupsBytesPerLine:816\n"
              "DEBUG:header.cupsColorOrder:2\n"
              "DEBUG:header.cupsColorSpace:3\n"
              "DEBUG:header.cupsCompression:7\n"
              "DEBUG:header.cupsRowCount:9\n"
              "DEBUG:header.cupsRowFeed:10\n"
              "DEBUG:header.cupsRowStep:11\n");
}

TEST(PageHeader, ItsNumbersAreLoggedAsSigned) {
    cups_page_header2_t header{};
    header.NumCopies = 0xFFFFFFFF;
    header.cupsMediaType = 0x80000000;
    const std::string log = stderr_of([&] { logPageHeader(header, 1); });
    EXPECT_NE(log.find("PAGE: 1 -1\n"), std::string::npos) << log;
    EXPECT_NE(log.find("cupsMediaType:-2147483648\n"), std::string::npos) << log;
}

}  // namespace
}  // namespace kelp_test
