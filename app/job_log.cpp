#include "app/job_log.h"

#include <utility>

#include "filter/log.h"

namespace kelp_app {

namespace {

thread_local pappl_job_t* loggedJob = nullptr;

pappl_loglevel_t levelOf(int level) {
    if (level < 2) {
        return PAPPL_LOGLEVEL_DEBUG;
    }
    return level == 2 ? PAPPL_LOGLEVEL_WARN : PAPPL_LOGLEVEL_ERROR;
}

void logLine(int level, const char* message) {
    if (loggedJob != nullptr) {
        papplLogJob(loggedJob, levelOf(level), "%s", message);
    }
}

}  // namespace

void takeCoreLog() {
    kelpSetLogSink(logLine);
}

JobLog::JobLog(pappl_job_t* job) : before_(std::exchange(loggedJob, job)) {}

JobLog::~JobLog() {
    loggedJob = before_;
}

}  // namespace kelp_app
