#include "filter/log.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

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

struct SinkLine {
    int level;
    std::string message;
    bool operator==(const SinkLine&) const = default;
};
std::vector<SinkLine> sinkLines;

class LogSink : public testing::Test {
  protected:
    LogSink() {
        sinkLines.clear();
        kelpSetLogSink([](int level, const char* message) {
            sinkLines.push_back({level, message});
        });
    }
    ~LogSink() override { kelpSetLogSink(nullptr); }
    LogSink(const LogSink&) = delete;
    LogSink& operator=(const LogSink&) = delete;
};

TEST_F(LogSink, TakesTheMessagesInThePlaceOfStandardError) {
    EXPECT_EQ(stderr_of([] {
                  kelpLogCommon(0, "page %d", 7);
                  kelpLogCommon(3, "%s", "100%d %s");
              }),
              "");
    EXPECT_EQ(sinkLines, (std::vector<SinkLine>{{0, "page 7"}, {3, "100%d %s"}}));
}

TEST_F(LogSink, TakesWhatFitsOfALongMessage) {
    const std::string text(5000, 'x');
    kelpLogCommon(2, "<%s>", text.c_str());
    EXPECT_EQ(sinkLines, (std::vector<SinkLine>{{2, "<" + text.substr(0, 1022)}}));
}

TEST_F(LogSink, IsLeftForStandardError) {
    kelpSetLogSink(nullptr);
    EXPECT_EQ(stderr_of([] { kelpLogCommon(0, "again"); }), "DEBUG:again\n");
    EXPECT_TRUE(sinkLines.empty());
}

}  // namespace
}  // namespace kelp_test
