// "lp -n 3" prints each page three times, whoever makes the copies: never once, never nine times.

#include <algorithm>
#include <map>

#include "tests/spooler/spooler_test.h"
#include "tests/support/files.h"

namespace kelp_test {
namespace {

const std::vector<std::string> not_collated{"-o", "Collate=False"};
const std::vector<std::string> collated{"-o", "Collate=True"};
// As print dialogs ask for it.
const std::vector<std::string> dialog_not_collated{
    "-o", "multiple-document-handling=separate-documents-uncollated-copies"};
const std::vector<std::string> dialog_collated{
    "-o", "multiple-document-handling=separate-documents-collated-copies"};

class CopiesTest : public SpoolerTest {
  protected:
    // The labels of three copies, printed with these options.
    std::vector<PrintedLabel> three_of(const std::vector<std::string>& options,
                                       const std::vector<std::string>& files) {
        std::vector<std::string> arguments{"-n", "3"};
        arguments.insert(arguments.end(), options.begin(), options.end());
        arguments.insert(arguments.end(), files.begin(), files.end());
        return print_on_label(arguments).labels();
    }

    std::string pdf(int pages) const {
        return document("a.pdf", Format::pdf, label_sheet, numbered_pages(pages));
    }
    std::string picture() const {
        return document("a.png", Format::png, label_sheet, asymmetric_picture(label_sheet));
    }
    std::string text(const std::string& content) const {
        write_file(file("a.txt"), content);
        return file("a.txt").string();
    }
};

// How often each page comes out, in the order in which it first does.
std::vector<int> counts(const std::vector<PrintedLabel>& labels) {
    std::vector<std::vector<std::string>> pages;
    std::vector<int> result;
    for (const PrintedLabel& label : labels) {
        const auto known = std::find(pages.begin(), pages.end(), label.rows);
        if (known == pages.end()) {
            pages.push_back(label.rows);
            result.push_back(label.copies);
        } else {
            result[static_cast<std::size_t>(known - pages.begin())] += label.copies;
        }
    }
    return result;
}

const std::vector<int> one_page_three_times{3};
const std::vector<int> three_pages_three_times{3, 3, 3};

void expect_one_graphic_and_its_number(const std::vector<PrintedLabel>& labels) {
    ASSERT_EQ(labels.size(), 1U);
    EXPECT_EQ(labels[0].copies, 3);
}

// Three sets, each in the order of the pages.
void expect_sets(const std::vector<PrintedLabel>& labels) {
    ASSERT_EQ(labels.size(), 9U);
    for (std::size_t i = 0; i < labels.size(); ++i) {
        EXPECT_EQ(labels[i].copies, 1) << i;
        EXPECT_TRUE(labels[i].rows == labels[i % 3].rows) << i;
    }
}

// Three of the first, three of the second, three of the last: the printer's work.
void expect_piles(const std::vector<PrintedLabel>& labels) {
    ASSERT_EQ(labels.size(), 3U);
    for (const PrintedLabel& label : labels) {
        EXPECT_EQ(label.copies, 3);
    }
}

TEST_F(CopiesTest, OnePageIsOneGraphicAndItsNumber) {
    expect_one_graphic_and_its_number(three_of({}, {pdf(1)}));
}

TEST_F(CopiesTest, OnePageNotCollatedIsOneGraphicAndItsNumber) {
    expect_one_graphic_and_its_number(three_of(not_collated, {pdf(1)}));
    expect_one_graphic_and_its_number(three_of(dialog_not_collated, {pdf(1)}));
}

TEST_F(CopiesTest, OnePageCollatedPrintsThreeTimes) {
    const std::string file = pdf(1);
    EXPECT_EQ(counts(three_of(collated, {file})), one_page_three_times);
    EXPECT_EQ(counts(three_of(dialog_collated, {file})), one_page_three_times);
}

TEST_F(CopiesTest, SeveralPagesPrintInPiles) {
    const std::vector<PrintedLabel> labels = three_of({}, {pdf(3)});
    EXPECT_EQ(counts(labels), three_pages_three_times);
    expect_piles(labels);
}

TEST_F(CopiesTest, SeveralPagesNotCollatedPrintInPiles) {
    const std::string file = pdf(3);
    for (const auto& options : {not_collated, dialog_not_collated}) {
        const std::vector<PrintedLabel> labels = three_of(options, {file});
        EXPECT_EQ(counts(labels), three_pages_three_times);
        expect_piles(labels);
    }
}

TEST_F(CopiesTest, SeveralPagesCollatedPrintInSets) {
    const std::string file = pdf(3);
    for (const auto& options : {collated, dialog_collated}) {
        const std::vector<PrintedLabel> labels = three_of(options, {file});
        EXPECT_EQ(counts(labels), three_pages_three_times);
        expect_sets(labels);
    }
}

TEST_F(CopiesTest, APicturePrintsThreeTimes) {
    const std::string file = picture();
    expect_one_graphic_and_its_number(three_of({}, {file}));
    expect_one_graphic_and_its_number(three_of(not_collated, {file}));
    EXPECT_EQ(counts(three_of(collated, {file})), one_page_three_times);
    EXPECT_EQ(counts(three_of(dialog_collated, {file})), one_page_three_times);
}

TEST_F(CopiesTest, TextPrintsThreeTimes) {
    const std::string file = text("one\n");
    expect_one_graphic_and_its_number(three_of({}, {file}));
    expect_one_graphic_and_its_number(three_of(not_collated, {file}));
    EXPECT_EQ(counts(three_of(collated, {file})), one_page_three_times);
}

TEST_F(CopiesTest, SeveralPagesOfTextPrintThreeTimes) {
    const std::string file = text("one\n\ftwo\n\fthree\n");
    expect_piles(three_of({}, {file}));
    expect_sets(three_of(collated, {file}));
}

TEST_F(CopiesTest, TwoFilesOfAJobPrintThreeTimesEach) {
    const std::vector<PrintedLabel> labels =
        print_unchecked("label", {"-n", "3", picture(), pdf(1)}).labels();
    EXPECT_EQ(counts(labels), (std::vector<int>{3, 3}));
}

TEST_F(CopiesTest, WithoutANumberEachPagePrintsOnce) {
    EXPECT_EQ(counts(print_on_label({pdf(3)}).labels()), (std::vector<int>{1, 1, 1}));
}

TEST_F(CopiesTest, OnAStencilQueueEachPagePrintsTwice) {
    const std::string file = document("a.pdf", Format::pdf, stencil_sheet, numbered_pages(2));
    EXPECT_EQ(counts(print("stencil", {"-n", "2", file}).labels()), (std::vector<int>{2, 2}));
}

}  // namespace
}  // namespace kelp_test
