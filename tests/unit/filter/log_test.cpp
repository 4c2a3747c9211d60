#include "filter/log.h"

#include <gtest/gtest.h>

#include <string>

#include "tests/unit/printer/support/stderr_capture.h"

namespace kelp_test {
namespace {

TEST(Log, EachLevelHasItsPrefixDirectlyBeforeTheMessage) {
    const char* const prefixes[] = {"DEBUG:", "DEBUG:", "WARN:", "ERROR:", "CRIT:", "INVALID:"};
    for (int level = 0; level < 6; ++level) {
        EXPECT_EQ(stderr_of([level] { kelpLogCommon(level, "message"); }),
                  std::string(prefixes[level]) + "message\n");
    }
}

TEST(Log, LevelOneLooksLikeLevelZero) {
    EXPECT_EQ(stderr_of([] { kelpLogCommon(1, "a line"); }), "DEBUG:a line\n");
}

TEST(Log, FormatsItsArguments) {
    EXPECT_EQ(stderr_of([] {
                  kelpLogCommon(0, "%d %s %f %zu %c%%", -7, "text", 101.6, std::size_t{9}, 'x');
              }),
              "DEBUG:-7 text 101.600000 9 x%\n");
}

TEST(Log, ArgumentsAreNotFormatsThemselves) {
    EXPECT_EQ(stderr_of([] { kelpLogCommon(3, "%s", "100%d %s"); }), "ERROR:100%d %s\n");
}

TEST(Log, AFormatWithItsOwnNewlineLeavesAnEmptyLine) {
    EXPECT_EQ(stderr_of([] { kelpLogCommon(0, "PAGE: %d %d\n", 1, 2); }), "DEBUG:PAGE: 1 2\n\n");
}

TEST(Log, AMessageMayBeEmpty) {
    EXPECT_EQ(stderr_of([] { kelpLogCommon(4, "%s", ""); }), "CRIT:\n");
}

TEST(Log, AMessageIsNeverCut) {
    const std::string text(300'000, 'x');
    EXPECT_EQ(stderr_of([&text] { kelpLogCommon(2, "<%s>", text.c_str()); }),
              "WARN:<" + text + ">\n");
}

TEST(Log, LinesKeepTheirOrder) {
    EXPECT_EQ(stderr_of([] {
                  kelpLogCommon(0, "one");
                  kelpLogCommon(5, "two");
                  kelpLogCommon(3, "three");
              }),
              "DEBUG:one\nINVALID:two\nERROR:three\n");
}

}  // namespace
}  // namespace kelp_test
