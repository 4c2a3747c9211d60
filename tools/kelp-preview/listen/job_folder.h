#ifndef KELP_TOOLS_KELP_PREVIEW_LISTEN_JOB_FOLDER_H
#define KELP_TOOLS_KELP_PREVIEW_LISTEN_JOB_FOLDER_H

#include <cstdint>
#include <string>

#include "tools/kelp-preview/listen/unfinished_job.h"

namespace kelp_listen {

/// The folder of the jobs. Each is a folder in it, job-0001 and so on, which appears whole and
/// never takes the place of anything.
class JobFolder {
  public:
    /// Makes the folder if there is none, and looks for the highest number in it. Throws
    /// std::system_error where it cannot be written.
    explicit JobFolder(const std::string& path);

    const std::string& path() const { return path_; }
    /// Gives the job its number and name. Throws std::system_error.
    std::uint64_t keep(UnfinishedJob& job);

  private:
    std::string path_;
    std::uint64_t next_ = 1;
};

}  // namespace kelp_listen

#endif
