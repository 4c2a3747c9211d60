#ifndef KELP_TOOLS_KELP_PREVIEW_LISTEN_JOB_FILES_H
#define KELP_TOOLS_KELP_PREVIEW_LISTEN_JOB_FILES_H

#include <sys/stat.h>

#include <cstdint>
#include <string>
#include <vector>

#include "preview/descriptor.h"

namespace kelp_listen {

/// A file or folder, whatever its name becomes. That of a file is another one once it was written
/// to, as a new file may get the number of one that was removed.
struct Identity {
    dev_t device = 0;
    ino_t inode = 0;
    std::int64_t seconds = 0;
    std::int64_t nanoseconds = 0;
    bool operator==(const Identity&) const = default;
};

struct OpenFile {
    kelp_preview::Descriptor descriptor;  ///< closed where the file is not there any more
    std::uint64_t size = 0;
    std::string version;  ///< another one for any other file
};

/// A job's folder and the files that this program made in it. What others put in their places, or
/// changed, is neither read nor removed.
class JobFiles {
  public:
    JobFiles() = default;
    /// A folder without files. Throws std::system_error.
    explicit JobFiles(const std::string& path);

    /// Notes a file of the folder that is finished. Throws std::system_error.
    void add(const std::string& name);
    /// After the folder was renamed.
    void moveTo(const std::string& path) { path_ = path; }

    const std::string& path() const { return path_; }
    /// For reading.
    OpenFile open(const std::string& name) const;
    /// @return whether the folder is gone
    bool remove() const;

  private:
    struct File {
        std::string name;
        Identity identity;
    };
    kelp_preview::Descriptor openFolder() const;

    std::string path_;
    Identity identity_;
    std::vector<File> files_;
};

}  // namespace kelp_listen

#endif
