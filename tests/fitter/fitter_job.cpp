#include "tests/fitter/fitter_job.h"

#include <gtest/gtest.h>

#include <cstdlib>

#include "tests/process/expected.h"

namespace kelp_test {

std::filesystem::path fitter_program() {
    const char* other = std::getenv("KELP_TEST_FITTER");
    return other != nullptr ? other : KELP_FITTER;
}

Job fitter_job(const std::vector<RawPage>& pages, const PagePpd& ppd, const std::string& options) {
    Job job;
    job.ppd = ppd.text();
    job.options = options;
    job.raster = raw_raster_stream(pages);
    return job;
}

JobResult run_fitter(const Job& job) {
    return run_job(job, fitter_program());
}

std::vector<RawPage> fitted(const Job& job) {
    const JobResult result = run_fitter(job);
    EXPECT_EQ(result.exit_status, 0) << result.error;
    EXPECT_EQ(lines_with(result.error, "ERROR:"), std::vector<std::string>{});
    return pages_in(result.output);
}

void expect_error(const JobResult& result, const std::vector<std::string>& parts) {
    EXPECT_EQ(result.exit_status, 1) << result.error;
    const std::vector<std::string> errors = lines_with(result.error, "ERROR:");
    ASSERT_EQ(errors.size(), 1U) << result.error;
    EXPECT_TRUE(errors[0].starts_with("ERROR: ")) << errors[0];
    for (const std::string& part : parts) {
        EXPECT_TRUE(contains(errors[0], part)) << "no '" << part << "' in: " << errors[0];
    }
}

}  // namespace kelp_test
