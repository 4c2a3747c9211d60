#ifndef KELP_TOOLS_KELP_PREVIEW_LISTEN_UNFINISHED_JOB_H
#define KELP_TOOLS_KELP_PREVIEW_LISTEN_UNFINISHED_JOB_H

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "preview/descriptor.h"
#include "tools/kelp-preview/listen/job_files.h"

namespace kelp_listen {

/// The name of a job's stream in its folder.
inline constexpr const char* kStreamName = "job.zpl";

/// A job in the making: a hidden folder beside the jobs, which goes with the object unless it
/// became one of them.
class UnfinishedJob {
  public:
    /// @param folder of the jobs. Throws std::system_error.
    explicit UnfinishedJob(const std::string& folder);
    ~UnfinishedJob();
    UnfinishedJob(const UnfinishedJob&) = delete;
    UnfinishedJob& operator=(const UnfinishedJob&) = delete;

    /// Adds to the stream. Throws std::system_error.
    void append(std::string_view bytes);
    /// Nothing more is added. Throws std::system_error where the stream could not be written.
    void endStream();
    std::uint64_t bytes() const { return bytes_; }
    std::string streamPath() const;

    /// Writes a label's picture. Throws std::system_error.
    /// @return its name in the folder
    std::string addPicture(std::size_t number, std::string_view png);

    /// Gives the folder its name, if nothing has this name yet. Throws std::system_error.
    bool becomes(const std::string& path);
    /// What there is, once it became something.
    const JobFiles& files() const { return files_; }

  private:
    JobFiles files_;
    kelp_preview::Descriptor stream_;
    std::uint64_t bytes_ = 0;
    bool kept_ = false;
};

}  // namespace kelp_listen

#endif
