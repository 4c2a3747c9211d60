#ifndef KELP_APP_ABORT_JOB_H
#define KELP_APP_ABORT_JOB_H

#include <pappl/pappl.h>

#include <new>

#include "app/job_log.h"
#include "app/running_step.h"
#include "fitter/fit_error.h"

namespace kelp_app {

/// Ends a job with a reason and a message for the person who printed. Gives false, which a callback
/// of the framework returns then.
bool abortJob(pappl_job_t* job, pappl_jreason_t reason, const char* message);

/// Runs a step of a job; what it throws ends the job. The framework calls back from C: nothing may
/// be thrown through it.
template <typename Step>
bool guarded(pappl_job_t* job, const Step& step) {
    const RunningStep running;
    const JobLog log(job);
    try {
        return step();
    } catch (const FitError& error) {
        return abortJob(job, PAPPL_JREASON_DOCUMENT_UNPRINTABLE_ERROR, error.what());
    } catch (const std::bad_alloc&) {
        return abortJob(job, PAPPL_JREASON_ABORTED_BY_SYSTEM, "Out of memory, the job ends here.");
    }
}

}  // namespace kelp_app

#endif
