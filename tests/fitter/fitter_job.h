#pragma once

#include <string>
#include <vector>

#include "tests/fitter/rasters.h"
#include "tests/process/sandbox.h"

namespace kelp_test {

std::filesystem::path fitter_program();

// A job for the fitter.
Job fitter_job(const std::vector<RawPage>& pages, const PagePpd& ppd = {},
               const std::string& options = {});

JobResult run_fitter(const Job& job);

// The pages that come out of a job that must succeed without an error line.
std::vector<RawPage> fitted(const Job& job);

// Status 1 and one error line, which holds every one of the parts.
void expect_error(const JobResult& result, const std::vector<std::string>& parts);

}  // namespace kelp_test
