#include "app/abort_job.h"

namespace kelp_app {

bool abortJob(pappl_job_t* job, pappl_jreason_t reason, const char* message) {
    papplJobSetReasons(job, reason, PAPPL_JREASON_NONE);
    papplJobSetMessage(job, "%s", message);
    papplLogJob(job, PAPPL_LOGLEVEL_ERROR, "%s", message);
    return false;
}

}  // namespace kelp_app
