// The pages that a table of jobs makes, and what a job's descriptions may cost.

#include <gtest/gtest.h>

#include "tests/preview/decoded.h"
#include "tests/support/temp_dir.h"
#include "tools/kelp-preview/listen/html.h"
#include "tools/kelp-preview/listen/job_drawing.h"
#include "tools/kelp-preview/listen/web_page.h"

namespace kelp_test {
namespace {

using namespace kelp_listen;

std::size_t count_of(const std::string& text, const std::string& part) {
    std::size_t count = 0;
    for (std::size_t at = text.find(part); at != std::string::npos; at = text.find(part, at + 1)) {
        ++count;
    }
    return count;
}

ShownJob job_with(std::uint64_t number, std::size_t labels) {
    ShownJob job;
    job.number = number;
    for (std::size_t i = 0; i < labels; ++i) {
        job.labels.push_back({8, 4, 0.25, "some text\n", "label.png"});
    }
    return job;
}

TEST(ListenPage, EscapesEveryCharacterThatHtmlGivesAMeaning) {
    EXPECT_EQ(escaped("a<b>&\"'z"), "a&lt;b&gt;&amp;&quot;&#39;z");
    EXPECT_EQ(escaped(""), "");
}

TEST(ListenPage, EscapesEveryTextOfAJob) {
    ShownJob job = job_with(1, 1);
    job.sender = "<i>sender";
    job.time = "<i>time";
    job.notes = {"<i>note"};
    job.rest = "<i>rest";
    job.labels[0].text = "<i>text";
    const std::string page = jobPage(job);
    EXPECT_EQ(page.find("<i>"), std::string::npos);
    for (const char* text : {"sender", "time", "note", "rest", "text"}) {
        EXPECT_NE(page.find(std::string("&lt;i&gt;") + text), std::string::npos) << text;
    }
    EXPECT_EQ(frontPage(JobTable(1), "<i>", true).find("<i>"), std::string::npos);
}

TEST(ListenPage, ShowsTwentyJobsInFullAndNamesTheOthers) {
    JobTable table(100);
    for (std::uint64_t number = 1; number <= 23; ++number) {
        table.add(job_with(number, 1));
    }
    const std::string page = frontPage(table, "printer", true);
    EXPECT_EQ(count_of(page, "<img "), 20U);
    EXPECT_NE(page.find("<img src=\"/job/4/label-1.png\""), std::string::npos);
    EXPECT_EQ(page.find("<img src=\"/job/3/label-1.png\""), std::string::npos);
    EXPECT_LT(page.find("<li><a href=\"/job/3\">Job 3</a>: 1 label"),
              page.find("<li><a href=\"/job/1\">Job 1</a>"));
    EXPECT_NE(page.find("<li><a href=\"/job/1\">Job 1</a>"), std::string::npos);
}

TEST(ListenPage, ShowsTenLabelsOfAJobAndAllOnItsOwnPage) {
    JobTable table(1);
    table.add(job_with(5, 12));
    const std::string page = frontPage(table, "printer", true);
    EXPECT_EQ(count_of(page, "<img "), 10U);
    EXPECT_NE(page.find("<a href=\"/job/5\">All 12 labels</a>"), std::string::npos);
    EXPECT_EQ(count_of(jobPage(*table.find(5)), "<img "), 12U);
    EXPECT_EQ(jobPage(*table.find(5)).find("All 12 labels"), std::string::npos);
}

class ListenDrawing : public testing::Test {
  protected:
    ShownJob draw(const std::string& stream, const DrawingLimits& limits) {
        UnfinishedJob files(dir.path());
        files.append(stream);
        files.endStream();
        JobDrawing drawing(files, "", limits);
        while (drawing.drawNext()) {
        }
        return drawing.take();
    }
    TempDir dir;
};

TEST_F(ListenDrawing, DrawsNoMoreDotsThanAJobMayHave) {
    const std::string label = block(4, 2, "12340F,");  // 32 dots
    DrawingLimits limits;
    limits.jobDots = 64;
    EXPECT_TRUE(draw(label + label, limits).notes.empty());
    const ShownJob job = draw(label + label + label, limits);
    EXPECT_EQ(job.labels.size(), 2U);
    ASSERT_EQ(job.notes.size(), 1U);
    EXPECT_EQ(job.notes[0], "labels of more than 64 dots together: the rest is not drawn");
    EXPECT_EQ(job.warnings, 1U);
}

TEST_F(ListenDrawing, KeepsNoMoreTextThanAJobMayHave) {
    const std::string label = block(4, 2, "12340F,");
    const std::size_t one_text = draw(label, {}).labels.at(0).text.size();
    DrawingLimits limits;
    limits.textBytes = 2 * one_text;
    const ShownJob job = draw(label + label + label, limits);
    ASSERT_EQ(job.labels.size(), 3U);
    EXPECT_NE(job.labels[1].text.find("black dots"), std::string::npos);
    EXPECT_EQ(job.labels[2].text.find("black dots"), std::string::npos);
    EXPECT_NE(job.labels[2].text.find("too long"), std::string::npos);
}

TEST_F(ListenDrawing, LeavesNothingBehindThatBecameNoJob) {
    draw(block(4, 2, "12340F,"), {});
    EXPECT_TRUE(std::filesystem::is_empty(dir.path()));
}

}  // namespace
}  // namespace kelp_test
