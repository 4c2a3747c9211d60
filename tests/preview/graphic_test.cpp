// The run-length language of graphics, each expectation worked by hand.

#include <gtest/gtest.h>

#include "tests/preview/decoded.h"

namespace {

using kelp_test::block;
using kelp_test::decode;
using kelp_test::decoded_rows;
using kelp_test::rows;
using Rows = std::vector<std::string>;

std::string digits(std::size_t count, char digit) {
    std::string text;
    text.append(count, digit);
    return text;
}

TEST(Graphic, DigitsAreNibblesHighOneFirstInCapitalsOrNot) {
    EXPECT_EQ(decoded_rows(16, 8, "0123456789ABCDEFfedcba9876543210"),
              (Rows{"0123456789ABCDEF", "FEDCBA9876543210"}));
}

TEST(Graphic, EachCapitalLetterRepeatsOnceMoreThanTheOneBefore) {
    for (char letter = 'G'; letter <= 'Y'; ++letter) {
        const auto count = static_cast<std::size_t>(letter - 'G' + 1);
        // 20 bytes are 40 digits: the run, a 5, zeros
        EXPECT_EQ(decoded_rows(20, 20, std::string(1, letter) + "A5,"),
                  (Rows{digits(count, 'A') + "5" + digits(39 - count, '0')}))
            << letter;
    }
}

TEST(Graphic, EachSmallLetterRepeatsTwentyTimesMoreThanTheOneBefore) {
    for (char letter = 'g'; letter <= 'z'; ++letter) {
        const auto count = static_cast<std::size_t>(letter - 'g' + 1) * 20;
        EXPECT_EQ(decoded_rows(201, 201, std::string(1, letter) + "A5,"),
                  (Rows{digits(count, 'A') + "5" + digits(401 - count, '0')}))
            << letter;
    }
}

TEST(Graphic, LettersAddUpInAnyOrder) {
    // 20 + 5, 5 + 20, 1 + 1 + 1, 400 + 400 + 20 + 19
    EXPECT_EQ(decoded_rows(13, 13, "gK31"), (Rows{digits(25, '3') + "1"}));
    EXPECT_EQ(decoded_rows(13, 13, "Kg31"), (Rows{digits(25, '3') + "1"}));
    EXPECT_EQ(decoded_rows(2, 2, "GGG71"), (Rows{"7771"}));
    EXPECT_EQ(decoded_rows(420, 420, "zzgY01"), (Rows{digits(839, '0') + "1"}));
}

TEST(Graphic, ACommaFillsTheRowWithZeros) {
    EXPECT_EQ(decoded_rows(6, 2, "F0,,A,"), (Rows{"F000", "0000", "A000"}));
}

TEST(Graphic, AnExclamationMarkFillsTheRowWithOnes) {
    EXPECT_EQ(decoded_rows(6, 2, "0!!12!"), (Rows{"0FFF", "FFFF", "12FF"}));
}

TEST(Graphic, AFullRowNeedsNoCommaAndACommaBehindItIsTheNextRow) {
    EXPECT_EQ(decoded_rows(6, 2, "JF,1234"), (Rows{"FFFF", "0000", "1234"}));
}

TEST(Graphic, AColonRepeatsTheRowBefore) {
    EXPECT_EQ(decoded_rows(8, 2, "F00F::,"), (Rows{"F00F", "F00F", "F00F", "0000"}));
}

TEST(Graphic, AColonAtTheTopIsAWhiteRow) {
    EXPECT_EQ(decoded_rows(6, 2, ":!:"), (Rows{"0000", "FFFF", "FFFF"}));
}

TEST(Graphic, LineEndsMayStandAnywhere) {
    EXPECT_EQ(decoded_rows(4, 2, "\r\nH\nF\r\n0\n,\nH\r1\n2,"), (Rows{"FF00", "1120"}));
}

TEST(Graphic, ARunGoesOnInTheNextRowWithAWarning) {
    const auto decoded = decode(block(4, 2, "1L23"));  // 1, six times 2, 3
    EXPECT_EQ(rows(*decoded.labels.at(0).dots), (Rows{"1222", "2223"}));
    EXPECT_EQ(decoded_rows(4, 2, "1L23"), (Rows{"a run goes beyond its row"}));
}

TEST(Graphic, ARunEndsWithTheGraphic) {
    const auto decoded = decode(block(4, 2, "1zzz2"));
    EXPECT_EQ(rows(*decoded.labels.at(0).dots), (Rows{"1222", "2222"}));
    EXPECT_EQ(decoded.warnings(), 1U);
}

TEST(Graphic, AColonWithinARowTakesTheRestOfTheRowBefore) {
    // behind two digits and behind three
    const auto decoded = decode(block(6, 2, "123445:678:"));
    EXPECT_EQ(rows(*decoded.labels.at(0).dots), (Rows{"1234", "4534", "6784"}));
    EXPECT_EQ(decoded_rows(6, 2, "123445:678:"), (Rows{"':' within a row (2 times)"}));
}

TEST(Graphic, ARepeatCountWithoutADigitIsDropped) {
    const auto decoded = decode(block(6, 2, "1G,2z!3g:"));
    EXPECT_EQ(rows(*decoded.labels.at(0).dots), (Rows{"1000", "2FFF", "3FFF"}));
    EXPECT_EQ(decoded.warnings(), 2U);  // the counts, and ':' within a row
}

TEST(Graphic, StrangeBytesAreSkippedWithOneWarning) {
    const auto decoded = decode(block(2, 2, "1 2\x80*34"));
    EXPECT_EQ(rows(*decoded.labels.at(0).dots), (Rows{"1234"}));
    EXPECT_EQ(decoded_rows(2, 2, "1 2\x80*34"), (Rows{"no graphic data, skipped (3 times)"}));
}

TEST(Graphic, MoreDataThanItsRowsIsSkippedWithAWarning) {
    const auto decoded = decode(block(2, 2, "123456"));
    EXPECT_EQ(rows(*decoded.labels.at(0).dots), (Rows{"1234"}));
    EXPECT_EQ(decoded_rows(2, 2, "12345"),
              (Rows{"more data than the graphic has room for, skipped"}));
}

TEST(Graphic, ACommandEndsItEarlyWithTheWholeRowsThereAre) {
    const auto decoded = decode(block(8, 2, "1234,56"));
    EXPECT_EQ(rows(*decoded.labels.at(0).dots), (Rows{"1234", "0000"}));
    EXPECT_EQ(decoded_rows(8, 2, "1234,56"),
              (Rows{"the graphic ends after 2 of 4 rows, its last row cut short"}));
}

TEST(Graphic, ATotalOfNoWholeRowsGivesTheWholeOnesWithAWarning) {
    const auto decoded = decode(block(5, 2, "12345678"));
    EXPECT_EQ(rows(*decoded.labels.at(0).dots), (Rows{"1234", "5678"}));
    EXPECT_EQ(decoded_rows(5, 2, "12345678"), (Rows{"a graphic of 5 bytes is no whole rows of 2"}));
}

}  // namespace
