#ifndef KELP_TOOLS_KELP_PREVIEW_LISTEN_JOB_TABLE_H
#define KELP_TOOLS_KELP_PREVIEW_LISTEN_JOB_TABLE_H

#include <cstddef>
#include <cstdint>
#include <deque>

#include "tools/kelp-preview/listen/shown_job.h"

namespace kelp_listen {

/// The jobs of this run, so many at most. An older one goes with its files, and standard error
/// tells so.
class JobTable {
  public:
    /// @param keep at least 1
    explicit JobTable(std::size_t keep) : keep_(keep) {}

    void add(ShownJob job);
    /// The newest first.
    const std::deque<ShownJob>& jobs() const { return jobs_; }
    /// The job of this number, or null.
    const ShownJob* find(std::uint64_t number) const;

  private:
    std::size_t keep_;
    std::deque<ShownJob> jobs_;
};

}  // namespace kelp_listen

#endif
