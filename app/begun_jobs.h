#ifndef KELP_APP_BEGUN_JOBS_H
#define KELP_APP_BEGUN_JOBS_H

#include <pappl/pappl.h>

#include <filesystem>
#include <set>

#include "app/job_number.h"

namespace kelp_app {

// The jobs of which a printer got something, marked by a file each: however the server ends, and
// whatever was saved by then, none of them prints again when it is started anew.

/// Where the files lie; made where it is missing. Once, before any job. Throws
/// std::filesystem::filesystem_error.
void keepBegunJobs(const std::filesystem::path& folder);

/// Those that are marked: by the server that ran before too, until somebody takes their marks.
std::set<JobNumber> begunJobs();

/// Before the first byte of a job is sent; of no effect after that. What fails is told in its log.
void markBegun(pappl_job_t* job);

/// Takes the marks of jobs of which it is saved that they have ended.
void unmark(const std::set<JobNumber>& ended);

}  // namespace kelp_app

#endif
