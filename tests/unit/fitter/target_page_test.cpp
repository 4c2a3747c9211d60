#include "fitter/target_page.h"

#include <gtest/gtest.h>

#include "fitter/fit_error.h"
#include "tests/fitter/rasters.h"
#include "tests/support/files.h"
#include "tests/support/temp_dir.h"

namespace kelp_test {
namespace {

TargetPage page_for(const PagePpd& ppd, const char* options = "") {
    const TempDir directory;
    write_file(directory / "printer.ppd", ppd.text());
    return readTargetPage((directory / "printer.ppd").c_str(), options);
}

PagePpd label(const std::string& width, const std::string& height) {
    return {.width = width, .height = height, .resolution_x = 203, .resolution_y = 203};
}

TEST(TargetPage, IsThePagesSizeToTheNearestDot) {
    struct Size {
        const char* points;
        unsigned dots;  // points × 203 / 72
    };
    for (const Size& size : {Size{"432", 1218},   // 1218
                             Size{"425", 1198},   // 1198.26
                             Size{"283", 798},    // 797.90
                             Size{"113", 319},    // 318.60
                             Size{"82", 231},     // 231.19
                             Size{"36", 102},     // 101.5, half goes up
                             Size{"842", 2374}})  // 2373.97
    {
        EXPECT_EQ(page_for(label("288", size.points)).height, size.dots) << size.points;
        EXPECT_EQ(page_for(label(size.points, "72")).header.cupsWidth, size.dots) << size.points;
    }
}

TEST(TargetPage, HasASafeWidth) {
    EXPECT_EQ(page_for(label("288", "432")).width, 812U);
    EXPECT_EQ(page_for(label("283", "425")).width, 796U);   // of 798
    EXPECT_EQ(page_for(label("162", "90")).width, 452U);    // of 456.75, 457
    EXPECT_EQ(page_for(label("595", "842")).width, 1676U);  // of 1677.57, 1678
}

TEST(TargetPage, FollowsCustomSizes) {
    // 100 mm are 799.21 dots, 150 mm 1198.82; 796 is the widest that is safe.
    const TargetPage millimetres = page_for(label("288", "432"), "PageSize=Custom.100x150mm");
    EXPECT_EQ(millimetres.width, 796U);
    EXPECT_EQ(millimetres.height, 1199U);
    const TargetPage inches = page_for(label("288", "432"), "PageSize=Custom.2x1in copies=2");
    EXPECT_EQ(inches.width, 404U);
    EXPECT_EQ(inches.height, 203U);
    const TargetPage points = page_for(label("288", "432"), "PageSize=Custom.72x36");
    EXPECT_EQ(points.width, 196U);
    EXPECT_EQ(points.height, 102U);
}

// The test PPD takes 36 to 1000 points across and 36 to 2000 along.
TEST(TargetPage, IsACustomSizeThatThePrinterTakes) {
    const PagePpd ppd = label("288", "432");
    EXPECT_EQ(page_for(ppd, "PageSize=Custom.36x36").height, 102U);     // 101.5 dots
    EXPECT_EQ(page_for(ppd, "PageSize=Custom.36x2000").height, 5639U);  // 5638.9 dots
    // A size in millimetres may lie half a point beyond.
    EXPECT_EQ(page_for(ppd, "PageSize=Custom.35.6x2000.4").width, 100U);
    for (const char* size : {"35.4x100", "100x35.4", "1000.6x100", "100x2000.6"}) {
        EXPECT_THROW(page_for(ppd, (std::string("PageSize=Custom.") + size).c_str()), FitError)
            << size;
    }
    try {
        page_for(ppd, "PageSize=Custom.1001x100");  // 353.1 x 35.3 mm
        FAIL();
    } catch (const FitError& error) {
        EXPECT_STREQ(error.what(),
                     "The page size of 353.1 x 35.3 mm is none that the printer takes: 12.7 x 12.7 "
                     "mm to 352.8 x 705.6 mm.");
    }
}

TEST(TargetPage, HasThePolarityOfThePpd) {
    PagePpd ppd = label("72", "72");
    EXPECT_EQ(page_for(ppd).polarity, Polarity::kBlackSpace);
    ppd.color_space = CUPS_CSPACE_W;
    EXPECT_EQ(page_for(ppd).polarity, Polarity::kWhiteSpace);
}

// The reason why a header of a PPD is none to print with; nothing when it is.
std::string refusal(unsigned width, unsigned height, float points = 1) {
    cups_page_header2_t header = page_of(k8, 4, 1, "").header;
    header.cupsPageSize[0] = header.cupsPageSize[1] = points;
    header.cupsWidth = width;
    header.cupsHeight = height;
    try {
        targetPageOf(header);
    } catch (const FitError& error) {
        return error.what();
    }
    return {};
}

TEST(TargetPage, IsOfEightBitsAColorAndAPixel) {
    cups_page_header2_t header = page_of(k8, 4, 1, "").header;
    header.cupsPageSize[0] = header.cupsPageSize[1] = 1;
    EXPECT_NO_THROW(targetPageOf(header));
    header.cupsBitsPerColor = 16;
    EXPECT_THROW(targetPageOf(header), FitError);
    header.cupsBitsPerColor = 8;
    header.cupsBitsPerPixel = 16;
    EXPECT_THROW(targetPageOf(header), FitError);
}

TEST(TargetPage, IsNeitherEmptyNorMoreThanTheFilterTakes) {
    EXPECT_EQ(refusal(4, 1), "");
    EXPECT_EQ(refusal(3, 1), "The page size of 3 x 1 dots is too small to print on.");
    EXPECT_EQ(refusal(4, 0), "The page size of 4 x 0 dots is too small to print on.");
    EXPECT_EQ(refusal(4, 1, -1), "The page size of 4 x 1 dots is too small to print on.");
    // 4 × 536870911 is 2^31 - 4.
    EXPECT_EQ(refusal(4, 536870911), "");
    EXPECT_EQ(refusal(4, 536870912),
              "The page size of 4 x 536870912 dots is too large to print on.");
    // 65540 × 65536 is 4 × 65536 more than 2^32.
    EXPECT_NE(refusal(65540, 65536), "");
    // 2147483644 is 4 more than a multiple of 8; twice it does not fit 31 bits, and 4294967292 × 2
    // not even 32.
    EXPECT_EQ(refusal(2147483647, 1), "");
    EXPECT_NE(refusal(2147483647, 2), "");
    EXPECT_NE(refusal(4294967295U, 2), "");
}

}  // namespace
}  // namespace kelp_test
