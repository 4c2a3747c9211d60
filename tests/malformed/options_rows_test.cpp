// Option strings and arguments that nobody means well. None of them is an option of the printer,
// so all of them print as if there was none.

#include <gtest/gtest.h>

#include "tests/malformed/malformed_job.h"

namespace kelp_test {
namespace {

std::string repeated(const std::string& text, std::size_t bytes) {
    std::string all;
    while (all.size() < bytes) {
        all += text;
    }
    return all;
}

// A description with an option of every kind of field; the first choice is the default.
std::string full_ppd() {
    return bare_ppd()
        .custom_page_size()
        .option("PaperType", {"LabelMark", "LabelGaps"})
        .option("GapsHeight", {"3", "0"})
        .option("PrintSpeed", {"4", "2"})
        .option("Darkness", {"15", "30"})
        .option("MirrorImage", {"No", "Yes"})
        .text();
}

std::vector<MalformedJob> option_rows() {
    SetupBlock setup;
    setup.commands = {"^MNM", "^PON", "^PR4", "~SD15"};
    const std::string as_usual = preamble() + setup.text() + Graphic().text();
    setup.commands = {"^MNM", "^PON", "^PR2", "~SD15"};
    const std::string slow = preamble() + setup.text() + Graphic().text();
    const std::string no_paper = "ERROR: Paper size must not less than 1.0 : (0.000000, 0.000000)";

    std::vector<MalformedJob> rows;
    const auto ignored = [&](const std::string& name, const std::string& text) {
        rows.push_back({name, ppd_with_options(full_ppd(), text), 0, "", as_usual});
    };
    const auto slowed = [&](const std::string& name, const std::string& text) {
        rows.push_back({name, ppd_with_options(full_ppd(), text), 0, "", slow});
    };
    ignored("LargeOfBlanks", std::string(large, ' '));
    ignored("LargeOfLetters", std::string(large, 'x'));
    ignored("LargeOfEqualsSigns", std::string(large, '='));
    ignored("LargeOfQuotes", std::string(large, '\''));
    ignored("LargeOfDoubleQuotes", std::string(large + 1, '"'));
    ignored("LargeOfBackslashes", std::string(large, '\\'));
    ignored("LargeOfOpenBraces", "PrintSpeed=" + std::string(large, '{'));
    ignored("LargeOfClosedBraces", "PrintSpeed=" + std::string(large, '}'));
    ignored("LargeOfNestedBraces",
            "a=" + std::string(large / 2, '{') + std::string(large / 2, '}'));
    ignored("LargeOfStrings", repeated("%s", large));
    ignored("LargeOfStores", repeated("%n", large));
    ignored("LargeOfStoresAsAValue", "PrintSpeed=" + repeated("%n", large));
    ignored("LargeOfStoresAsAName", repeated("%n", large) + "=4");
    ignored("LargeOfCommands", "PrintSpeed=" + repeated("^XA^FDx^FS^XZ", large));
    ignored("LargeOfLineFeeds", std::string(large, '\n'));
    ignored("LargeOfHighBytes", std::string(large, '\xFF'));
    ignored("LargeOfEscapes", repeated("\x1B[2J", large));
    ignored("LargeOfShortOptions", repeated("a ", large));
    ignored("LargeOfValuesOfOne", repeated("a=1 ", large));
    ignored("LargeOfDashes", std::string(large, '-'));
    ignored("LargePageSize", "PageSize=" + std::string(large, '9'));
    ignored("LargeValueInQuotes", "PrintSpeed='" + std::string(large, '2') + "'");
    slowed("LargeBeforeAGoodOne", std::string(large, ' ') + "PrintSpeed=2");
    slowed("LargeBehindAGoodOne", "PrintSpeed=2 x=" + std::string(large, 'x'));
    slowed("TenThousandTimesTheSame", repeated("PrintSpeed=4 ", 130'000) + "PrintSpeed=2");
    slowed("TenThousandOthersBefore", [] {
        std::string all;
        for (int i = 0; i < 10'000; ++i) {
            all += "o" + std::to_string(i) + "=" + std::to_string(i) + " ";
        }
        return all + "PrintSpeed=2";
    }());

    ignored("OneQuote", "'");
    ignored("OneDoubleQuote", "\"");
    ignored("OneBrace", "{");
    ignored("OneClosingBrace", "}");
    ignored("OneBackslash", "\\");
    ignored("ABackslashAsAValue", "PrintSpeed=\\");
    ignored("AValueWithoutAName", "=2");
    ignored("ANameWithoutAValue", "PrintSpeed=");
    ignored("ABlankBeforeTheValue", "PrintSpeed= 3");
    slowed("AQuoteOpenInAValue", "PrintSpeed='2");
    ignored("ADoubleQuoteOpenInAValue", "PrintSpeed=\"2 Darkness=30");
    ignored("ABraceOpenInAValue", "PrintSpeed={2 Darkness=30");
    ignored("NegatedName", "noPrintSpeed");
    slowed("ALineFeedBehindAValue", "PrintSpeed=2\n^XA");
    ignored("AControlByteBehindAValue", "PrintSpeed=2\x01");
    ignored("ADeleteByteBehindAValue", "PrintSpeed=2\x7F");
    ignored("AFormatBehindAValue", "PrintSpeed=2%s%n Darkness=%d%n PaperType=%s%s%s");
    ignored("CommandsBehindAValue", "PrintSpeed=2^XA^FDx^FS^XZ");
    ignored("ACustomValue", "PrintSpeed=Custom.9^XA");
    slowed("AValueInQuotes", "PrintSpeed='2'");
    slowed("OtherCase", "PRINTSPEED=2");

    const auto no_page = [&](const std::string& name, const std::string& size) {
        rows.push_back({name, ppd_with_options(full_ppd(), "PageSize=" + size), 1, no_paper, ""});
    };
    no_page("CustomPageSizeOfNothing", "Custom.0x0");
    no_page("CustomPageSizeOfWords", "Custom.axb");
    no_page("CustomPageSizeOfFormatCharacters", "Custom.%sx%n");
    rows.push_back({"CustomPageSizeBelowZero",
                    ppd_with_options(full_ppd(), "PageSize=Custom.-72x-72"), 1,
                    "ERROR: Paper size must not less than 1.0 : (-25.401600, -25.401600)", ""});
    ignored("CustomPageSizeOfALargeNumber", "PageSize=Custom.1e30x1e30");
    return rows;
}

// Job, user, title and copies are nothing that the filter looks at.
std::vector<MalformedJob> argument_rows() {
    const std::string as_usual = preamble() + tiny_page_output();
    std::vector<MalformedJob> rows;
    const auto ignored = [&](const std::string& name, const std::vector<std::string>& all) {
        rows.push_back({name, arguments(all), 0, "", as_usual});
    };
    const std::string long_text(large, 'x');
    ignored("AllEmpty", {"", "", "", "", ""});
    ignored("JobLarge", {long_text, "user", "title", "1", ""});
    ignored("UserLarge", {"1", long_text, "title", "1", ""});
    ignored("TitleLarge", {"1", "user", long_text, "1", ""});
    ignored("CopiesLarge", {"1", "user", "title", long_text, ""});
    ignored("JobBelowZero", {"-2147483649", "user", "title", "1", ""});
    ignored("CopiesOver32Bits", {"1", "user", "title", "4294967297", ""});
    ignored("CopiesBelowZero", {"1", "user", "title", "-1", ""});
    ignored("TitleOfFormatCharacters", {"1", "user", repeated("%s%n", large), "1", ""});
    ignored("UserOfFormatCharacters", {"1", repeated("%n%x", large), "title", "1", ""});
    ignored("TitleOfLogLines", {"1", "user", "t\nERROR: faked\nSTATE: +paused\n", "1", ""});
    ignored("UserOfLogLines", {"1", "u\nERROR: faked\nPAGE: 1 9999\n", "title", "1", ""});
    ignored("TitleOfControlBytes", {"1", "user", "\x01\x02\x1B[2J\x7F\x9B", "1", ""});
    ignored("TitleOfCommands", {"1", "user", "^XA^JUF^XZ~JR", "1", ""});

    const auto no_file = [&](const std::string& name, const std::string& file) {
        rows.push_back({name, arguments({"1", "user", "title", "1", "", file}), 1,
                        "ERROR: Unable to open raster file - ", ""});
    };
    no_file("FileOfFormatCharacters", "%s%n%s%n");
    no_file("FileOfALongName", long_text);
    no_file("FileOfLogLines", "x\nERROR: faked\nSTATE: +paused");
    no_file("FileOfControlBytes", "\x01\x1B[2J");
    return rows;
}

class MalformedOptions : public testing::TestWithParam<MalformedJob> {};

TEST_P(MalformedOptions, EndAsInTheTable) {
    expect_as_in(GetParam());
}

INSTANTIATE_TEST_SUITE_P(Options, MalformedOptions, testing::ValuesIn(option_rows()),
                         row_name<MalformedJob>);
INSTANTIATE_TEST_SUITE_P(Arguments, MalformedOptions, testing::ValuesIn(argument_rows()),
                         row_name<MalformedJob>);

}  // namespace
}  // namespace kelp_test
