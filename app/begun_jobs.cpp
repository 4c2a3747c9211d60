#include "app/begun_jobs.h"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <charconv>
#include <cstring>
#include <mutex>
#include <string>
#include <system_error>

#include "preview/descriptor.h"

namespace kelp_app {

namespace {

namespace fs = std::filesystem;

struct Marks {
    std::mutex mutex;
    fs::path folder;
    std::set<JobNumber> jobs;
};
/// Jobs may outlive everything else.
Marks& marks() {
    static auto& forever = *new Marks;
    return forever;
}

fs::path fileOf(const JobNumber& number) {
    return marks().folder / (std::to_string(number.printer) + "-" + std::to_string(number.job));
}

/// 0-0 for a name that is none of ours.
JobNumber markedJob(const std::string& name) {
    JobNumber number;
    const char* end = name.data() + name.size();
    const auto printer = std::from_chars(name.data(), end, number.printer);
    if (printer.ec == std::errc() && printer.ptr != end && *printer.ptr == '-') {
        std::from_chars(printer.ptr + 1, end, number.job);
    }
    return number;
}

}  // namespace

void keepBegunJobs(const fs::path& folder) {
    const std::lock_guard lock(marks().mutex);
    marks().folder = folder;
    fs::create_directory(folder);
    for (const fs::directory_entry& entry : fs::directory_iterator(folder)) {
        marks().jobs.insert(markedJob(entry.path().filename().string()));
    }
}

std::set<JobNumber> begunJobs() {
    const std::lock_guard lock(marks().mutex);
    return marks().jobs;
}

void markBegun(pappl_job_t* job) {
    const JobNumber number = jobNumberOf(job);
    const std::lock_guard lock(marks().mutex);
    if (!marks().jobs.insert(number).second) {
        return;
    }
    const kelp_preview::Descriptor file(
        open(fileOf(number).c_str(), O_WRONLY | O_CREAT | O_NOFOLLOW | O_CLOEXEC, 0600));
    if (!file.isOpen()) {
        papplLogJob(job, PAPPL_LOGLEVEL_WARN,
                    "Unable to mark it as begun: after a crash it may print again: %s.",
                    std::strerror(errno));
    }
}

void unmark(const std::set<JobNumber>& ended) {
    const std::lock_guard lock(marks().mutex);
    for (const JobNumber& number : ended) {
        unlink(fileOf(number).c_str());
        marks().jobs.erase(number);
    }
}

}  // namespace kelp_app
