#include "app/state_text.h"

#include <gtest/gtest.h>

namespace kelp_app {
namespace {

std::string unchanged(const std::string& state) {
    return withJobs(state, [](const JobNumber&, SavedJob&) {});
}

// Of two printers; the last job's title has quotes and a backslash.
const std::string kState =
    "DefaultPrinterID 1\n"
    "UUID urn:uuid:1\n"
    "<Printer id=\"1\" name=\"one\">\n"
    "halftone-default state=\"5\"\n"
    "Job id=\"3\" name=\"A state=\" state=\"5\" username=\"pat\"\n"
    "Job id=\"4\" name=\"b\" state=\"3\" username=\"pat\"\n"
    "Job id=\"2\" name=\"c\" state=\"9\" username=\"pat\"\n"
    "</Printer>\n"
    "<Printer id=\"2\" name=\"two\">\n"
    "Job id=\"3\" name=\"\\\"q\\\" \\\\\" state=\"3\" username=\"pat\"\n"
    "</Printer>\n";

TEST(StateText, WithoutAChangeIsTheSame) {
    EXPECT_EQ(unchanged(kState), kState);
    EXPECT_EQ(unchanged(""), "");
}

TEST(StateText, JobsAreThoseOfTheirPrinters) {
    std::vector<JobNumber> found;
    withJobs(kState, [&](const JobNumber& number, SavedJob&) { found.push_back(number); });
    EXPECT_EQ(found, (std::vector<JobNumber>{{1, 3}, {1, 4}, {1, 2}, {2, 3}}));
}

TEST(StateText, WhatIsUnderWayIsSavedAsWaiting) {
    JobsToSave jobs;
    std::string expected = kState;
    expected.replace(expected.find(" state=\"5\" username"), 10, " state=\"3\"");
    EXPECT_EQ(stateToSave(kState, jobs), expected);
    EXPECT_EQ(jobs.waiting, (std::set<JobNumber>{{1, 3}, {1, 4}, {2, 3}}));
}

TEST(StateText, ADocumentIsOnTheWayOfAJobThatWaitsWithoutOne) {
    const auto is_on_the_way = [](const std::string& job) {
        JobsToSave jobs;
        stateToSave("Job id=\"1\" " + job + "\n", jobs);
        return jobs.areDocumentsOnTheWay;
    };
    EXPECT_TRUE(is_on_the_way("state=\"3\""));
    EXPECT_TRUE(is_on_the_way("state=\"4\""));
    EXPECT_FALSE(is_on_the_way("filename=\"a\" state=\"3\""));
    EXPECT_FALSE(is_on_the_way("state=\"5\""));  // a raster as it comes
    EXPECT_FALSE(is_on_the_way("state=\"9\""));
}

TEST(StateText, WhatHasBegunIsLoadedAsAborted) {
    const std::string state =
        "<Printer id=\"1\">\n"
        "Job format=\"a\" id=\"1\" state=\"3\"\n"
        "Job format=\"a\" id=\"2\" state=\"4\"\n"
        "Job format=\"a\" id=\"3\" state=\"9\"\n"
        "Job format=\"a\" id=\"4\" state=\"3\"\n"
        "</Printer>\n"
        "<Printer id=\"2\">\n"
        "Job format=\"a\" id=\"1\" state=\"3\"\n"
        "</Printer>\n";
    EXPECT_EQ(stateToLoad(state, {{1, 1}, {1, 2}, {1, 3}, {7, 4}}),
              "<Printer id=\"1\">\n"
              "Job format=\"a\" id=\"1\" state=\"8\"\n"
              "Job format=\"a\" id=\"2\" state=\"8\"\n"
              "Job format=\"a\" id=\"3\" state=\"9\"\n"
              "Job format=\"a\" id=\"4\" state=\"3\"\n"
              "</Printer>\n"
              "<Printer id=\"2\">\n"
              "Job format=\"a\" id=\"1\" state=\"3\"\n"
              "</Printer>\n");
}

TEST(StateText, AJobWithoutADocumentIsLoadedWithAFormat) {
    EXPECT_EQ(stateToLoad("Job id=\"1\" state=\"3\"\n", {}),
              "Job id=\"1\" state=\"3\" format=\"application/octet-stream\"\n");
}

TEST(StateText, AStrangersTitleStaysWithinItsLine) {
    EXPECT_EQ(unchanged("Job id=\"1\" name=\"x\n<Printer id=77 name=e>\n</Printer>\r\t\x7F\" "
                        "state=\"3\" username=\"a\nb\"\n"
                        "Job id=\"2\" state=\"3\"\n"),
              "Job id=\"1\" name=\"x <Printer id=77 name=e> </Printer>   \" "
              "state=\"3\" username=\"a b\"\n"
              "Job id=\"2\" state=\"3\"\n");
}

TEST(StateText, AValueHas255BytesAtMostAndNoPartOfACharacter) {
    const auto line = [](const std::string& name) { return "Job name=\"" + name + "\"\n"; };
    EXPECT_EQ(unchanged(line(std::string(255, 'x'))), line(std::string(255, 'x')));
    EXPECT_EQ(unchanged(line(std::string(3000, 'x'))), line(std::string(255, 'x')));
    // The 255th byte is the first of two.
    EXPECT_EQ(unchanged(line(std::string(254, 'x') + "\xC3\xA4")), line(std::string(254, 'x')));
    // An escaped one counts once.
    std::string quotes;
    for (int i = 0; i < 255; ++i) {
        quotes += "\\\"";
    }
    EXPECT_EQ(unchanged(line(quotes + "\\\"")), line(quotes));
}

TEST(StateText, ALineThatIsNoJobsStays) {
    for (const char* text : {"Job\n", "Job id\n", "Job id=1\n", "Job id=\"1\n", "Job id=\"1\"x\n",
                             "Job id=\"1\\\n", "a line without an end\n"}) {
        EXPECT_EQ(unchanged(text), text);
    }
}

TEST(StateText, IsWholeWithAllItsPrinters) {
    EXPECT_TRUE(isWholeState(kState, 2));
    EXPECT_FALSE(isWholeState(kState, 3));
    EXPECT_FALSE(isWholeState("", 0));
    EXPECT_TRUE(isWholeState("UUID 1\n", 0));
    // Cut anywhere, it is not.
    for (std::size_t size = 0; size + 1 < kState.size(); ++size) {
        EXPECT_FALSE(isWholeState(kState.substr(0, size), 2)) << size;
    }
}

}  // namespace
}  // namespace kelp_app
