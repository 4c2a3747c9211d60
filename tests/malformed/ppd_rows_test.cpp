// Printer descriptions that are broken, as far as libcups lets them through, and those it refuses:
// a job without a description has no paper size.

#include <gtest/gtest.h>

#include "tests/malformed/malformed_job.h"

namespace kelp_test {
namespace {

const char* const no_paper = "ERROR: Paper size must not less than 1.0 : (0.000000, 0.000000)";

std::string replaced(std::string text, const std::string& what, const std::string& by) {
    for (std::size_t at = 0; (at = text.find(what, at)) != std::string::npos; at += by.size()) {
        text.replace(at, what.size(), by);
    }
    return text;
}

std::string bare() {
    return bare_ppd().text();
}

std::string sized(const std::string& width, const std::string& length) {
    return Ppd().page_size("Page", width, length).text();
}

// The bare description with one option of one choice.
std::string with(const std::string& option, const std::string& choice) {
    return bare_ppd().option(option, {choice}).text();
}

// An option spelled out, to be spoilt.
const char* const speed =
    "*OpenUI *PrintSpeed/Speed: PickOne\n"
    "*DefaultPrintSpeed: 4\n"
    "*PrintSpeed 4/4: \"\"\n"
    "*CloseUI: *PrintSpeed\n";

std::string printed(const std::vector<std::string>& commands, const std::string& rows = "JFF0,") {
    SetupBlock setup;
    setup.commands = commands;
    return preamble() + setup.text() + Graphic{.rows = rows}.text();
}

// Nothing is printed.
std::vector<MalformedJob> refused() {
    std::vector<MalformedJob> rows;
    const auto refuse = [&](const std::string& name, const Spoil& make) {
        rows.push_back({name, make, 1, no_paper, ""});
    };
    refuse("PathIsEmpty", ppd_path(""));
    refuse("PathOfAnEmptyDevice", ppd_path("/dev/null"));
    refuse("PathThroughAFile", ppd_path("/etc/passwd/printer.ppd"));
    refuse("PathTooLong", ppd_path("/" + std::string(5000, 'x')));
    refuse("PathOfFormatCharacters", ppd_path("%s%n%s%n.ppd"));
    refuse("FirstLineMissing", ppd(replaced(bare(), "*PPD-Adobe: \"4.3\"\n", "")));
    refuse("FirstLineWithoutItsStar", ppd(bare().substr(1)));
    refuse("FirstLineIndented", ppd(" " + bare()));
    refuse("ByteOrderMark", ppd("\xEF\xBB\xBF" + bare()));
    refuse("OptionNameTooLong",
           ppd(bare() + replaced(speed, "PrintSpeed", "PrintSpeed" + std::string(40, 'x'))));
    refuse("ChoiceOfHighBytes", ppd(bare() + replaced(speed, " 4/4", " 4\xE9/4")));
    refuse("ChoiceOfControlBytes", ppd(bare() + replaced(speed, " 4/4", " 4\x1B/4")));
    refuse("LineWithoutItsStar", ppd(bare() + "nothing\n" + speed));
    refuse("ConstraintOfOneOption", ppd(bare() + "*UIConstraints: *PrintSpeed\n"));
    refuse("VersionThree", ppd(replaced(bare(), "*PPD-Adobe: \"4", "*PPD-Adobe: \"3")));
    refuse("VersionTwentyFour", ppd(replaced(bare(), "*PPD-Adobe: \"4", "*PPD-Adobe: \"24")));
    refuse("LineOf256Bytes", ppd(bare() + "*Kelp: " + std::string(249, 'x') + "\n"));
    refuse("GroupInAGroup", ppd(bare() + "*OpenGroup: A/A\n*OpenGroup: B/B\n"));
    refuse("NoPageSizes", ppd(Ppd().text()));
    refuse("DefaultPageSizeUnknown",
           ppd(replaced(bare(), "*DefaultPageSize: w288h432", "*DefaultPageSize: Tabloid")));
    refuse("NoPaperDimension", ppd(replaced(bare(), "*PaperDimension w288h432", "*Kelp w288h432")));
    refuse("SizesAreWords", ppd(sized("wide", "long")));
    refuse("SizesAreNotNumbers", ppd(sized("NaN", "NaN")));
    refuse("SizesAreEmpty", ppd(sized("", "")));
    refuse("SizesAreFormatCharacters", ppd(sized("%s%n", "%n%s")));
    refuse("SizesAreAlmostNothing", ppd(sized("0.0000000001", "0.0000000001")));
    refuse("CutInItsHead", ppd(bare().substr(0, 100)));
    refuse("AHundredThousandStars", ppd("*PPD-Adobe: \"4.3\"\n" + std::string(100'000, '*')));
    refuse("OneLineOfAMillionBytes", made_late([] {
               return ppd("*PPD-Adobe: \"4.3\"\n*Kelp: " + std::string(1'000'000, 'x'));
           }));
    return rows;
}

// The job is printed as if nothing was wrong, but for what the row says.
std::vector<MalformedJob> let_through() {
    const std::vector<std::string> plain{"^MNN", "^PON", "~SD0"};
    const std::string as_usual = printed(plain);
    const std::string fast = printed({"^MNN", "^PON", "^PR4", "~SD0"});
    const auto darkness = [&](const std::string& choice, const std::string& command) {
        const std::string expected =
            command.empty() ? printed({"^MNN", "^PON"}) : printed({"^MNN", "^PON", command});
        return MalformedJob{"", ppd(with("Darkness", choice)), 0, "", expected};
    };
    std::vector<MalformedJob> rows{
        {"NoLineFeedAtItsEnd", ppd(bare() + "*Kelp: 1"), 0, "", as_usual},
        {"CarriageReturns", ppd(replaced(bare() + speed, "\n", "\r\n")), 0, "", fast},
        {"CarriageReturnsAlone", ppd(replaced(bare() + speed, "\n", "\r")), 0, "", fast},
        {"EmptyLines", ppd(replaced(bare() + speed, "\n", "\n\n\n")), 0, "", fast},
        {"ColonMissing", ppd(bare() + "*PrintSpeed 4 \"\"\n"), 0, "", as_usual},
        {"QuoteNotClosed", ppd(bare() + speed + "*Kelp: \"never closed\n*More: 1\n"), 0, "", fast},
        {"QuoteNotClosedBefore", ppd(bare() + "*Kelp: \"never closed\n" + speed), 0, "", as_usual},
        {"OptionInAnOption", ppd(bare() + "*OpenUI *A: PickOne\n" + speed), 0, "", fast},
        {"OptionOfNoKnownKind", ppd(bare() + replaced(speed, "PickOne", "PickSome")), 0, "", fast},
        {"LineOf255Bytes", ppd(bare() + "*Kelp: " + std::string(248, 'x') + "\n" + speed), 0, "",
         fast},
        {"ConstraintOfAnOptionWithItself",
         ppd(bare() + speed + "*UIConstraints: *PrintSpeed *PrintSpeed\n"), 0, "", fast},
        {"OptionNotClosed", ppd(bare() + replaced(speed, "*CloseUI: *PrintSpeed\n", "")), 0, "",
         fast},
        {"OptionClosedTwice", ppd(bare() + speed + "*CloseUI: *PrintSpeed\n"), 0, "", fast},
        {"OptionNotOpened",
         ppd(bare() + replaced(speed, "*OpenUI *PrintSpeed/Speed: PickOne\n", "")), 0, "",
         as_usual},
        {"OptionTwice", ppd(bare() + speed + speed), 0, "", fast},
        {"OptionWithoutADefault", ppd(bare() + replaced(speed, "*DefaultPrintSpeed: 4\n", "")), 0,
         "", as_usual},
        {"OptionWithoutChoices", ppd(bare() + replaced(speed, "*PrintSpeed 4/4: \"\"\n", "")), 0,
         "", as_usual},
        {"DefaultIsNoChoice",
         ppd(bare() + replaced(speed, "*DefaultPrintSpeed: 4", "*DefaultPrintSpeed: 4^XA")), 0, "",
         as_usual},
        {"ChoiceTwice",
         ppd(bare() + replaced(speed, "*PrintSpeed 4/4: \"\"\n",
                               "*PrintSpeed 4/4: \"\"\n*PrintSpeed 4/5: \"\"\n")),
         0, "", fast},
        {"GroupNotClosed", ppd(bare() + "*OpenGroup: A/A\n" + speed), 0, "", fast},
        {"AnyFileIncluded", ppd(bare() + "*Include: \"/etc/passwd\"\n" + speed), 0, "", fast},
        {"BytesOfZeroBehind", ppd(bare() + std::string(10, '\0')), 0, "", as_usual},
        {"FiveThousandChoices", made_late([] {
             Ppd long_ppd = bare_ppd();
             std::vector<std::string> choices;
             for (int i = 1; i <= 5'000; ++i) {
                 choices.push_back(std::to_string(i));
             }
             return ppd_with_options(long_ppd.option("PrintSpeed", choices).text(),
                                     "PrintSpeed=5000");
         }),
         0, "", printed({"^MNN", "^PON", "^PR5000", "~SD0"})},
        {"TenMillionBytesOfComments", made_late([] {
             return ppd(
                 bare() +
                 replaced(std::string(100'000, '\n'), "\n", "*%" + std::string(98, '%') + "\n") +
                 speed);
         }),
         0, "", fast},
        {"SizesOverAFloat", ppd(sized("1e99", "1e99")), 0, "", as_usual},
        {"SizesInExponents", ppd(sized("2.88e2", "4.32E+2")), 0, "", as_usual},
        {"SizeBelowZero", ppd(sized("-288", "432")), 1,
         "ERROR: Paper size must not less than 1.0 : (-101.606400, 152.409607)", ""},
        {"LengthMissing", ppd(sized("288", "")), 1,
         "ERROR: Paper size must not less than 1.0 : (101.606400, 0.000000)", ""},
        {"RecordingBelowAMissingFolder",
         ppd(bare_ppd()
                 .option("RecordPrinterCommands", {"1"})
                 .attribute("kelpFilterOutputFile", "missing/folder/rec")
                 .text()),
         0, "", as_usual},
        // The name keeps 255 bytes. Its second line is one in the log, too.
        {"RecordingOfALongNameInLines",
         ppd(bare_ppd()
                 .option("RecordPrinterCommands", {"1"})
                 .attribute("kelpFilterOutputFile",
                            std::string(200, 'r') + "\n" + std::string(200, 'R'))
                 .text()),
         0, std::string(54, 'R'), as_usual},
        {"RecordingInLinesThatLookLikeTheSpoolers",
         ppd(bare_ppd()
                 .option("RecordPrinterCommands", {"1"})
                 .attribute("kelpFilterOutputFile", "missing/\nERROR: x")
                 .text()),
         0, "ERROR: x-20240305070809.bin", as_usual},
        {"RecordingOfFormatCharacters",
         ppd(bare_ppd()
                 .option("RecordPrinterCommands", {"2147483647"})
                 .attribute("kelpFilterOutputFile", "%s%n%d%x")
                 .text()),
         0, "", as_usual},
        {"RecordingLessThanZeroTimes", ppd(with("RecordPrinterCommands", "-1")), 0, "", as_usual},
        // The choice's low eight bits, signed: 99999999999 is 0x17_4876E7FF.
        {"MirrorOfALargeNumber", ppd(with("MirrorImage", "99999999999")), 0, "",
         printed(plain, "JFI0F")},
        {"MirrorOf512", ppd(with("MirrorImage", "512")), 0, "", as_usual},
        {"MirrorOfFormatCharacters", ppd(with("MirrorImage", "%n")), 0, "", as_usual},
        {"HalftoneOfFormatCharacters", ppd(with("HalftoneType", "%s%n")), 0, "", as_usual},
        {"BrightnessOfTheLargest", ppd(with("Brightness", "2147483647")), 0, "",
         printed(plain, "JF:")},
        {"BrightnessOfTheSmallest", ppd(with("Brightness", "-2147483648")), 0, "",
         printed(plain, ",,")},
        {"SpeedOverADouble", ppd(with("PrintSpeed", "1e999")), 0, "",
         printed({"^MNN", "^PON", "^PR1e999", "~SD0"})},
        {"SpeedIsNotANumber", ppd(with("PrintSpeed", "NaN")), 0, "", as_usual},
        {"SpeedIsInfinite", ppd(with("PrintSpeed", "inf")), 0, "",
         printed({"^MNN", "^PON", "^PRinf", "~SD0"})},
        {"SpeedOfFormatCharacters", ppd(with("PrintSpeed", "4%s%n%x")), 0, "",
         printed({"^MNN", "^PON", "^PR4%s%n%x", "~SD0"})},
        {"GapOfTheLargest",
         ppd(bare_ppd()
                 .option("PaperType", {"LabelGaps"})
                 .option("GapsHeight", {"2147483647"})
                 .text()),
         0, "", printed({"^MNY", "^PON", "~SD0"})},
        {"GapOfTheSmallest",
         ppd(bare_ppd()
                 .option("PaperType", {"LabelGaps"})
                 .option("GapsHeight", {"-2147483648"})
                 .text()),
         0, "", as_usual},
    };
    struct Darkness {
        const char* name;
        const char* choice;
        const char* command;
    };
    for (const Darkness& each : {
             Darkness{"DarknessOf30", "30", "~SD30"},
             Darkness{"DarknessOf31", "31", ""},
             Darkness{"DarknessOfMinusOne", "-1", ""},
             Darkness{"DarknessOfTheLargest", "2147483647", ""},
             Darkness{"DarknessOfTheSmallest", "-2147483648", ""},
             Darkness{"DarknessInHexadecimal", "0x1F", "~SD0"},
             Darkness{"DarknessWithASign", "+5", "~SD5"},
             Darkness{"DarknessWithAnExponent", "1e1", "~SD1"},
             Darkness{"DarknessOfFormatCharacters", "%d%n", "~SD0"},
         }) {
        rows.push_back(darkness(each.choice, each.command));
        rows.back().name = each.name;
    }
    return rows;
}

class MalformedPpd : public testing::TestWithParam<MalformedJob> {};

TEST_P(MalformedPpd, EndsAsInTheTable) {
    expect_as_in(GetParam());
}

INSTANTIATE_TEST_SUITE_P(Refused, MalformedPpd, testing::ValuesIn(refused()),
                         row_name<MalformedJob>);
INSTANTIATE_TEST_SUITE_P(LetThrough, MalformedPpd, testing::ValuesIn(let_through()),
                         row_name<MalformedJob>);

}  // namespace
}  // namespace kelp_test
