#pragma once

#include <string>

#include "tests/process/sandbox.h"
#include "tests/support/generous_ppd.h"

namespace kelp_test {

// Runs the job through the filter and through the reference, each in a sandbox of its own, and
// expects the same output, exit status, log (but for addresses), recording, debug line and
// snapshots. `what` says in a failure message which job it was. Recording names have to be
// relative: they lie in the sandbox's working directory.
void expect_like_reference(const Job& job, const std::string& what);

// A job for the generous PPD that records what it sends.
Job recorded_job(const std::vector<Page>& pages, const std::string& options = {});

}  // namespace kelp_test
