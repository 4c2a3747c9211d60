#ifndef KELP_APP_JOB_SENDER_H
#define KELP_APP_JOB_SENDER_H

#include <pappl/pappl.h>

#include <string>

#include "app/printer_socket.h"

namespace kelp_app {

/// A job whose printer is not there: it waits until it is cancelled. The printer is "offline"
/// meanwhile, with the reason in the log.
class JobSender : public Sender {
  public:
    explicit JobSender(pappl_job_t* job) : job_(job), printer_(papplJobGetPrinter(job)) {}

    /// Where the server ends, the thread stays here until it has: the job is saved as one that
    /// waits.
    bool isPatient() override;
    void isAway(const std::string& why) override;
    void isThere() override;

  private:
    pappl_job_t* job_;
    pappl_printer_t* printer_;
    bool isWaiting_ = false;
};

}  // namespace kelp_app

#endif
