#include "app/running_job.h"

#include <pthread.h>

#include <algorithm>
#include <cstddef>
#include <deque>
#include <map>

#include "app/job_number.h"

namespace kelp_app {

namespace {

/// A second thread is at most a few scheduler's turns late.
constexpr std::size_t kRemembered = 10000;

/// Whether a job is new.
bool remember(const JobNumber& number) {
    static std::mutex guard;
    static std::deque<JobNumber> begun;
    const std::lock_guard lock(guard);
    if (std::find(begun.rbegin(), begun.rend(), number) != begun.rend()) {
        return false;
    }
    begun.push_back(number);
    if (begun.size() > kRemembered) {
        begun.pop_front();
    }
    return true;
}

}  // namespace

void beginOnce(pappl_job_t* job) {
    if (!remember(jobNumberOf(job))) {
        leaveToOtherThread(job);
    }
}

void leaveToOtherThread(pappl_job_t* job) {
    papplLogJob(job, PAPPL_LOGLEVEL_DEBUG, "Already begun.");
    // Not back into the framework: it would end the job that the other thread prints.
    pthread_exit(nullptr);
}

std::unique_lock<std::mutex> senderLock(pappl_printer_t* printer) {
    static std::mutex guard;
    static std::map<int, std::mutex> ofPrinters;
    const auto mutex = [&]() -> std::mutex& {
        const std::lock_guard lock(guard);
        return ofPrinters[papplPrinterGetID(printer)];
    };
    return std::unique_lock(mutex());
}

}  // namespace kelp_app
