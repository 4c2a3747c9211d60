#ifndef KELP_APP_JOB_NUMBER_H
#define KELP_APP_JOB_NUMBER_H

#include <pappl/pappl.h>

#include <compare>

namespace kelp_app {

/// A job, by its number and its printer's. It may outlive the job.
struct JobNumber {
    int printer = 0;
    int job = 0;
    auto operator<=>(const JobNumber&) const = default;
};

inline JobNumber jobNumberOf(pappl_job_t* job) {
    return {papplPrinterGetID(papplJobGetPrinter(job)), papplJobGetID(job)};
}

}  // namespace kelp_app

#endif
