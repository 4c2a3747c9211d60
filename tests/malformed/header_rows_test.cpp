// The second of two pages has one number of its header changed. The first page is always printed.

#include <gtest/gtest.h>

#include <limits>

#include "tests/malformed/malformed_job.h"

namespace kelp_test {
namespace {

using H = cups_page_header2_t;

std::string too_short(unsigned bytes, unsigned width) {
    return "ERROR:Unsupported cupsBytesPerLine : " + std::to_string(bytes) +
           " ! Less than cupsWidth : " + std::to_string(width) + " !";
}

std::string too_large(unsigned bytes, unsigned height) {
    return "ERROR:Unsupported page size, cupsBytesPerLine : " + std::to_string(bytes) +
           ", cupsHeight : " + std::to_string(height) + " !";
}

std::string depth(const std::string& bits) {
    return "ERROR:Unsupported bits per pixel : " + bits + " ! Requires 8 bits per pixel!";
}

std::vector<MalformedJob> rows() {
    const std::string one = preamble() + tiny_page_output();
    const std::string two = one + tiny_page_output();
    // The setup block of a page whose pixels are cut, its size and dots as given.
    const auto cut = [&](const std::string& size, int width, int length) {
        return one + SetupBlock{.size = size, .width = width, .length = length}.text();
    };
    // A resolution changes the setup block, not the picture.
    const auto sized = [&](const std::string& size, int width, int length) {
        return cut(size, width, length) + Graphic().text();
    };
    const auto copies = [&](int count) {
        return one + SetupBlock().text() + Graphic{.copies = count}.text();
    };
    const std::string no_image =
        "CRIT:cximage.CreateFromArray with grey failed!\n"
        "ERROR:printImage: pimage is NULL, unable to print the image";
    // One dot a row. The image's rows are four bytes apart and are read one byte apart: the second
    // is the padding of the first, which is empty.
    const std::string one_dot_wide =
        cut("0.1 mm, 0.3 mm", 1, 2) + Graphic{.total = 2, .row_bytes = 1, .rows = "80,"}.text();
    // 16 dots in one row; what is left of the pixels is no header.
    const std::string one_row =
        cut("2.0 mm, 0.1 mm", 16, 1) + Graphic{.total = 2, .row_bytes = 2, .rows = "JF"}.text();

    // libcups takes a header that it refuses for the stream's end, so that such a job ends well.
    return {
        {"cupsWidth_0", header(&H::cupsWidth, 0), 0, no_image, cut("0.0 mm, 0.3 mm", 0, 2)},
        {"cupsWidth_1", header(&H::cupsWidth, 1), 0, "", one_dot_wide},
        {"cupsWidth_17", header(&H::cupsWidth, 17), 1, too_short(16, 17), one},
        {"cupsWidth_max", header(&H::cupsWidth, max), 1, too_short(16, max), one},

        {"cupsHeight_0", header(&H::cupsHeight, 0), 0, "", one},
        {"cupsHeight_1", header(&H::cupsHeight, 1), 0, "", one_row},
        {"cupsHeight_3", header(&H::cupsHeight, 3), 0, "", cut("2.0 mm, 0.4 mm", 16, 2)},
        // 16 times that is 2^31 - 16, the most that fits.
        {"cupsHeight_134217727", header(&H::cupsHeight, 134217727), 0, "",
         cut("2.0 mm, 16793746.0 mm", 16, 134217736)},
        {"cupsHeight_134217728", header(&H::cupsHeight, 134217728), 1, too_large(16, 134217728),
         one},
        // 2^32 and 2^32 + 16, which 32 bits take for 0 and 16.
        {"cupsHeight_268435456", header(&H::cupsHeight, 268435456), 1, too_large(16, 268435456),
         one},
        {"cupsHeight_268435457", header(&H::cupsHeight, 268435457), 1, too_large(16, 268435457),
         one},
        {"cupsHeight_max", header(&H::cupsHeight, max), 1, too_large(16, max), one},

        {"cupsBytesPerLine_0", header(&H::cupsBytesPerLine, 0), 0, "", one},
        {"cupsBytesPerLine_1", header(&H::cupsBytesPerLine, 1), 1, too_short(1, 16), one},
        {"cupsBytesPerLine_15", header(&H::cupsBytesPerLine, 15), 1, too_short(15, 16), one},
        {"cupsBytesPerLine_17", header(&H::cupsBytesPerLine, 17), 0, "",
         cut("2.0 mm, 0.3 mm", 16, 2)},
        // Twice that is 2^31 - 2.
        {"cupsBytesPerLine_1073741823", header(&H::cupsBytesPerLine, 1073741823), 0, "",
         cut("2.0 mm, 0.3 mm", 16, 2)},
        {"cupsBytesPerLine_1073741824", header(&H::cupsBytesPerLine, 1073741824), 1,
         too_large(1073741824, 2), one},
        {"cupsBytesPerLine_2147483647", header(&H::cupsBytesPerLine, 2147483647), 1,
         too_large(2147483647, 2), one},
        {"cupsBytesPerLine_2147483648", header(&H::cupsBytesPerLine, 2147483648U), 0, "", one},
        {"cupsBytesPerLine_max", header(&H::cupsBytesPerLine, max), 0, "", one},

        // 24 and 240 bits are 3 and 30 bytes a pixel, of which no row of 16 bytes is made.
        {"cupsBitsPerPixel_0", header(&H::cupsBitsPerPixel, 0), 0, "", one},
        {"cupsBitsPerPixel_1", header(&H::cupsBitsPerPixel, 1), 1, depth("1"), one},
        {"cupsBitsPerPixel_7", header(&H::cupsBitsPerPixel, 7), 1, depth("7"), one},
        {"cupsBitsPerPixel_9", header(&H::cupsBitsPerPixel, 9), 1, depth("9"), one},
        {"cupsBitsPerPixel_16", header(&H::cupsBitsPerPixel, 16), 1, depth("16"), one},
        {"cupsBitsPerPixel_24", header(&H::cupsBitsPerPixel, 24), 0, "", one},
        {"cupsBitsPerPixel_32", header(&H::cupsBitsPerPixel, 32), 1, depth("32"), one},
        {"cupsBitsPerPixel_128", header(&H::cupsBitsPerPixel, 128), 1, depth("128"), one},
        {"cupsBitsPerPixel_240", header(&H::cupsBitsPerPixel, 240), 0, "", one},
        {"cupsBitsPerPixel_256", header(&H::cupsBitsPerPixel, 256), 0, "", one},
        {"cupsBitsPerPixel_max", header(&H::cupsBitsPerPixel, max), 0, "", one},

        // libcups takes 1 to 16.
        {"cupsBitsPerColor_0", header(&H::cupsBitsPerColor, 0), 0, "", one},
        {"cupsBitsPerColor_1", header(&H::cupsBitsPerColor, 1), 0, "", two},
        {"cupsBitsPerColor_16", header(&H::cupsBitsPerColor, 16), 0, "", two},
        {"cupsBitsPerColor_17", header(&H::cupsBitsPerColor, 17), 0, "", one},
        {"cupsBitsPerColor_max", header(&H::cupsBitsPerColor, max), 0, "", one},

        {"HWResolution0_0", header(&H::HWResolution, 0, 0), 1,
         "ERROR:Unsupported HWResolution[0] : 0 !", one},
        {"HWResolution0_1", header(&H::HWResolution, 0, 1), 0, "",
         sized("406.4 mm, 0.3 mm", 3247, 2)},
        {"HWResolution0_max", header(&H::HWResolution, 0, max), 0, "",
         sized("0.0 mm, 0.3 mm", 0, 2)},
        {"HWResolution1_0", header(&H::HWResolution, 1, 0), 1,
         "ERROR:Unsupported HWResolution[1] : 0 !", one},
        {"HWResolution1_1", header(&H::HWResolution, 1, 1), 0, "",
         sized("2.0 mm, 50.8 mm", 16, 405)},
        {"HWResolution1_max", header(&H::HWResolution, 1, max), 0, "",
         sized("2.0 mm, 0.0 mm", 16, 0)},

        // Written as a signed number.
        {"NumCopies_2147483647", header(&H::NumCopies, 2147483647), 0, "", copies(2147483647)},
        {"NumCopies_2147483648", header(&H::NumCopies, 2147483648U), 0, "",
         copies(std::numeric_limits<int>::min())},

        // A kind of pixels says nothing that the filter looks at.
        {"cupsNumColors_0", header(&H::cupsNumColors, 0), 0, "", two},
        {"cupsNumColors_16", header(&H::cupsNumColors, 16), 0, "", two},
        {"cupsNumColors_max", header(&H::cupsNumColors, max), 0, "", two},
        {"cupsColorOrder_1", header(&H::cupsColorOrder, 1), 0, "", two},
        {"cupsColorOrder_2", header(&H::cupsColorOrder, 2), 0, "", two},
        {"cupsColorOrder_3", header(&H::cupsColorOrder, 3), 0, "", two},
        {"cupsColorOrder_max", header(&H::cupsColorOrder, max), 0, "", two},
        {"cupsColorSpace_1", header(&H::cupsColorSpace, 1), 0, "", two},
        {"cupsColorSpace_62", header(&H::cupsColorSpace, 62), 0, "", two},
        {"cupsColorSpace_63", header(&H::cupsColorSpace, 63), 0, "", two},
        {"cupsColorSpace_max", header(&H::cupsColorSpace, max), 0, "", two},

        // Logged and nothing else.
        {"cupsCompression_1", header(&H::cupsCompression, 1), 0, "", two},
        {"cupsCompression_max", header(&H::cupsCompression, max), 0, "", two},
        {"cupsMediaType_max", header(&H::cupsMediaType, max), 0, "", two},
        {"cupsRowCount_max", header(&H::cupsRowCount, max), 0, "", two},
        {"cupsRowFeed_max", header(&H::cupsRowFeed, max), 0, "", two},
        {"cupsRowStep_max", header(&H::cupsRowStep, max), 0, "", two},
        {"cupsRowStep_1", header(&H::cupsRowStep, 1), 0, "", two},

        // Not looked at.
        {"Orientation_max", header(&H::Orientation, max), 0, "", two},
        {"PageSize_max", header(&H::PageSize, 0, max), 0, "", two},
        {"cupsPageSize_NotANumber", header(&H::cupsPageSize, 0, 0x7FC00000), 0, "", two},
        {"cupsPageSize_Infinite", header(&H::cupsPageSize, 1, 0x7F800000), 0, "", two},
        {"cupsInteger_max", header(&H::cupsInteger, 15, max), 0, "", two},
        {"cupsBorderlessScalingFactor_NotANumber",
         header(&H::cupsBorderlessScalingFactor, 0x7FC00000), 0, "", two},
    };
}

class MalformedHeader : public testing::TestWithParam<MalformedJob> {};

TEST_P(MalformedHeader, EndsAsInTheTable) {
    expect_as_in(GetParam());
}

INSTANTIATE_TEST_SUITE_P(Header, MalformedHeader, testing::ValuesIn(rows()),
                         row_name<MalformedJob>);

}  // namespace
}  // namespace kelp_test
