#include "filter/job_setup.h"

#include <gtest/gtest.h>

#include <limits>
#include <string>

#include "filter/text.h"
#include "printer/zpl_printer.h"
#include "tests/unit/printer/support/memory_stream.h"
#include "tests/unit/printer/support/stderr_capture.h"

namespace kelp_test {
namespace {

class JobSetup : public testing::Test {
  protected:
    JobSetup() {
        printer.getOutputStreams() = {stream.file()};
        sPrinter = &printer;
    }
    ~JobSetup() override { sPrinter = nullptr; }

    MemoryStream stream;
    ZplPrinter printer;
};

// A page of 50 x 30 mm with every choice made.
Settings settings_of_a_label() {
    Settings settings{};
    settings.pageWidth = 50;
    settings.pageHeight = 30;
    settings.GapsHeight = 3;
    settings.Darkness = 15;
    kelpStrCpy(settings.PaperType, "LabelGaps", sizeof settings.PaperType);
    kelpStrCpy(settings.Origin, "Rotation180", sizeof settings.Origin);
    kelpStrCpy(settings.PrintSpeed, "4", sizeof settings.PrintSpeed);
    kelpStrCpy(settings.MediaMethod, "Transfer", sizeof settings.MediaMethod);
    kelpStrCpy(settings.PostAction, "PeelOff", sizeof settings.PostAction);
    return settings;
}

TEST_F(JobSetup, WritesTheWholeBlock) {
    jobSetup(settings_of_a_label());
    // 203 * 50 / 25.4 = 399.6 and 203 * 30 / 25.4 = 239.8, cut
    EXPECT_EQ(stream.take(),
              "SIZE 50.0 mm, 30.0 mm\r\n"
              "^XX\r\n"
              "^PW399\r\n"
              "^LL239\r\n"
              "^MNY\r\n"
              "^POI\r\n"
              "^PR4\r\n"
              "~SD15\r\n"
              "^MTT\r\n"
              "^MMP,N\r\n"
              "^XZ\r\n"
              "\r\n");
}

TEST_F(JobSetup, OfAnEmptyRecordTakesContinuousMediaAndTheLightestPrint) {
    jobSetup(Settings{});
    EXPECT_EQ(stream.take(),
              "SIZE 0.0 mm, 0.0 mm\r\n^XX\r\n^PW0\r\n^LL0\r\n^MNN\r\n^PON\r\n~SD0\r\n^XZ\r\n\r\n");
}

TEST_F(JobSetup, LeavesOutWhatIsNotAsked) {
    Settings settings = settings_of_a_label();
    settings.Darkness = -1;
    kelpStrCpy(settings.PaperType, "Normal", sizeof settings.PaperType);
    kelpStrCpy(settings.Origin, "", sizeof settings.Origin);
    kelpStrCpy(settings.PrintSpeed, "Normal", sizeof settings.PrintSpeed);
    kelpStrCpy(settings.MediaMethod, "", sizeof settings.MediaMethod);
    kelpStrCpy(settings.PostAction, "None", sizeof settings.PostAction);
    EXPECT_EQ(stderr_of([&] { jobSetup(settings); }),
              "DEBUG:Skip the GAP cmd by Normal paper type\n");
    EXPECT_EQ(stream.take(),
              "SIZE 50.0 mm, 30.0 mm\r\n^XX\r\n^PW399\r\n^LL239\r\n^PON\r\n^XZ\r\n\r\n");
}

TEST_F(JobSetup, IgnoresTheSettingsThatAreNotItsOwn) {
    Settings settings = settings_of_a_label();
    jobSetup(settings);
    const std::string block = stream.take();
    settings.MirrorImage = 1;
    settings.NegativeImage = 1;
    settings.Brightness = 50;
    settings.halftoneType = DitherTattoo;
    settings.ForceRotation = 2;
    kelpStrCpy(settings.Resolution, "300dpi", sizeof settings.Resolution);
    kelpStrCpy(settings.Occurrence, "EveryPage", sizeof settings.Occurrence);
    jobSetup(settings);
    EXPECT_EQ(stream.take(), block);
}

TEST_F(JobSetup, ReachesEveryStream) {
    MemoryStream second;
    printer.getOutputStreams().push_back(second.file());
    jobSetup(settings_of_a_label());
    const std::string block = stream.take();
    EXPECT_EQ(block.substr(0, 4), "SIZE");
    EXPECT_EQ(second.take(), block);
}

TEST_F(JobSetup, TheSizeLineHasOneDecimal) {
    TSPLSize(101.6F, 152.4F);
    EXPECT_EQ(stream.take(), "SIZE 101.6 mm, 152.4 mm\r\n");
    TSPLSize(101.66F, 0.04F);
    EXPECT_EQ(stream.take(), "SIZE 101.7 mm, 0.0 mm\r\n");
}

TEST_F(JobSetup, TheBlockOpensAndClosesWithItsOwnCommands) {
    ZPLStart();
    EXPECT_EQ(stream.take(), "^XX\r\n");
    ZPLEnd();
    EXPECT_EQ(stream.take(), "^XZ\r\n\r\n");
}

TEST_F(JobSetup, DotsAreCutNotRounded) {
    setSize(50, 30);
    EXPECT_EQ(stream.take(), "^PW399\r\n^LL239\r\n");
    setSize(0.125F, 0.13F);  // 0.999 and 1.039 dots
    EXPECT_EQ(stream.take(), "^PW0\r\n^LL1\r\n");
}

TEST_F(JobSetup, DotsAreCutTowardZero) {
    setSize(-50, -0.125F);
    EXPECT_EQ(stream.take(), "^PW-399\r\n^LL0\r\n");
}

TEST_F(JobSetup, TheProductIsRoundedToSinglePrecisionBeforeTheDivision) {
    // 203 * 0.87586206 is 177.79999858; the nearest float is 177.80000305, 7 dots and a little.
    // 203 * 0.37536946 is 76.20000026; the nearest float is 76.19999695, just under 3 dots.
    setSize(0.87586206F, 0.37536946F);
    EXPECT_EQ(stream.take(), "^PW7\r\n^LL2\r\n");
    // The float nearest to an inch is 25.39999962; times 203 the nearest is 5156.19970703.
    setSize(25.4F, 101.6F);
    EXPECT_EQ(stream.take(), "^PW202\r\n^LL811\r\n");
}

TEST_F(JobSetup, DotsBeyondAnIntSaturate) {
    setSize(1e30F, std::numeric_limits<float>::infinity());
    EXPECT_EQ(stream.take(), "^PW2147483647\r\n^LL2147483647\r\n");
    setSize(-1e30F, -std::numeric_limits<float>::infinity());
    EXPECT_EQ(stream.take(), "^PW-2147483648\r\n^LL-2147483648\r\n");
}

TEST_F(JobSetup, ASizeThatIsNotANumberIsZeroDots) {
    const float nan = std::numeric_limits<float>::quiet_NaN();
    setSize(nan, nan);
    EXPECT_EQ(stream.take(), "^PW0\r\n^LL0\r\n");
}

TEST_F(JobSetup, TheOriginTurnsTheLabel) {
    const auto direction = [this](const char* origin) {
        setDirection(origin, 0);
        return stream.take();
    };
    EXPECT_EQ(direction("Rotation180"), "^POI\r\n");
    EXPECT_EQ(direction("MyRotation180Choice"), "^POI\r\n");
    EXPECT_EQ(direction(""), "^PON\r\n");
    EXPECT_EQ(direction("Rotation0"), "^PON\r\n");
    EXPECT_EQ(direction("Rotation18"), "^PON\r\n");
    EXPECT_EQ(direction("rotation180"), "^PON\r\n");
}

TEST_F(JobSetup, TheMirrorFlagHasNoEffectOnTheDirection) {
    setDirection("Rotation180", 1);
    setDirection("", 1);
    setDirection("", -1);
    EXPECT_EQ(stream.take(), "^POI\r\n^PON\r\n^PON\r\n");
}

TEST_F(JobSetup, TheHooksSendNothing) {
    setReference();
    setOffset(12.5F);
    setCls();
    EXPECT_EQ(stream.take(), "");
}

TEST_F(JobSetup, TheEndOfAPageIsAnEmptyLine) {
    endPage();
    EXPECT_EQ(stream.take(), "\r\n");
}

}  // namespace
}  // namespace kelp_test
