#pragma once

#include <string>

#include "tests/process/sandbox.h"

namespace kelp_test {

// Runs the job through the filter and through the reference, each in a sandbox of its own, and
// expects the same output, exit status, log (but for addresses), recording, debug line and
// snapshots. `what` says in a failure message which job it was. Recording names have to be
// relative: they lie in the sandbox's working directory.
void expect_like_reference(const Job& job, const std::string& what);

// A PPD that offers every option, each with good, odd and useless choices. Recording is off unless
// the job asks for it, and then goes to the working directory.
const Ppd& generous_ppd();

struct OptionChoices {
    std::string name;
    std::vector<std::string> choices;
};
const std::vector<OptionChoices>& generous_options();

// A job for the generous PPD that records what it sends.
Job recorded_job(const std::vector<Page>& pages, const std::string& options = {});

}  // namespace kelp_test
