#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <string>

#include "filter/job_setup.h"
#include "printer/zpl_printer.h"
#include "tests/unit/printer/support/memory_stream.h"
#include "tests/unit/printer/support/stderr_capture.h"

// The tables that the commands come from, found by their names alone.
extern const char* const ZPL2PrintMethod[3];
extern const char* const ZPL2MN[3];
extern const char* const ZPL2MM[5];

namespace kelp_test {
namespace {

// Media sensing, speed, darkness, print method and what follows a label.
class MediaSetup : public testing::Test {
  protected:
    MediaSetup() {
        printer.getOutputStreams() = {stream.file(), second.file()};
        sPrinter = &printer;
    }
    ~MediaSetup() override { sPrinter = nullptr; }

    // What was sent, to the second stream too.
    std::string sent() {
        const std::string text = stream.take();
        EXPECT_EQ(second.take(), text);
        return text;
    }
    std::string gap(float height, const char* paper, float offset = 0) {
        log = stderr_of([&] { setGap(height, offset, paper); });
        return sent();
    }
    std::string speed(const char* text, int darkness = -1) {
        setSpeedAndDensity(text, darkness);
        return sent();
    }
    std::string ribbon(const char* method) {
        setRibbon(method);
        return sent();
    }
    std::string action(const char* text) {
        setPostAction(text);
        return sent();
    }

    MemoryStream stream;
    MemoryStream second;
    ZplPrinter printer;
    std::string log;
};

TEST_F(MediaSetup, TheTablesHoldTheCommandsAtTheirPlaces) {
    EXPECT_STREQ(ZPL2PrintMethod[0], "");
    EXPECT_STREQ(ZPL2PrintMethod[1], "^MTD\r\n");
    EXPECT_STREQ(ZPL2PrintMethod[2], "^MTT\r\n");
    EXPECT_STREQ(ZPL2MN[0], "^MNY\r\n");
    EXPECT_STREQ(ZPL2MN[1], "^MNM\r\n");
    EXPECT_STREQ(ZPL2MN[2], "^MNN\r\n");
    EXPECT_STREQ(ZPL2MM[0], "");
    EXPECT_STREQ(ZPL2MM[1], "^MMT,N\r\n");
    EXPECT_STREQ(ZPL2MM[2], "^MMP,N\r\n");
    EXPECT_STREQ(ZPL2MM[3], "^MMC,N\r\n");
    EXPECT_STREQ(ZPL2MM[4], "^MMC,N\r\n");
}

TEST_F(MediaSetup, NormalPaperKeepsThePrintersSensing) {
    EXPECT_EQ(gap(3, "Normal"), "");
    EXPECT_EQ(log, "DEBUG:Skip the GAP cmd by Normal paper type\n");
    EXPECT_EQ(gap(0, "Normal"), "");
    EXPECT_EQ(log, "DEBUG:Skip the GAP cmd by Normal paper type\n");
}

TEST_F(MediaSetup, ContinuousPaperIsNotSensed) {
    EXPECT_EQ(gap(3, "Continue"), "^MNN\r\n");
    EXPECT_EQ(log, "");
    EXPECT_EQ(gap(0, "Continue"), "^MNN\r\n");
}

TEST_F(MediaSetup, GapsAndMarksAreSensed) {
    EXPECT_EQ(gap(3, "LabelGaps"), "^MNY\r\n");
    EXPECT_EQ(gap(3, "LabelMark"), "^MNM\r\n");
    EXPECT_EQ(log, "");
}

TEST_F(MediaSetup, NoGapMakesAnyPaperContinuous) {
    EXPECT_EQ(gap(0, "LabelGaps"), "^MNN\r\n");
    EXPECT_EQ(gap(0, "LabelMark"), "^MNN\r\n");
    EXPECT_EQ(gap(0, "Unheard"), "^MNN\r\n");
    EXPECT_EQ(gap(0, ""), "^MNN\r\n");
    EXPECT_EQ(gap(-2, "LabelGaps"), "^MNN\r\n");
    EXPECT_EQ(log, "");
}

TEST_F(MediaSetup, AGapOfAMillionthIsNone) {
    // The float nearest to 1e-6 is a little below it, the next one above it.
    EXPECT_EQ(gap(1e-6F, "LabelGaps"), "^MNN\r\n");
    EXPECT_EQ(gap(std::nextafter(1e-6F, 1.0F), "LabelGaps"), "^MNY\r\n");
}

TEST_F(MediaSetup, AnUnknownPaperIsLogged) {
    EXPECT_EQ(gap(3, "Unheard 100%d"), "");
    EXPECT_EQ(log, "DEBUG:Unknown paper type: Unheard 100%d!\n");
    EXPECT_EQ(gap(3, ""), "");
    EXPECT_EQ(log, "DEBUG:Unknown paper type: !\n");
    EXPECT_EQ(gap(3, "labelgaps"), "");
    EXPECT_EQ(log, "DEBUG:Unknown paper type: labelgaps!\n");
}

TEST_F(MediaSetup, PaperThatOnlyContainsAWordMatches) {
    EXPECT_EQ(gap(3, "ThermalNormalPaper"), "");
    EXPECT_EQ(gap(3, "ContinueRoll"), "^MNN\r\n");
    EXPECT_EQ(gap(3, "WideLabelGaps2"), "^MNY\r\n");
    EXPECT_EQ(gap(3, "WideLabelMark2"), "^MNM\r\n");
}

TEST_F(MediaSetup, TheFirstPaperWordDecides) {
    EXPECT_EQ(gap(3, "ContinueNormal"), "");
    EXPECT_EQ(log, "DEBUG:Skip the GAP cmd by Normal paper type\n");
    EXPECT_EQ(gap(3, "LabelGapsNormal"), "");
    EXPECT_EQ(gap(3, "LabelGapsContinue"), "^MNN\r\n");
    EXPECT_EQ(gap(3, "LabelMarkContinue"), "^MNN\r\n");
    EXPECT_EQ(gap(3, "LabelMarkLabelGaps"), "^MNY\r\n");
}

TEST_F(MediaSetup, TheGapsOffsetHasNoEffect) {
    EXPECT_EQ(gap(3, "LabelGaps", 7), "^MNY\r\n");
    EXPECT_EQ(gap(0, "LabelGaps", 7), "^MNN\r\n");
}

TEST_F(MediaSetup, TheSpeedIsSentAsItsText) {
    EXPECT_EQ(speed("4"), "^PR4\r\n");
    EXPECT_EQ(speed("6.5"), "^PR6.5\r\n");
    EXPECT_EQ(speed("04"), "^PR04\r\n");
    EXPECT_EQ(speed("3inch%d"), "^PR3inch%d\r\n");
    EXPECT_EQ(speed(" 2"), "^PR 2\r\n");
}

TEST_F(MediaSetup, ASpeedThatIsNoneIsNotSent) {
    for (const char* text : {"", "0", "0.0", "-4", "fast", "v4", "nan"}) {
        EXPECT_EQ(speed(text), "") << text;
    }
}

TEST_F(MediaSetup, TheSmallestSpeedIsBeyondTenToTheMinusFifteen) {
    EXPECT_EQ(speed("1e-15"), "");
    EXPECT_EQ(speed("1.0001e-15"), "^PR1.0001e-15\r\n");
}

TEST_F(MediaSetup, NormalSpeedIsNotSent) {
    EXPECT_EQ(speed("Normal"), "");
    EXPECT_EQ(speed("4Normal"), "");
    EXPECT_EQ(speed("4normal"), "^PR4normal\r\n");
}

TEST_F(MediaSetup, DarknessIsSentFromZeroToThirty) {
    EXPECT_EQ(speed("", 0), "~SD0\r\n");
    EXPECT_EQ(speed("", 1), "~SD1\r\n");
    EXPECT_EQ(speed("", 15), "~SD15\r\n");
    EXPECT_EQ(speed("", 30), "~SD30\r\n");
    EXPECT_EQ(speed("", -1), "");
    EXPECT_EQ(speed("", 31), "");
    EXPECT_EQ(speed("", std::numeric_limits<int>::min()), "");
    EXPECT_EQ(speed("", std::numeric_limits<int>::max()), "");
}

TEST_F(MediaSetup, SpeedAndDarknessAreIndependent) {
    EXPECT_EQ(speed("4", 30), "^PR4\r\n~SD30\r\n");
    EXPECT_EQ(speed("Normal", 8), "~SD8\r\n");
    EXPECT_EQ(speed("4", 31), "^PR4\r\n");
    EXPECT_EQ(speed("Normal", 31), "");
}

TEST_F(MediaSetup, TheMediaMethodIsThePrintMethod) {
    EXPECT_EQ(ribbon("Direct"), "^MTD\r\n");
    EXPECT_EQ(ribbon("Transfer"), "^MTT\r\n");
    EXPECT_EQ(ribbon("ThermalDirect2"), "^MTD\r\n");
    EXPECT_EQ(ribbon("ThermalTransfer2"), "^MTT\r\n");
    EXPECT_EQ(ribbon("TransferDirect"), "^MTD\r\n") << "the first test decides";
    EXPECT_EQ(ribbon(""), "");
    EXPECT_EQ(ribbon("direct"), "");
    EXPECT_EQ(ribbon("Saved"), "");
}

TEST_F(MediaSetup, APostActionIsAMediaMode) {
    EXPECT_EQ(action("TearOff"), "^MMT,N\r\n");
    EXPECT_EQ(action("PeelOff"), "^MMP,N\r\n");
    EXPECT_EQ(action("Cut"), "^MMC,N\r\n");
    EXPECT_EQ(action("PartialCut"), "^MMC,N\r\n");
}

TEST_F(MediaSetup, APostActionOfNoneKeepsThePrintersMode) {
    for (const char* text : {"Normal", "None", "", "Rewind", "tearoff", "cut"}) {
        EXPECT_EQ(action(text), "") << text;
    }
}

TEST_F(MediaSetup, APostActionThatOnlyContainsAWordMatches) {
    EXPECT_EQ(action("MyTearOff2"), "^MMT,N\r\n");
    EXPECT_EQ(action("MyPeelOff2"), "^MMP,N\r\n");
    EXPECT_EQ(action("CutAfterJob"), "^MMC,N\r\n");
}

TEST_F(MediaSetup, TheFirstPostActionWordDecides) {
    EXPECT_EQ(action("TearOffNormal"), "");
    EXPECT_EQ(action("CutNormal"), "");
    EXPECT_EQ(action("CutNone"), "");
    EXPECT_EQ(action("PeelOffNone"), "");
    EXPECT_EQ(action("PeelOffTearOff"), "^MMT,N\r\n");
    EXPECT_EQ(action("CutTearOff"), "^MMT,N\r\n");
    EXPECT_EQ(action("CutPeelOff"), "^MMP,N\r\n");
}

}  // namespace
}  // namespace kelp_test
