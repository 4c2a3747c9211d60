#ifndef KELP_APP_JOB_LOG_H
#define KELP_APP_JOB_LOG_H

#include <pappl/pappl.h>

namespace kelp_app {

/// Sends the log lines of the core to the application's log. Once, before the first job.
void takeCoreLog();

/// While it lives, what the core logs in this thread is of this job; then again of the one before.
class JobLog {
  public:
    explicit JobLog(pappl_job_t* job);
    ~JobLog();
    JobLog(const JobLog&) = delete;
    JobLog& operator=(const JobLog&) = delete;

  private:
    pappl_job_t* before_;
};

}  // namespace kelp_app

#endif
