#include <gtest/gtest.h>

#include <cstddef>
#include <string>

#include "printer/zpl_encoding.h"
#include "printer/zpl_printer.h"
#include "tests/unit/printer/support/memory_stream.h"
#include "tests/unit/printer/support/recording_printer.h"

namespace kelp_test {
namespace {

std::string row_text(const Bytes& row) {
    std::string text;
    zplAppendRow(text, row.data(), row.size());
    return text;
}

TEST(ZplRow, DigitsAreCapitalHexHighNibbleFirst) {
    EXPECT_EQ(row_text({0x01, 0x23, 0x45, 0x67}), "01234567");
    EXPECT_EQ(row_text({0x89, 0xAB, 0xCD, 0xEF}), "89ABCDEF");
    EXPECT_EQ(row_text({0xF1}), "F1");
}

TEST(ZplRow, ARunCrossesByteBorders) {
    // A8 88 85: one A, four 8, one 5
    EXPECT_EQ(row_text({0xA8, 0x88, 0x85}), "AJ85");
}

TEST(ZplRow, ZerosWithinTheRowAreAnOrdinaryRun) {
    EXPECT_EQ(row_text({0x00, 0x01}), "I01");
    EXPECT_EQ(row_text({0x10, 0x00, 0x01}), "1J01");
    // 419 bytes of 00, then 0F: 839 zeros and an F
    Bytes row(420);
    row[419] = 0x0F;
    EXPECT_EQ(row_text(row), "zzgY0F");
}

TEST(ZplRow, ASingleFinalZeroIsWritten) {
    EXPECT_EQ(row_text({0xA0}), "A0");
    EXPECT_EQ(row_text({0xFF, 0xF0}), "IF0");
}

TEST(ZplRow, AnEvenFinalRunOfZerosIsAComma) {
    EXPECT_EQ(row_text({0xFF, 0x00}), "HF,");
    EXPECT_EQ(row_text({0xAB, 0x00, 0x00}), "AB,");
}

TEST(ZplRow, AnOddFinalRunOfZerosIsAZeroAndAComma) {
    EXPECT_EQ(row_text({0xF0, 0x00}), "F0,");
    EXPECT_EQ(row_text({0xF0, 0x00, 0x00}), "F0,");
}

TEST(ZplRow, AWhiteRowIsACommaAtAnyLength) {
    for (const std::size_t length : {1U, 2U, 9U, 104U, 1000U}) {
        EXPECT_EQ(row_text(Bytes(length)), ",") << length;
    }
}

TEST(ZplRow, ARowOfNoBytesIsNothing) {
    EXPECT_EQ(row_text({}), "");
}

TEST(ZplRow, AFinalRunOfOnesIsWrittenOut) {
    EXPECT_EQ(row_text({0xFF}), "HF");
    EXPECT_EQ(row_text({0x00, 0xFF}), "H0HF");
    EXPECT_EQ(row_text(Bytes(104, 0xFF)), "pNF");
}

TEST(ZplRow, AFinalRunOfAnotherDigitIsAnOrdinaryRun) {
    EXPECT_EQ(row_text({0x12, 0x22}), "1I2");
    EXPECT_EQ(row_text({0x12, 0x23}), "1H23");
}

TEST(ZplRow, IsAppendedToWhatIsThere) {
    std::string text = "HF";
    const Bytes row{0x00};
    zplAppendRow(text, row.data(), row.size());
    EXPECT_EQ(text, "HF,");
}

TEST(ZplRow, OnlyARowOfNothingButOnesIsSolid) {
    for (std::size_t length = 1; length <= 20; ++length) {
        Bytes row(length, 0xFF);
        EXPECT_TRUE(zplIsSolidRow(row.data(), length)) << length;
        for (std::size_t i = 0; i < length; ++i) {
            row[i] = 0xFE;
            EXPECT_FALSE(zplIsSolidRow(row.data(), length)) << length << ", byte " << i;
            row[i] = 0xFF;
        }
    }
}

class ZplPrintLine : public testing::Test {
  protected:
    ZplPrintLine() { printer.getOutputStreams() = {stream.file()}; }
    ~ZplPrintLine() override { LastSet = 0; }

    std::string printed(const Bytes& row) {
        printer.ZPLPrintLine(row.data(), static_cast<int>(row.size()));
        return stream.take();
    }

    MemoryStream stream;
    ZplPrinter printer;
};

TEST_F(ZplPrintLine, TheFirstSolidRowIsWrittenInFull) {
    LastSet = 0;
    EXPECT_EQ(printed({0xFF, 0xFF}), "JF");
    EXPECT_EQ(LastSet, 1);
}

TEST_F(ZplPrintLine, ALaterSolidRowIsAColon) {
    LastSet = 1;
    EXPECT_EQ(printed({0xFF, 0xFF}), ":");
    EXPECT_EQ(LastSet, 1);
}

TEST_F(ZplPrintLine, TheColonComesWhateverTheRowBeforeWas) {
    LastSet = 0;
    EXPECT_EQ(printed({0x00, 0x00}), ",");
    EXPECT_EQ(printed({0xFF, 0xFF}), ":");
    EXPECT_EQ(printed({0x80, 0x01}), "8H01");
    EXPECT_EQ(printed({0xFF, 0xFF}), ":");
}

TEST_F(ZplPrintLine, ARepeatedRowThatIsNotSolidIsWrittenAgain) {
    LastSet = 0;
    EXPECT_EQ(printed({0x12}), "12");
    EXPECT_EQ(printed({0x12}), "12");
}

TEST_F(ZplPrintLine, AnyFlagButZeroTurnsTheShortcutOnAndIsLeftAlone) {
    LastSet = -7;
    EXPECT_EQ(printed({0xFF}), ":");
    EXPECT_EQ(LastSet, -7);
    EXPECT_EQ(printed({0xFE}), "FE");
    EXPECT_EQ(LastSet, 1);
}

TEST_F(ZplPrintLine, TheRowIsLeftAsItIs) {
    const Bytes row{0x12, 0x00, 0xFF};
    const Bytes before = row;
    printed(row);
    EXPECT_EQ(row, before);
}

TEST_F(ZplPrintLine, EveryStreamGetsTheRow) {
    MemoryStream second;
    printer.getOutputStreams().push_back(second.file());
    LastSet = 0;
    EXPECT_EQ(printed({0xF0, 0x00}), "F0,");
    EXPECT_EQ(printed({0xFF, 0xFF}), ":");
    EXPECT_EQ(second.take(), "F0,:");
}

}  // namespace
}  // namespace kelp_test
