#include "tools/kelp-preview/sheet/page_size.h"

#include <gtest/gtest.h>

#include <string>
#include <utility>

namespace {

using Sides = std::pair<std::uint32_t, std::uint32_t>;

Sides parsed(const std::string& text) {
    const auto size = parsePageSize(text);
    return size ? Sides{size->width, size->height} : Sides{0, 0};
}

Sides fit(std::uint32_t width, std::uint32_t height, const PageSize& page) {
    const PageSize size = fitted(width, height, page);
    return {size.width, size.height};
}

TEST(PageSize, InInchesIs203DotsEach) {
    EXPECT_EQ(parsed("4x6in"), Sides(812, 1218));
    EXPECT_EQ(parsed("2.5x.5in"), Sides(507, 101));  // whole dots: 507.5, 101.5
}

TEST(PageSize, InMillimetresIsWholeDots) {
    EXPECT_EQ(parsed("100x150mm"), Sides(799, 1198));  // 799.2, 1198.8
}

TEST(PageSize, OfWholeInchesInMillimetresLosesNoDot) {
    for (unsigned inches = 1; inches <= 40; ++inches) {
        // 25.4 mm each
        const std::string side =
            std::to_string(inches * 254 / 10) + "." + std::to_string(inches * 254 % 10);
        EXPECT_EQ(parsed(side + "x" + side + "mm"), Sides(inches * 203, inches * 203)) << side;
    }
}

TEST(PageSize, InDotsIsTaken) {
    EXPECT_EQ(parsed("812x1218"), Sides(812, 1218));
    EXPECT_EQ(parsed("8.9x9"), Sides(8, 9));
}

TEST(PageSize, HasNames) {
    EXPECT_EQ(parsed("A4"), Sides(1678, 2373));      // 210 x 297 mm: 1678.3, 2373.7
    EXPECT_EQ(parsed("A5"), Sides(1182, 1678));      // 148 x 210 mm: 1182.8
    EXPECT_EQ(parsed("A6"), Sides(839, 1182));       // 105 x 148 mm: 839.2
    EXPECT_EQ(parsed("Letter"), Sides(1725, 2233));  // 8.5 x 11 in: 1725.5
}

TEST(PageSize, HasSidesOf8To100000Dots) {
    EXPECT_EQ(parsed("8x100000"), Sides(8, 100000));
    EXPECT_EQ(parsed("0.04x492in"), Sides(8, 99876));  // 8.12
    for (const char* text : {"7x8", "8x7", "7.99x8", "100001x8", "8x100001", "0x0", "0.039x1in",
                             "493x1in", "999999999999x8"}) {
        EXPECT_EQ(parsePageSize(text).has_value(), false) << text;
    }
}

TEST(PageSize, OfAnyOtherFormIsNone) {
    for (const char* text :
         {"",         "x",       "4",       "4x",       "x6in",    "4x6cm",           "4x6 in",
          " 4x6in",   "4 x 6in", "4X6in",   "-4x6in",   "+4x6in",  "4x-6in",          "4x6inch",
          "4inx6in",  "4x6x7",   "1e2x100", "0x10x100", "4,5x6in", "4..5x6in",        ".x9in",
          "a4",       "A3",      "A4 ",     "nanx100",  "infx100", "1234567890123x8", "100x150MM",
          "100*150mm"}) {
        EXPECT_FALSE(parsePageSize(text).has_value()) << text;
    }
    EXPECT_FALSE(parsePageSize(std::string("4x6in\0", 6)).has_value());
}

TEST(Fitted, IsTheLargestOfTheShapeThatFits) {
    const PageSize label{812, 1218};
    EXPECT_EQ(fit(100, 50, label), Sides(812, 406));     // 8.12 times
    EXPECT_EQ(fit(50, 100, label), Sides(609, 1218));    // 12.18 times
    EXPECT_EQ(fit(4000, 3000, label), Sides(812, 609));  // 0.203 times
    EXPECT_EQ(fit(812, 1218, label), Sides(812, 1218));
    EXPECT_EQ(fit(1, 1, label), Sides(812, 812));
    EXPECT_EQ(fit(3, 2, {10, 100}), Sides(10, 7));  // 6.67
}

TEST(Fitted, HasBothSides) {
    EXPECT_EQ(fit(1, 30000, {80, 60}), Sides(1, 60));
    EXPECT_EQ(fit(4000000000, 1, {80, 60}), Sides(80, 1));
}

TEST(PaddedWidth, IsTheNextThatIs4MoreThanAMultipleOf8) {
    for (std::uint32_t width = 1; width <= 2000; ++width) {
        std::uint32_t expected = width;
        while (expected % 8 != 4) {
            ++expected;
        }
        EXPECT_EQ(paddedWidth(width), expected) << width;
    }
}

}  // namespace
