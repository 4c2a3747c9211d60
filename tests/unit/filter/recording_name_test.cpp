#include <gtest/gtest.h>

#include <cstddef>
#include <string>

#include "tests/unit/filter/settings_job.h"
#include "tests/unit/printer/support/fixed_time.h"

namespace kelp_test {
namespace {

class RecordingName : public testing::Test {
  protected:
    static Ppd ppd() {
        return bare_ppd().option("RecordPrinterCommands", {"0", "1", "2", "-1", "True"});
    }

    SettingsJob job;
};

TEST_F(RecordingName, IsItsBaseAndTheLocalTime) {
    const FixedTime time(2024, 3, 5, 7, 8, 9);
    job.use(ppd().attribute("kelpFilterOutputFile", "/tmp/rec"));
    EXPECT_STREQ(job.read("RecordPrinterCommands=1").OutputFile, "/tmp/rec-20240305070809.bin");
}

TEST_F(RecordingName, HasTwoDigitsForEverythingButTheYear) {
    const FixedTime time(2031, 12, 31, 23, 59, 58);
    job.use(ppd().attribute("kelpFilterOutputFile", "r"));
    EXPECT_STREQ(job.read("RecordPrinterCommands=2").OutputFile, "r-20311231235958.bin");
}

TEST_F(RecordingName, WithoutABaseIsRelativeToTheWorkingDirectory) {
    const FixedTime time(2024, 3, 5, 7, 8, 9);
    job.use(ppd());
    EXPECT_STREQ(job.read("RecordPrinterCommands=1").OutputFile, "-20240305070809.bin");
}

TEST_F(RecordingName, IsEmptyUnlessRecordingIsAsked) {
    job.use(ppd().attribute("kelpFilterOutputFile", "/tmp/rec"));
    EXPECT_STREQ(job.read("").OutputFile, "");
    EXPECT_STREQ(job.read("RecordPrinterCommands=0").OutputFile, "");
    EXPECT_STREQ(job.read("RecordPrinterCommands=-1").OutputFile, "");
    EXPECT_STREQ(job.read("RecordPrinterCommands=True").OutputFile, "") << "no number above 0";
}

TEST_F(RecordingName, IsEmptyWithoutTheOption) {
    job.use(bare_ppd().attribute("kelpFilterOutputFile", "/tmp/rec"));
    EXPECT_STREQ(job.read("RecordPrinterCommands=1").OutputFile, "");
}

// A base of so many characters. A line of a description holds no more than 255, so one of them is
// a newline.
std::string long_base(std::size_t length) {
    std::string base = "/tmp/" + std::string(length - 5, 'r');
    base[200] = '\n';
    return base;
}

TEST_F(RecordingName, OfALongBaseIsCutToItsField) {
    const std::string base = long_base(300);
    job.use(ppd().attribute("kelpFilterOutputFile", base));
    EXPECT_EQ(job.read("RecordPrinterCommands=1").OutputFile, base.substr(0, 255));
}

TEST_F(RecordingName, OfABaseThatLeavesRoomForAPartKeepsThatPart) {
    const FixedTime time(2024, 3, 5, 7, 8, 9);
    const std::string base = long_base(245);
    job.use(ppd().attribute("kelpFilterOutputFile", base));
    // 245 characters and 10 of "-20240305070809.bin"
    EXPECT_EQ(job.read("RecordPrinterCommands=1").OutputFile, base + "-202403050");
}

TEST_F(RecordingName, FormatCharactersOfTheBaseAreKept) {
    const FixedTime time(2024, 3, 5, 7, 8, 9);
    job.use(ppd().attribute("kelpFilterOutputFile", "/tmp/%d%s%n"));
    EXPECT_STREQ(job.read("RecordPrinterCommands=1").OutputFile, "/tmp/%d%s%n-20240305070809.bin");
}

}  // namespace
}  // namespace kelp_test
