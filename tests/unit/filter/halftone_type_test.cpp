#include "filter/halftone_type.h"

#include <gtest/gtest.h>

#include <array>
#include <limits>
#include <string>

namespace kelp_test {
namespace {

const std::array<const char*, 10> names = {
    "None",   "FloydSteinberg", "Ordered", "Burkes",   "Stucki", "JarvisJudiceNinke",
    "Sierra", "StevensonArce",  "Tattoo",  "Tattoo_X8"};

TEST(HalftoneType, EveryValueHasItsName) {
    for (int type = 0; type < 10; ++type) {
        EXPECT_STREQ(kelpHalftoneTypeToStr(type), names.at(static_cast<std::size_t>(type)));
    }
}

TEST(HalftoneType, EveryNameHasItsValue) {
    for (int type = 0; type < 10; ++type) {
        EXPECT_EQ(kelpHalftoneTypeFromStr(names.at(static_cast<std::size_t>(type))), type);
    }
}

TEST(HalftoneType, TheEnumerationCountsAsTheNamesDo) {
    EXPECT_EQ(DitherNone, 0);
    EXPECT_EQ(DitherFloydSteinberg, 1);
    EXPECT_EQ(DitherOrdered, 2);
    EXPECT_EQ(DitherBurkes, 3);
    EXPECT_EQ(DitherStucki, 4);
    EXPECT_EQ(DitherJarvisJudiceNinke, 5);
    EXPECT_EQ(DitherSierra, 6);
    EXPECT_EQ(DitherStevensonArce, 7);
    EXPECT_EQ(DitherTattoo, 8);
    EXPECT_EQ(DitherTattooX8, 9);
    EXPECT_EQ(sizeof(DitherType), 4U);
}

TEST(HalftoneType, AValueThatIsNoneOfThemIsNamedNone) {
    for (const int type :
         {10, 11, 1000, std::numeric_limits<int>::max(), -1, std::numeric_limits<int>::min()}) {
        EXPECT_STREQ(kelpHalftoneTypeToStr(type), "None") << type;
    }
}

TEST(HalftoneType, NamesAreComparedExactly) {
    for (const char* name : {"", "tattoo", "TATTOO", "tattoo_x8", "Tattoo_X", "Tattoo_X88",
                             " Tattoo", "Tattoo ", "Floyd", "FloydSteinberg2", "8", "unknown"}) {
        EXPECT_EQ(kelpHalftoneTypeFromStr(name), DitherNone) << name;
    }
}

}  // namespace
}  // namespace kelp_test
