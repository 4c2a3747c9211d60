#ifndef KELP_TOOLS_KELP_PREVIEW_LISTEN_JOB_FILES_H
#define KELP_TOOLS_KELP_PREVIEW_LISTEN_JOB_FILES_H

#include <sys/stat.h>

#include <cstdint>
#include <string>
#include <vector>

#include "tools/kelp-preview/listen/descriptor.h"

namespace kelp_listen {

/// A file or folder, whatever its name becomes.
struct Identity {
    dev_t device = 0;
    ino_t inode = 0;
    bool operator==(const Identity&) const = default;
};

/// Of what has this name, not of what a link points to. Throws std::system_error.
Identity identityOf(const std::string& path);

struct OpenFile {
    Descriptor descriptor;  ///< closed where the file is not there any more
    std::uint64_t size = 0;
    std::string version;  ///< another one for any other content
};

/// A job's folder and the files that this program made in it. What others put in their places is
/// neither read nor removed.
class JobFiles {
  public:
    JobFiles() = default;
    JobFiles(std::string path, Identity identity);

    /// Notes a file that was just made in the folder. Throws std::system_error.
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
    Descriptor openFolder() const;

    std::string path_;
    Identity identity_;
    std::vector<File> files_;
};

}  // namespace kelp_listen

#endif
