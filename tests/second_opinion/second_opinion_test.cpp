// The pictures of kelp-preview against those of a reader of the command language that shares
// nothing with it: the labels of the examples dot for dot, the golden ones but for what is told.

#include <gtest/gtest.h>

#include <algorithm>

#include "tests/printing/print_document.h"
#include "tests/second_opinion/renderer.h"
#include "tests/support/files.h"
#include "tests/support/run_process.h"
#include "tests/support/temp_dir.h"

namespace {

using kelp_test::Picture;
using kelp_test::read_directory;
using kelp_test::read_file;
using kelp_test::read_png;
using kelp_test::Renderer;
using kelp_test::TempDir;
using Rows = std::vector<std::string>;

const Renderer& renderer() {
    static const Renderer only;
    return only;
}

// kelp-preview's pictures of a stream.
std::vector<Rows> shown(const std::string& stream, bool as_sent = true) {
    const TempDir dir;
    kelp_test::Command show;
    show.program = KELP_PREVIEW;
    show.arguments = {"show", "-o", "label.png"};
    if (as_sent) {
        show.arguments.emplace_back("--as-sent");
    }
    show.input = kelp_test::FromBytes{stream};
    show.working_directory = dir.path();
    EXPECT_EQ(run_process(show).exit_status, 0);
    std::vector<Rows> result;
    const std::size_t count = read_directory(dir.path()).size();
    for (std::size_t i = 1; i <= count; ++i) {
        const std::string number = count == 1 ? "" : "-" + std::to_string(i);
        result.push_back(read_png(dir / ("label" + number + ".png")).rows);
    }
    return result;
}

// The stream for the renderer, which knows only the language's own label start, and centres a
// label of the width in ^PW on paper as wide as the picture, which has whole bytes.
std::string adapted(std::string stream) {
    for (std::size_t at = 0; (at = stream.find("^XX", at)) != std::string::npos;) {
        stream.replace(at, 3, "^XA");
    }
    for (std::size_t at = 0; (at = stream.find("^PW", at)) != std::string::npos;) {
        stream.erase(at, stream.find_first_of("\r\n", at) - at);
    }
    return stream;
}

Rows drawn(const std::string& stream, std::size_t number, const Rows& as_large_as) {
    return renderer()
        .draw(adapted(stream), number, as_large_as.at(0).size(), as_large_as.size())
        .rows;
}

void expect_same(const std::string& stream, std::size_t labels) {
    const std::vector<Rows> ours = shown(stream);
    ASSERT_EQ(ours.size(), labels);
    for (std::size_t i = 0; i < labels; ++i) {
        const Rows theirs = drawn(stream, i + 1, ours[i]);
        ASSERT_EQ(theirs.size(), ours[i].size());
        bool is_black = false;
        for (std::size_t y = 0; y < theirs.size(); ++y) {
            ASSERT_EQ(theirs[y], ours[i][y]) << "label " << i + 1 << " row " << y;
            is_black = is_black || ours[i][y].find('#') != std::string::npos;
        }
        EXPECT_TRUE(is_black);
    }
}

std::string golden(const std::string& name) {
    return read_file(std::string(KELP_GOLDEN_DIR) + "/" + name + ".zpl");
}

class SecondOpinion : public testing::Test {
  protected:
    void SetUp() override {
        if (!renderer().why_not().empty()) {
            GTEST_SKIP() << "no second opinion: " << renderer().why_not();
        }
    }
};

struct Document {
    const char* name;
    const char* model;
    const char* page_size;
    std::size_t labels = 1;
};

TEST_F(SecondOpinion, TheExamplesAreDrawnTheSameDotForDot) {
    const Document documents[] = {
        {"shipping-label", "label-4inch", "4x6in"},
        {"product-label", "label-4inch", "100x100mm"},
        {"two-labels", "label-4inch", "4x3in", 2},
        {"stencil", "stencil-a4", "Tattoo_A5"},
        {"test-label-label-2inch", "label-2inch", "2x1in"},
        {"test-label-label-3inch", "label-3inch", "3x2in"},
        {"test-label-label-4inch", "label-4inch", "4x6in"},
        {"test-label-stencil-a5", "stencil-a5", "Tattoo_A5"},
        {"test-label-stencil-a4", "stencil-a4", "A4"},
    };
    for (const Document& document : documents) {
        SCOPED_TRACE(document.name);
        const std::string file = std::string("/") + document.name + ".ps";
        const std::string folder =
            file.starts_with("/test-label") ? KELP_TEST_LABEL_DIR : KELP_EXAMPLE_DIR;
        expect_same(kelp_test::print_document(folder + file, document.model,
                                              std::string("PageSize=") + document.page_size),
                    document.labels);
    }
}

TEST_F(SecondOpinion, GoldenLabelsAreDrawnTheSame) {
    for (const char* name :
         {"digits", "runs", "repeat", "job", "odd-width", "label-start", "placed"}) {
        SCOPED_TRACE(name);
        expect_same(golden(name), 1);
    }
    expect_same(golden("two-labels"), 2);
}

TEST_F(SecondOpinion, ItTakesAnExclamationMarkForAFillWithTheDigit1) {
    const Rows theirs = drawn(golden("fills"), 1, shown(golden("fills")).at(0));
    EXPECT_EQ(theirs, (Rows{"................",     // ,
                            "...#...#...#...#",     // !      1111, not FFFF
                            "####............",     // F0,
                            "##..............",     // C,
                            ".......#...#...#",     // 0!     0111
                            "...#..#....#...#"}));  // 12!    1211
}

TEST_F(SecondOpinion, ItLeavesOutARowThatRepeatsNone) {
    Rows expected = shown(golden("repeat-at-top")).at(0);
    // the white one at the top is at the bottom, where its picture has a row too few
    std::rotate(expected.begin(), expected.begin() + 1, expected.end());
    EXPECT_EQ(drawn(golden("repeat-at-top"), 1, expected), expected);
}

TEST_F(SecondOpinion, ItDoesNotTurnALabel) {
    const Rows sent = shown(golden("turned")).at(0);
    EXPECT_EQ(drawn(golden("turned"), 1, sent), sent);
    EXPECT_NE(shown(golden("turned"), false).at(0), sent);
}

TEST_F(SecondOpinion, ItDrawsALabelOnceWhateverItsCopies) {
    const Rows sent = shown(golden("job")).at(0);
    EXPECT_EQ(drawn(golden("job"), 1, sent), sent);  // three copies
    EXPECT_THROW(drawn(golden("job"), 2, sent), std::runtime_error);
}

}  // namespace
