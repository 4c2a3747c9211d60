#include "app/job_sender.h"

#include <unistd.h>

#include "app/begun_jobs.h"

namespace kelp_app {

bool JobSender::isPatient() {
    if (!papplSystemIsRunning(papplPrinterGetSystem(printer_))) {
        while (true) {
            pause();
        }
    }
    return !papplJobIsCanceled(job_);
}

void JobSender::isAway(const std::string& why) {
    isWaiting_ = true;
    papplPrinterSetReasons(printer_, PAPPL_PREASON_OFFLINE, PAPPL_PREASON_NONE);
    papplLogJob(job_, PAPPL_LOGLEVEL_ERROR, "Waiting for the printer %s: %s.",
                papplPrinterGetDeviceURI(printer_), why.c_str());
}

void JobSender::isThere() {
    markBegun(job_);
    // Perhaps an earlier job found it offline, and was cancelled.
    papplPrinterSetReasons(printer_, PAPPL_PREASON_NONE, PAPPL_PREASON_OFFLINE);
    if (isWaiting_) {
        papplLogJob(job_, PAPPL_LOGLEVEL_INFO, "The printer is there again.");
    }
}

}  // namespace kelp_app
