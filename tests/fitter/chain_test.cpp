// The fitter and the filter behind it: what the printer gets.

#include <gtest/gtest.h>

#include <map>

#include "tests/fitter/fitter_job.h"
#include "tests/process/expected.h"
#include "tests/support/grey_pages.h"

namespace kelp_test {
namespace {

// 40 × 4 dots: 14.19 × 203 / 72 = 40.008 and 1.42 × 203 / 72 = 4.004. Printed are 36.
PagePpd small_label() {
    return {.width = "14.19", .height = "1.42", .resolution_x = 203, .resolution_y = 203};
}

RawPage page_at_203(const Kind& kind, unsigned width, unsigned height, const std::string& pixels) {
    RawPage page = page_of(kind, width, height, pixels);
    page.header.HWResolution[0] = page.header.HWResolution[1] = 203;
    return page;
}

JobResult run_chain(const Job& job) {
    const JobResult fitter = run_fitter(job);
    EXPECT_EQ(fitter.exit_status, 0) << fitter.error;
    Job printed = job;
    printed.by_file = false;
    printed.raster = fitter.output;
    return run_job(printed);
}

// The digits of a graphic's compressed rows, as a printer reads them: repeat letters before a
// digit, ',' zeros and '!' ones to the end of the row, ':' the row before again.
std::vector<std::string> rows_of(const std::string& data, std::size_t digits) {
    std::vector<std::string> rows;
    std::string row;
    std::size_t repeat = 0;
    const auto finish = [&] {
        rows.push_back(row);
        row.clear();
    };
    for (const char c : data) {
        if (c >= 'G' && c <= 'Y') {
            repeat += static_cast<std::size_t>(c - 'F');
        } else if (c >= 'g' && c <= 'z') {
            repeat += static_cast<std::size_t>(c - 'f') * 20;
        } else if (c == ',' || c == '!') {
            row.resize(digits, c == ',' ? '0' : 'F');
            finish();
        } else if (c == ':') {
            rows.push_back(rows.empty() ? std::string(digits, '0') : rows.back());
        } else {
            row.append(std::max<std::size_t>(repeat, 1), c);
            repeat = 0;
            if (row.size() == digits) {
                finish();
            }
        }
    }
    EXPECT_EQ(row, "");
    return rows;
}

// The rows of the first graphic in what the printer gets.
std::vector<std::string> printed_rows(const std::string& output, std::size_t row_bytes) {
    const std::string head = "~DGR:CUPS.GRF,";
    const std::size_t graphic = output.find(head);
    const std::size_t begin = output.find(",\n", graphic) + 2;
    const std::size_t end = output.find("^FO", begin);
    if (graphic == std::string::npos || end == std::string::npos) {
        ADD_FAILURE() << "no graphic in: " << output;
        return {};
    }
    EXPECT_TRUE(
        contains(output.substr(graphic, begin - graphic), "," + std::to_string(row_bytes) + ","));
    return rows_of(output.substr(begin, end - begin), 2 * row_bytes);
}

TEST(Chain, ABlackBarAcrossThePageIsABar) {
    // Four rows of 48 dots, the second black; 36 dots are four bytes of ones and half of one.
    const std::map<std::string, std::string> black_and_white{
        {"K8", std::string("\xFF\0", 2)},  {"W8", std::string("\0\xFF", 2)},
        {"SW8", std::string("\0\xFF", 2)}, {"K1", std::string("\xFF\0", 2)},
        {"W1", std::string("\0\xFF", 2)},  {"SW1", std::string("\0\xFF", 2)},
        {"RGB", std::string("\0\xFF", 2)}, {"SRGB", std::string("\0\xFF", 2)}};
    for (const Kind& kind : kinds()) {
        const std::string& values = black_and_white.at(kind.name);
        const std::string bar(kind.row_bytes(48), values[0]);
        const std::string paper(kind.row_bytes(48), values[1]);
        const JobResult result = run_chain(
            fitter_job({page_at_203(kind, 48, 4, paper + bar + paper + bar)}, small_label()));
        EXPECT_EQ(result.exit_status, 0);
        EXPECT_EQ(
            printed_rows(result.output, 5),
            (std::vector<std::string>{"0000000000", "FFFFFFFFF0", "0000000000", "FFFFFFFFF0"}))
            << kind.name << ": " << result.output;
    }
}

TEST(Chain, APictureKeepsItsPlace) {
    // "F", that no mirror or turn maps onto itself, in 6 × 4 dots.
    const std::string letter = "#####.\n#.....\n###...\n#.....";
    const JobResult result =
        run_chain(fitter_job({page_at_203(k8, 6, 4, drawn(letter))}, small_label()));
    EXPECT_EQ(printed_rows(result.output, 5),
              (std::vector<std::string>{"F800000000", "8000000000", "E000000000", "8000000000"}));
}

TEST(Chain, TheSetUpBlockHasThePagesSize) {
    // A picture of 2 × 2 dots would be a label of 2 × 2 dots without the fitter.
    const JobResult result =
        run_chain(fitter_job({page_at_203(k8, 2, 2, "\xFF\xFF\xFF\xFF")}, small_label()));
    // 36 × 25.4 / 203 = 4.504 mm by 0.5005 mm.
    EXPECT_TRUE(contains(result.output,
                         SetupBlock{.size = "4.5 mm, 0.5 mm", .width = 36, .length = 4}.text()))
        << result.output;
}

TEST(Chain, CopiesReachThePrinter) {
    RawPage page = page_at_203(k8, 2, 2, "\xFF\xFF\xFF\xFF");
    page.header.NumCopies = 3;
    const JobResult result = run_chain(fitter_job({page, page}, small_label()));
    const std::size_t first = result.output.find("^PQ3\n");
    ASSERT_NE(first, std::string::npos) << result.output;
    EXPECT_NE(result.output.find("^PQ3\n", first + 1), std::string::npos) << result.output;
}

TEST(Chain, PrintsAsIfThePageHadComeInTheRightSize) {
    Random random(203);
    for (const unsigned color_space : {CUPS_CSPACE_K, CUPS_CSPACE_W}) {
        PagePpd ppd{.width = "72", .height = "36", .resolution_x = 203, .resolution_y = 203};
        ppd.color_space = color_space;
        // 203 × 102 dots, printed are 196; the picture has 120 × 90.
        const std::string picture = noise(120, 90, random);
        std::string fitted_by_hand;
        for (unsigned y = 0; y < 102; ++y) {
            std::string row;
            if (y < 90) {
                row = picture.substr(std::size_t{y} * 120, 120);
            }
            row.resize(196, color_space == CUPS_CSPACE_K ? '\0' : '\xFF');
            fitted_by_hand += row;
        }
        const Kind& kind = color_space == CUPS_CSPACE_K ? k8 : w8;
        const JobResult chain = run_chain(fitter_job({page_at_203(kind, 120, 90, picture)}, ppd));
        const JobResult direct =
            run_job(fitter_job({page_at_203(kind, 196, 102, fitted_by_hand)}, ppd));
        EXPECT_EQ(chain.exit_status, 0);
        // Noise does not pack: 90 rows of 30 digits.
        EXPECT_GT(direct.output.size(), 2000U);
        EXPECT_TRUE(chain.output == direct.output);
    }
}

TEST(Chain, AJobWithoutPagesPrintsNone) {
    for (const std::string& stream : {std::string(), raw_raster_stream({})}) {
        Job job = fitter_job({}, small_label());
        job.raster = stream;
        const JobResult result = run_chain(job);
        EXPECT_EQ(result.exit_status, 0);
        EXPECT_EQ(result.output, preamble());
    }
}

}  // namespace
}  // namespace kelp_test
