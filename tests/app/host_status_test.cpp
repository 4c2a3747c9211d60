#include "app/host_status.h"

#include <gtest/gtest.h>

#include <string>

namespace kelp_app {
namespace {

// The answer of a printer of 203 dpi; each line's flags are where '#' stands.
std::string answer(char paper_out, char paused, char head_open) {
    std::string text =
        "\x02"
        "030,#,#,1245,000,0,0,0,000,0,0,0\x03\r\n"
        "\x02"
        "000,0,#,0,0,2,4,0,00000000,1,000\x03\r\n"
        "\x02"
        "1234,0\x03\r\n";
    for (const char flag : {paper_out, paused, head_open}) {
        text[text.find('#')] = flag;
    }
    return text;
}

TEST(AppHostStatus, IsReadFromItsFlags) {
    EXPECT_EQ(reasonsOf(answer('0', '0', '0')), PAPPL_PREASON_NONE);
    EXPECT_EQ(reasonsOf(answer('1', '0', '0')), PAPPL_PREASON_MEDIA_EMPTY);
    EXPECT_EQ(reasonsOf(answer('0', '1', '0')), PAPPL_PREASON_OTHER);
    EXPECT_EQ(reasonsOf(answer('0', '0', '1')), PAPPL_PREASON_COVER_OPEN);
    EXPECT_EQ(reasonsOf(answer('1', '1', '1')), kStatusReasons);
}

TEST(AppHostStatus, IsNotReadFromAnythingElse) {
    EXPECT_EQ(reasonsOf(""), std::nullopt);
    EXPECT_EQ(reasonsOf("HTTP/1.0 400 Bad Request\r\n\r\n"), std::nullopt);
    EXPECT_EQ(reasonsOf("\x02\x03\x02\x03\x02\x03"), std::nullopt);
    EXPECT_EQ(reasonsOf("\x02,,\x03\x02,,\x03\x02\x03"), std::nullopt);
    EXPECT_EQ(reasonsOf(answer('2', '0', '0')), std::nullopt);
    EXPECT_EQ(reasonsOf(answer('0', 'x', '0')), std::nullopt);
    EXPECT_EQ(reasonsOf(answer('0', '0', ',')), std::nullopt);
}

TEST(AppHostStatus, IsNotReadFromAPartOfIt) {
    const std::string whole = answer('1', '1', '1');
    const std::size_t enough = whole.find('\x03', whole.find('\x03') + 1) + 1;
    for (std::size_t size = 0; size < enough; ++size) {
        EXPECT_EQ(reasonsOf(whole.substr(0, size)), std::nullopt) << size;
    }
}

}  // namespace
}  // namespace kelp_app
