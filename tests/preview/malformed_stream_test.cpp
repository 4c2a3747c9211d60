// Malformed streams for kelp-preview as a program, each a row of a table.

#include <gtest/gtest.h>

#include <ostream>
#include <sstream>

#include "tests/preview/preview_program.h"
#include "tests/support/files.h"

namespace {

using kelp_test::ProcessResult;
using kelp_test::write_file;
using Lines = std::vector<std::string>;

// More where a sanitizer slows everything down.
constexpr rlim_t processor_seconds = KELP_SANITIZED ? 10 : 1;

template <typename Row>
std::string row_name(const testing::TestParamInfo<Row>& row) {
    return row.param.name;
}

template <typename Row>
class MalformedStream : public kelp_test::PreviewProgram, public testing::WithParamInterface<Row> {
  protected:
    ProcessResult run_limited(const Lines& arguments, const std::string& input = {}) {
        kelp_test::Command command = given(arguments);
        command.input = kelp_test::FromBytes{input};
        command.limits = {{RLIMIT_CPU, processor_seconds}};
        return run_process(command);
    }
};

struct Shown {
    std::string name;
    std::string stream;
    int status;
    std::string error;
    Lines remarks;  // of the description: what stands behind "byte" in it

    friend void PrintTo(const Shown& row, std::ostream* out) { *out << row.name; }
};

Lines remarks_in(const std::string& description) {
    const std::string mark = "    byte ";
    Lines remarks;
    std::istringstream lines(description);
    for (std::string line; std::getline(lines, line);) {
        if (line.starts_with(mark)) {
            remarks.push_back(line.substr(mark.size()));
        }
    }
    return remarks;
}

std::string no_label(const std::string& why = "") {
    return "kelp-preview: no label in standard input" + why + "\n";
}

std::string refused(const std::string& why) {
    return "kelp-preview: " + why + "\n";
}

std::string repeated(const std::string& text, int times) {
    std::string all;
    for (int i = 0; i < times; ++i) {
        all += text;
    }
    return all;
}

// In most of them the graphic's data begin at byte 12.
std::vector<Shown> shown() {
    const std::string good = "^XA~DGA,2,1,8001^XGA^XZ";
    const std::string dot = "^XA~DGA,1,1,80^XGA^XZ";
    return {
        {"Good", good, 0, "", {}},
        {"Empty", "", 1, no_label(), {}},
        {"OnlyLineFeeds", std::string(64, '\n'), 1, no_label(), {}},
        {"OnlyZeros",
         std::string(100'000, '\0'),
         1,
         no_label(" (byte 0: no command, skipped: " + repeated("\\x00", 40) + ")"),
         {}},
        {"OnlyHighBytes",
         std::string(100'000, '\xFF'),
         1,
         no_label(" (byte 0: no command, skipped: " + repeated("\\xFF", 40) + ")"),
         {}},
        {"OnlyCarets", std::string(1000, '^'), 1, no_label(), {}},
        {"AnotherKindOfFile",
         "%PDF-1.4\n%x\n",
         1,
         no_label(" (byte 0: no command, skipped: %PDF-1.4)"),
         {}},
        {"AnEmptyBlock", "^XA^XZ", 1, no_label(), {}},
        {"AGraphicThatIsNotThere", "^XGA", 1, no_label(" (byte 0: no graphic to recall: A)"), {}},
        {"AGraphicWithoutNumbers",
         "~DG",
         1,
         no_label(" (byte 0: ~DG without name, size and bytes per row, skipped)"),
         {}},
        {"AGraphicWithOneNumber",
         "~DGA,1",
         1,
         no_label(" (byte 0: ~DG without name, size and bytes per row, skipped)"),
         {}},
        {"AGraphicOfALongName",
         "~DG" + std::string(300, 'A') + ",1,1,80",
         1,
         no_label(" (byte 0: ~DG without name, size and bytes per row, skipped)"),
         {}},
        {"AGraphicOfEmptyNumbers",
         "~DG,,,",
         1,
         refused("byte 0: a graphic of 0 bytes, 0 a row, has no rows"),
         {}},
        {"AGraphicOfNoBytesARow",
         "~DGA,1,0,",
         1,
         refused("byte 0: a graphic of 1 bytes, 0 a row, has no rows"),
         {}},
        {"AGraphicBelowZero",
         "~DGA,-1,1,",
         1,
         refused("byte 0: a graphic of 0 bytes, 1 a row, has no rows"),
         {}},
        {"AGraphicOverTheLargestNumber",
         "~DGA,99999999999999999999999,1,",
         1,
         refused("byte 0: a graphic of 18446744073709551615 bytes, 1 a row, is over the limit of "
                 "200000000 dots"),
         {}},
        {"AGraphicOfNoWholeRows",
         "^XA~DGA,3,2,800180^XGA^XZ",
         2,
         "",
         {"3: a graphic of 3 bytes is no whole rows of 2",
          "16: more data than the graphic has room for, skipped (2 times)"}},
        {"ARowMissing", "^XA~DGA,2,1,80^XGA^XZ", 2, "", {"14: the graphic ends after 1 of 2 rows"}},
        {"HalfARowMissing",
         "^XA~DGA,2,1,800^XGA^XZ",
         2,
         "",
         {"15: the graphic ends after 1 of 2 rows, its last row cut short"}},
        {"NoWholeRow",
         "^XA~DGA,2,1,8^XGA^XZ",
         1,
         no_label(" (byte 13: the graphic ends after 0 of 2 rows, its last row cut short)"),
         {}},
        {"AStrangeByte", "^XA~DGA,2,1,8?001^XGA^XZ", 2, "", {"13: no graphic data, skipped"}},
        {"StrangeBytes",
         "^XA~DGA,2,1,8" + std::string(50'000, '\x01') + "001^XGA^XZ",
         2,
         "",
         {"13: no graphic data, skipped (50000 times)"}},
        {"DataTooLong",
         "^XA~DGA,2,1,8001" + std::string(50'000, 'F') + "^XGA^XZ",
         2,
         "",
         {"16: more data than the graphic has room for, skipped (50000 times)"}},
        {"ACountWithoutADigit",
         "^XA~DGA,2,1,80G^XGA^XZ",
         2,
         "",
         {"15: the graphic ends after 1 of 2 rows", "15: a repeat count without a digit, skipped"}},
        {"ARunOverItsRow", "^XA~DGA,2,1,zF^XGA^XZ", 2, "", {"13: a run goes beyond its row"}},
        {"ARunOfFortyMillion",
         "^XA~DGA,2,1," + std::string(100'000, 'z') + "F^XGA^XZ",
         2,
         "",
         {"100012: a run goes beyond its row"}},
        {"ARepetitionWithinARow", "^XA~DGA,2,1,8:01^XGA^XZ", 2, "", {"13: ':' within a row"}},
        {"AMagnificationOverTen",
         "^XA~DGA,1,1,80^XGA,11,99999999999999999999^XZ",
         2,
         "",
         {"14: ^XG magnifies 1 to 10 times", "14: ^XG magnifies 1 to 10 times"}},
        {"AMagnificationOfNothing",
         "^XA~DGA,1,1,80^XGA,0,-1^XZ",
         2,
         "",
         {"14: ^XG magnifies 1 to 10 times"}},
        {"BlockNotClosed", "^XA~DGA,1,1,80^XGA", 2, "", {"18: the stream ends within a block"}},
        {"GraphicNotRecalled",
         "^XA~DGA,1,1,80",
         2,
         "",
         {"3: the stream ends before the graphic is recalled"}},
        {"BlockInABlock", "^XA^XA~DGA,1,1,80^XGA^XZ", 2, "", {"3: a block begins within a block"}},
        {"BlockNotOpened", "~DGA,1,1,80^XGA^XZ", 2, "", {"15: ^XZ without a block"}},
        {"CopiesOfNoNumber",
         "^XA^PQ%n~DGA,1,1,80^XGA^XZ",
         2,
         "",
         {"3: ^PQ without a number, skipped"}},
        {"TextBefore", "%s%n%x\n" + dot, 2, "", {"0: no command, skipped: %s%n%x"}},
        {"EscapesBefore",
         "\x1B[2J\x07\\\n" + dot,
         2,
         "",
         {"0: no command, skipped: \\x1B[2J\\x07\\x5C"}},
        {"ALongLineBefore",
         std::string(100'000, 'x') + "\n" + dot,
         2,
         "",
         {"0: no command, skipped: " + std::string(40, 'x')}},
        {"UnknownCommands", "^%s^%n^\x1B[" + dot, 0, "", {"0: ^%S", "3: ^%N", "6: ^\\x1B["}},
        {"APlaceFarOutside",
         "^XA~DGA,1,1,80^FO99999999999999999999,0^XGA^XZ",
         1,
         refused("byte 39: the label is over the limit of 200000000 dots"),
         {}},
        {"AGraphicNamedLikeAFile",
         "^XA~DG../../etc/passwd,1,1,80^XG../../etc/passwd^XZ",
         0,
         "",
         {}},
    };
}

class MalformedShow : public MalformedStream<Shown> {};

TEST_P(MalformedShow, IsShownAsInTheTable) {
    const Shown& row = GetParam();
    const ProcessResult result = run_limited({"show", "-o", "out.png"}, row.stream);
    EXPECT_EQ(result.exit_status, row.status) << result.ending();
    EXPECT_EQ(result.error, row.error);
    EXPECT_EQ(remarks_in(result.output), row.remarks) << result.output;
    EXPECT_EQ(kelp_test::read_directory(dir.path()).size(), row.status == 1 ? 0U : 1U);
}

INSTANTIATE_TEST_SUITE_P(Stream, MalformedShow, testing::ValuesIn(shown()), row_name<Shown>);

struct Compared {
    std::string name;
    std::string before;  // file "a"
    std::string after;   // file "b"
    int status;
    std::string output;
    std::string error;

    friend void PrintTo(const Compared& row, std::ostream* out) { *out << row.name; }
};

std::vector<Compared> compared() {
    const std::string good = "^XA~DGA,2,1,8001^XGA^XZ";
    const std::string equal = "Label 1: equal, 8 x 2 dots\n1 labels, all equal\n";
    const auto trouble = [](const std::string& what) { return "kelp-preview: " + what + "\n"; };
    return {
        {"BothEmpty", "", "", 2, "", trouble("no label in a")},
        {"OneEmpty", good, "", 2, "Label 1: only in a\n", trouble("no label in b")},
        {"OneOfZeros", good, std::string(100'000, '\0'), 2, "Label 1: only in a\n",
         trouble("b: byte 0: no command, skipped: " + repeated("\\x00", 40)) +
             trouble("no label in b")},
        {"OneOfFormatCharacters", good, "%s%n%x", 2, "Label 1: only in a\n",
         trouble("b: byte 0: no command, skipped: %s%n%x") + trouble("no label in b")},
        {"OneOfEscapes", good, "\x1B[2J\nkelp-preview: faked", 2, "Label 1: only in a\n",
         trouble("b: byte 0: no command, skipped: \\x1B[2J") +
             trouble("b: byte 5: no command, skipped: kelp-preview: faked") +
             trouble("no label in b")},
        {"OneCut", good, "^XA~DGA,2,1,80^XGA^XZ", 1,
         "Label 1: different\n  size: 8 x 2 dots and 8 x 1 dots\n"
         "  1 dot differs: 0 added, 1 missing; the first at column 7, row 1 is missing\n"
         "1 of 1 labels differ\n",
         trouble("b: byte 14: the graphic ends after 1 of 2 rows")},
        {"BothCut", "^XA~DGA,2,1,80^XGA^XZ", "^XA~DGA,2,1,80^XGA^XZ", 0,
         "Label 1: equal, 8 x 1 dots\n1 labels, all equal\n",
         trouble("a: byte 14: the graphic ends after 1 of 2 rows") +
             trouble("b: byte 14: the graphic ends after 1 of 2 rows")},
        {"DataTooLong", good, "^XA~DGA,2,1,8001FF^XGA^XZ", 0, equal,
         trouble("b: byte 16: more data than the graphic has room for, skipped (2 times)")},
        {"BlockNotClosed", "^XA~DGA,2,1,8001^XGA", good, 0, equal,
         trouble("a: byte 20: the stream ends within a block")},
        {"OneRefused", good, "~DGA,0,0,", 2, "",
         trouble("b: byte 0: a graphic of 0 bytes, 0 a row, has no rows")},
        {"OneRefusedBehindALabel", good + good, good + "~DGA,0,0,", 2, "",
         trouble("b: byte 23: a graphic of 0 bytes, 0 a row, has no rows")},
        {"TextBehind", good, good + "\nx", 0, equal, trouble("b: byte 24: no command, skipped: x")},
    };
}

class MalformedDiff : public MalformedStream<Compared> {};

TEST_P(MalformedDiff, IsComparedAsInTheTable) {
    const Compared& row = GetParam();
    write_file(dir / "a", row.before);
    write_file(dir / "b", row.after);
    const ProcessResult result = run_limited({"diff", "a", "b"});
    EXPECT_EQ(result.exit_status, row.status) << result.ending();
    EXPECT_EQ(result.output, row.output);
    EXPECT_EQ(result.error, row.error);
}

INSTANTIATE_TEST_SUITE_P(Stream, MalformedDiff, testing::ValuesIn(compared()), row_name<Compared>);

}  // namespace
