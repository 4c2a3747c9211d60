#include "app/saved_state.h"

#include <gtest/gtest.h>

namespace kelp_app {
namespace {

TEST(SavedState, AJobOfWhichNothingWasSentWaitsAgain) {
    EXPECT_EQ(
        withoutRunningJobs("NextPrinterID 2\n"
                           "Job created=\"7\" format=\"image/png\" id=\"3\" name=\"A state=\" "
                           "processing=\"7\" state=\"5\" username=\"pat\"\n"
                           "Job id=\"4\" state=\"3\" username=\"pat\"\n"),
        "NextPrinterID 2\n"
        "Job created=\"7\" format=\"image/png\" id=\"3\" name=\"A state=\" "
        "processing=\"7\" state=\"3\" username=\"pat\"\n"
        "Job id=\"4\" state=\"3\" username=\"pat\"\n");
}

TEST(SavedState, AJobOfWhichPagesWereSentIsAborted) {
    EXPECT_EQ(withoutRunningJobs("Job id=\"3\" imcompleted=\"2\" state=\"5\"\n"),
              "Job id=\"3\" imcompleted=\"2\" state=\"8\"\n");
}

TEST(SavedState, WhatIsNoJobAndWhatHasEndedStays) {
    const std::string state =
        "halftone-default state=\"5\"\n"
        "Job id=\"1\" imcompleted=\"1\" state=\"9\"\n";
    EXPECT_EQ(withoutRunningJobs(state), state);
    EXPECT_EQ(withoutRunningJobs(""), "");
}

}  // namespace
}  // namespace kelp_app
