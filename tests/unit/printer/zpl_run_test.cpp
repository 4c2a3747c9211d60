#include <gtest/gtest.h>

#include <cstddef>
#include <string>

#include "printer/zpl_encoding.h"
#include "printer/zpl_printer.h"
#include "tests/unit/printer/support/memory_stream.h"

namespace kelp_test {
namespace {

std::string run(char digit, unsigned count) {
    std::string text;
    zplAppendRun(text, digit, count);
    return text;
}

TEST(ZplRun, ASingleDigitStandsAlone) {
    EXPECT_EQ(run('0', 1), "0");
    EXPECT_EQ(run('F', 1), "F");
}

TEST(ZplRun, TwoToNineteenAreOneCapital) {
    EXPECT_EQ(run('5', 2), "H5");
    EXPECT_EQ(run('A', 2), "HA");
    EXPECT_EQ(run('F', 4), "JF");
    EXPECT_EQ(run('0', 7), "M0");
    EXPECT_EQ(run('F', 19), "YF");
}

TEST(ZplRun, TwentiesAreOneSmallLetter) {
    EXPECT_EQ(run('F', 20), "gF");
    EXPECT_EQ(run('F', 40), "hF");
    EXPECT_EQ(run('1', 200), "p1");
    EXPECT_EQ(run('F', 380), "yF");
}

TEST(ZplRun, LettersAddUp) {
    EXPECT_EQ(run('3', 25), "gK3");
    EXPECT_EQ(run('F', 21), "gGF");
    EXPECT_EQ(run('F', 208), "pNF");
    EXPECT_EQ(run('F', 399), "yYF");
}

TEST(ZplRun, FourHundredsAreRepeated) {
    EXPECT_EQ(run('F', 400), "zF");
    EXPECT_EQ(run('F', 401), "zGF");
    EXPECT_EQ(run('F', 420), "zgF");
    EXPECT_EQ(run('F', 800), "zzF");
    EXPECT_EQ(run('0', 839), "zzgY0");
}

TEST(ZplRun, IsAppendedToWhatIsThere) {
    std::string text = "before";
    zplAppendRun(text, 'C', 3);
    EXPECT_EQ(text, "beforeIC");
}

// The run's length as a printer reads it, and whether its letters stand in their one proper order:
// any number of z, at most one of g to y, at most one of G to Y, then the digit.
struct Decoded {
    unsigned count = 0;
    char digit = '?';
    bool proper = true;
};
Decoded decoded(const std::string& text) {
    Decoded result;
    int stage = 0;
    std::size_t at = 0;
    for (; at + 1 < text.size(); ++at) {
        const char letter = text[at];
        if (letter == 'z') {
            result.proper &= stage == 0;
            result.count += 400;
        } else if (letter >= 'g' && letter <= 'y') {
            result.proper &= stage < 1;
            stage = 1;
            result.count += 20 * static_cast<unsigned>(letter - 'g' + 1);
        } else if (letter >= 'G' && letter <= 'Y') {
            result.proper &= stage < 2;
            stage = 2;
            result.count += static_cast<unsigned>(letter - 'G' + 1);
        } else {
            result.proper = false;
        }
    }
    if (text.size() == 1) {
        result.count = 1;
    }
    result.digit = text.at(at);
    return result;
}

TEST(ZplRun, EveryLengthReadsBackAsItself) {
    for (unsigned count = 1; count <= 2000; ++count) {
        const char digit = "0123456789ABCDEF"[count % 16];
        const std::string text = run(digit, count);
        const Decoded back = decoded(text);
        EXPECT_EQ(back.count, count) << text;
        EXPECT_EQ(back.digit, digit) << text;
        EXPECT_TRUE(back.proper) << text;
    }
}

TEST(ZplRun, ThePrinterWritesARunToEveryStream) {
    MemoryStream first;
    MemoryStream second;
    ZplPrinter printer;
    printer.getOutputStreams() = {first.file(), second.file()};
    printer.ZPLCompress('3', 25);
    printer.ZPLCompress('A', 1);
    printer.ZPLCompress('F', 839);
    EXPECT_EQ(first.take(), "gK3AzzgYF");
    EXPECT_EQ(second.take(), "gK3AzzgYF");
}

}  // namespace
}  // namespace kelp_test
