#include "tools/kelp-preview/listen/job_table.h"

#include <algorithm>
#include <cstdio>
#include <utility>

namespace kelp_listen {

void JobTable::add(ShownJob job) {
    jobs_.push_front(std::move(job));
    while (jobs_.size() > keep_) {
        const ShownJob& oldest = jobs_.back();
        std::fprintf(stderr,
                     oldest.files.remove()
                         ? "kelp-preview: job %llu removed, the last %zu are kept\n"
                         : "kelp-preview: job %llu removed, the last %zu are kept; what others put "
                           "in its folder is left\n",
                     static_cast<unsigned long long>(oldest.number), keep_);
        jobs_.pop_back();
    }
}

const ShownJob* JobTable::find(std::uint64_t number) const {
    const auto job = std::find_if(jobs_.begin(), jobs_.end(),
                                  [&](const ShownJob& j) { return j.number == number; });
    return job == jobs_.end() ? nullptr : &*job;
}

}  // namespace kelp_listen
