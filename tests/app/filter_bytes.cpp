#include "tests/app/filter_bytes.h"

#include <gtest/gtest.h>

#include "tests/process/sandbox.h"
#include "tests/support/files.h"

namespace kelp_test {

namespace {

std::string bytes_of(Job job, const std::string& model) {
    job.ppd = read_file(std::filesystem::path(KELP_PPD_DIR) / ("kelp-" + model + ".ppd"));
    const JobResult fitted = run_job(job, KELP_FITTER);
    EXPECT_EQ(fitted.exit_status, 0) << fitted.error;
    job.raster = fitted.output;
    const JobResult printed = run_job(job);
    EXPECT_EQ(printed.exit_status, 0) << printed.error;
    return printed.output;
}

}  // namespace

std::string filter_bytes(const std::string& model, const std::vector<Page>& pages,
                         const std::string& options) {
    return bytes_of(job_of(pages, options), model);
}

std::string filter_bytes_of_raster(const std::string& model, const std::string& raster) {
    Job job = job_of({});
    job.raster = raster;
    return bytes_of(job, model);
}

}  // namespace kelp_test
