#ifndef KELP_APP_RUNNING_JOB_H
#define KELP_APP_RUNNING_JOB_H

#include <pappl/pappl.h>

#include <mutex>

namespace kelp_app {

/// Lets a job begin once. The framework (1.3) starts a thread for a waiting job whenever it looks,
/// and where two clients come at the same moment it looks twice before the job is marked as begun:
/// the second thread ends here, and nothing prints twice.
///
/// To be called first by whatever the framework calls for a job's document.
void beginOnce(pappl_job_t* job);

/// Ends the thread, of which the framework thinks that it prints the job.
[[noreturn]] void leaveToOtherThread(pappl_job_t* job);

/// The right to send to a printer, while it lives: two rasters that come at the same moment are
/// both taken, and their labels must not mix. Other printers are not waited for.
std::unique_lock<std::mutex> senderLock(pappl_printer_t* printer);

}  // namespace kelp_app

#endif
