// The commands around the graphics.

#include <gtest/gtest.h>

#include <sstream>

#include "preview/byte_reader.h"
#include "tests/preview/decoded.h"

namespace {

using kelp_preview::Label;
using Settings = kelp_preview::Setup;  // a test has a Setup of its own
using kelp_test::block;
using kelp_test::decode;
using kelp_test::Decoded;
using kelp_test::rows;
using Rows = std::vector<std::string>;

// What a job of one page looks like.
const std::string job = std::string(64, '\n') +
                        "SIZE 50.0 mm, 30.0 mm\r\n^XX\r\n^PW399\r\n^LL239\r\n^MNY\r\n^POI\r\n"
                        "^PR4\r\n~SD12\r\n^MTD\r\n^MMT,N\r\n^XZ\r\n\r\n"
                        "^XX\r\n^PQ3\n~DGR:CUPS.GRF,4,2,\nJFF0,^FO0,0^XGR:CUPS.GRF,1,1^FS\n^XZ\r\n";

TEST(ByteReader, IsAtTheEndHoweverOftenItIsAsked) {
    std::stringbuf stream("ab");
    kelp_preview::ByteReader reader(stream);
    EXPECT_EQ(reader.next(), 'a');
    EXPECT_EQ(reader.offset(), 1U);
    EXPECT_EQ(reader.next(), 'b');
    for (int i = 0; i < 3; ++i) {
        EXPECT_EQ(reader.next(), kelp_preview::ByteReader::kEnd);
        EXPECT_EQ(reader.offset(), 2U);
    }
}

TEST(Stream, AJobIsReadWithoutAWarning) {
    const Decoded decoded = decode(job);
    ASSERT_EQ(decoded.labels.size(), 1U);
    const Label& label = decoded.labels[0];
    EXPECT_EQ(rows(*label.dots), (Rows{"FFFF", "F000"}));
    EXPECT_EQ(label.dots->width, 16U);
    EXPECT_EQ(label.copies, 3U);
    EXPECT_EQ(label.setup.sizeLine, "50.0 mm, 30.0 mm");
    EXPECT_EQ(label.setup.width, 399U);
    EXPECT_EQ(label.setup.length, 239U);
    EXPECT_EQ(label.setup.mediaSensing, "Y");
    EXPECT_EQ(label.setup.orientation, "I");
    EXPECT_EQ(label.setup.speed, "4");
    EXPECT_EQ(label.setup.darkness, 12U);
    EXPECT_EQ(label.setup.printMethod, "D");
    EXPECT_EQ(label.setup.afterPrint, "T");
    EXPECT_EQ(label.offset, job.rfind("^XX"));
    EXPECT_EQ(label.graphicBytes, 6U);  // a line feed and JFF0,
    EXPECT_EQ(label.dotBytes, 4U);
    EXPECT_EQ(decoded.warnings(), 0U);
    EXPECT_TRUE(label.findings.unknownCommands.empty());
}

TEST(Stream, SettingsOutliveALabelAndCopiesDoNot) {
    const Decoded decoded = decode(job + "^XA~DGR:A.GRF,2,2,5555^FO0,0^XGR:A.GRF,1,1^FS^XZ" + job);
    ASSERT_EQ(decoded.labels.size(), 3U);
    EXPECT_EQ(decoded.labels[1].setup.darkness, 12U);
    EXPECT_EQ(decoded.labels[1].copies, 1U);
    EXPECT_EQ(rows(*decoded.labels[1].dots), (Rows{"5555"}));
    EXPECT_EQ(decoded.labels[2].copies, 3U);
    EXPECT_EQ(decoded.warnings(), 0U);
}

TEST(Stream, TheCopiesOfABlockWithoutALabelAreNotThoseOfTheNext) {
    const Decoded decoded = decode("^XA^PQ7^XZ^XA~DGA,2,2,5555^XGA^XZ");
    ASSERT_EQ(decoded.labels.size(), 1U);
    EXPECT_EQ(decoded.labels[0].copies, 1U);
}

TEST(Stream, CommandsMayBeInSmallLetters) {
    const Decoded decoded = decode("^xa^pq3~dgA,2,2,5555^fo8,0^xgA^fs^xz");
    ASSERT_EQ(decoded.labels.size(), 1U);
    EXPECT_EQ(rows(*decoded.labels[0].dots), (Rows{"005555"}));
    EXPECT_EQ(decoded.labels[0].copies, 3U);
    EXPECT_EQ(decoded.warnings(), 0U);
    EXPECT_TRUE(decoded.labels[0].findings.unknownCommands.empty());
}

TEST(Stream, ASettingIsUnsetUntilItIsSent) {
    const Settings setup = decode(block(2, 2, "1234")).labels.at(0).setup;
    EXPECT_EQ(setup.sizeLine, "");
    EXPECT_FALSE(setup.width || setup.length || setup.darkness);
    EXPECT_EQ(setup.mediaSensing + setup.orientation + setup.speed + setup.printMethod, "");
}

TEST(Stream, UnknownCommandsAreListedWithTheirPlaceAndSkipped) {
    const Decoded decoded = decode("^XA^FDtext\nmore text\n~JA" + block(2, 2, "1234").substr(3));
    ASSERT_EQ(decoded.labels.size(), 1U);
    const auto& unknown = decoded.labels[0].findings.unknownCommands.kept();
    ASSERT_EQ(unknown.size(), 2U);
    EXPECT_EQ(unknown[0].text, "^FD");
    EXPECT_EQ(unknown[0].offset, 3U);
    EXPECT_EQ(unknown[1].text, "~JA");
    EXPECT_EQ(unknown[1].offset, 21U);
    EXPECT_EQ(decoded.warnings(), 0U);
}

TEST(Stream, BytesThatAreNoCommandGiveAWarningAndNoUnprintableText) {
    const Decoded decoded = decode("\x01%!PS\n" + block(2, 2, "1234"));
    ASSERT_EQ(decoded.warnings(), 1U);
    const auto& warning = decoded.labels.at(0).findings.warnings.kept()[0];
    EXPECT_EQ(warning.offset, 0U);
    EXPECT_EQ(warning.text, "no command, skipped: \\x01%!PS");
}

TEST(Stream, AnUnknownCommandOfStrangeBytesIsListedPrintably) {
    const Decoded decoded = decode("^\xFF\x02" + block(2, 2, "1234"));
    EXPECT_EQ(decoded.labels.at(0).findings.unknownCommands.kept().at(0).text, "^\\xFF\\x02");
}

TEST(Stream, ASettingOfStrangeBytesIsShownPrintably) {
    const Settings setup =
        decode("SIZE 5\x80\r\n^XA^MN\xFF\x1B\n" + block(2, 2, "1234").substr(3)).labels.at(0).setup;
    EXPECT_EQ(setup.mediaSensing, "\\xFF\\x1B");
    EXPECT_EQ(setup.sizeLine, "5\\x80");
}

TEST(Stream, ManyRemarksAreCountedAndTheFirstHundredKept) {
    std::string stream;
    for (int i = 0; i < 1000; ++i) {
        stream += "^QQ";
    }
    const Decoded decoded = decode(stream + block(2, 2, "1234"));
    EXPECT_EQ(decoded.labels.at(0).findings.unknownCommands.count(), 1000U);
    EXPECT_EQ(decoded.labels.at(0).findings.unknownCommands.kept().size(), 100U);
}

TEST(Stream, ACommandWithoutItsValueIsSkippedWithAWarning) {
    for (const std::string command : {"^PW", "^LLx", "~SD", "^PO", "^PR ", "^MN,", "^PQ"}) {
        const Decoded decoded = decode("^XA" + command + "\n" + block(2, 2, "1234").substr(5));
        ASSERT_EQ(decoded.labels.size(), 1U) << command;
        // "^PQ1" of the block follows the faulty one
        EXPECT_EQ(decoded.labels[0].copies, 1U);
        EXPECT_EQ(decoded.warnings(), 1U) << command;
    }
}

TEST(Stream, AStoredGraphicIsRecalledWhereAndAsLargeAsToldAndAsOftenAsTold) {
    // 80 at 3,1: dot 3 of row 1. 80 twice as large at 8,0: a square of 2 dots.
    const Decoded decoded = decode("~DGDOT,1,1,80^XA^FO3,1^XGR:DOT.GRF^FS^FO8,0^XGdot,2,2^FS^XZ");
    ASSERT_EQ(decoded.labels.size(), 1U);
    const auto& dots = *decoded.labels[0].dots;
    EXPECT_EQ(dots.width, 24U);  // 8 + 8 * 2
    EXPECT_EQ(rows(dots), (Rows{"00C000", "10C000"}));
    EXPECT_EQ(decoded.warnings(), 0U);
}

TEST(Stream, EachSideOfAGraphicIsMagnifiedByItsOwn) {
    const std::string stored = "^XA~DGA,1,1,A5^XGA,";
    EXPECT_EQ(rows(*decode(stored + "2,1^XZ").labels.at(0).dots), Rows{"CC33"});
    EXPECT_EQ(rows(*decode(stored + "1,2^XZ").labels.at(0).dots), (Rows{"A5", "A5"}));
}

TEST(Stream, NamesOfGraphicsAreTheSameInSmallLetters) {
    const Decoded decoded = decode("^XA~DGr:abcxyz.grf,1,1,A5^XGR:ABCXYZ.GRF,1,1^XZ");
    ASSERT_EQ(decoded.labels.size(), 1U);
    EXPECT_EQ(rows(*decoded.labels[0].dots), Rows{"A5"});
    EXPECT_EQ(decoded.warnings(), 0U);
}

TEST(Stream, RecallingAGraphicThatIsNotThereGivesAWarning) {
    const Decoded decoded = decode(block(2, 2, "1234") + "^XA^XGR:OTHER.GRF,1,1^FS^XZ");
    EXPECT_EQ(decoded.labels.size(), 1U);
    ASSERT_EQ(decoded.rest.warnings.count(), 1U);
    EXPECT_EQ(decoded.rest.warnings.kept()[0].text, "no graphic to recall: R:OTHER.GRF");
}

TEST(Stream, ABlockWithinABlockEndsTheLabelBefore) {
    const std::string one = block(2, 2, "1234");
    const Decoded decoded = decode(one.substr(0, one.find("^XZ")) + block(2, 2, "5678"));
    ASSERT_EQ(decoded.labels.size(), 2U);
    EXPECT_EQ(rows(*decoded.labels[0].dots), (Rows{"1234"}));
    EXPECT_EQ(rows(*decoded.labels[1].dots), (Rows{"5678"}));
    EXPECT_EQ(decoded.warnings(), 1U);
}

TEST(Stream, AFieldEndsWithItsPlace) {
    // the second one is at 0,0 again
    const Decoded decoded = decode("~DGA,1,1,80^XA^FO8,1^XGA^FS^XGA^FS^XZ");
    EXPECT_EQ(rows(*decoded.labels.at(0).dots), (Rows{"8000", "0080"}));
}

TEST(Stream, AnEndWithoutABlockGivesAWarning) {
    const Decoded decoded = decode(block(2, 2, "1234") + "^XZ");
    EXPECT_EQ(decoded.labels.size(), 1U);
    ASSERT_EQ(decoded.rest.warnings.count(), 1U);
    EXPECT_EQ(decoded.rest.warnings.kept()[0].text, "^XZ without a block");
}

TEST(Stream, AGraphicsNameIsNotReadForEver) {
    const Decoded decoded = decode("^XA~DG" + std::string(10000, 'A') + ",2,2,5555^XZ");
    EXPECT_TRUE(decoded.labels.empty());
    ASSERT_FALSE(decoded.rest.warnings.empty());
    EXPECT_EQ(decoded.rest.warnings.kept()[0].text,
              "~DG without name, size and bytes per row, skipped");
    EXPECT_EQ(decoded.rest.warnings.kept()[0].offset, 3U);
}

TEST(Stream, ABlockWithoutAGraphicIsNoLabel) {
    EXPECT_TRUE(decode("^XA^PW399^XZ").labels.empty());
    EXPECT_TRUE(decode("").labels.empty());
}

}  // namespace
