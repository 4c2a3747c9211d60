#include "tests/reference/graphic.h"

#include <gtest/gtest.h>

namespace {

using reference::Graphic;
using reference::readGraphic;
using Rows = std::vector<std::string>;

// Each data worked by hand, rows of 2 bytes.
TEST(ReferenceGraphic, ReadsWhatIsRight) {
    struct {
        const char* data;
        Rows rows;
    } const cases[] = {
        {"1aE8", {"1AE8"}},
        {"JF,!", {"FFFF", "0000", "FFFF"}},
        {"GHG5", {"5555"}},  // 1 + 2 + 1
        {"8,8!:,", {"8000", "8FFF", "8FFF", "0000"}},
        {":1234:", {"0000", "1234", "1234"}},
        {"\r\n1\n2H\r5", {"1255"}},
        {"1234^5678", {"1234"}},
    };
    for (const auto& one : cases) {
        const Graphic graphic = readGraphic(one.data, 2, static_cast<unsigned>(one.rows.size()));
        EXPECT_EQ(graphic.rows, one.rows) << one.data;
        EXPECT_TRUE(graphic.clean) << one.data;
    }
    // 400 + 20 + 19 + 1 = 440 digits are 220 bytes
    EXPECT_EQ(readGraphic("zgYG7", 220, 1).rows, Rows{std::string(440, '7')});
}

TEST(ReferenceGraphic, ReadsOnWhereSomethingIsWrong) {
    struct {
        const char* data;
        unsigned rows;
        Rows expected;
    } const cases[] = {
        {"1234", 2, {"1234"}},            // a row is missing
        {"123456", 2, {"1234"}},          // half of it
        {"123456", 1, {"1234"}},          // more than there is room for
        {"1L23", 2, {"1222", "2223"}},    // L = 6: through the end of the row
        {"1z2", 2, {"1222", "2222"}},     // to the end of the graphic
        {"12345:", 2, {"1234", "5234"}},  // a repetition within a row
        {"1:", 1, {"1000"}},              // with none above
        {"1H,", 1, {"1000"}},             // a count before a fill
        {"1234H", 1, {"1234"}},           // and before the end, too much
        {"1 2*34", 1, {"1234"}},          // strange bytes
    };
    for (const auto& one : cases) {
        const Graphic graphic = readGraphic(one.data, 2, one.rows);
        EXPECT_EQ(graphic.rows, one.expected) << one.data;
        EXPECT_FALSE(graphic.clean) << one.data;
    }
}

}  // namespace
