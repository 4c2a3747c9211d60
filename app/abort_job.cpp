#include "app/abort_job.h"

#include <atomic>

namespace kelp_app {

namespace {

std::atomic<int> runningSteps = 0;

}  // namespace

RunningStep::RunningStep(pappl_job_t* job) : log_(job) {
    ++runningSteps;
}

RunningStep::~RunningStep() {
    --runningSteps;
}

bool RunningStep::areAny() {
    return runningSteps > 0;
}

bool abortJob(pappl_job_t* job, pappl_jreason_t reason, const char* message) {
    papplJobSetReasons(job, reason, PAPPL_JREASON_NONE);
    papplJobSetMessage(job, "%s", message);
    papplLogJob(job, PAPPL_LOGLEVEL_ERROR, "%s", message);
    return false;
}

}  // namespace kelp_app
