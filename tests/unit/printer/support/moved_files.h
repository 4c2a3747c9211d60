#pragma once

#include <filesystem>
#include <string>
#include <vector>

#include "tests/support/temp_dir.h"

namespace kelp_test {

// The files that the filter leaves at fixed places, the snapshots and the debug line, are opened
// in a directory of this object while it lives. The executable is linked so that the libraries
// under test open their files through it; without such an object these places cannot be opened.
class MovedFiles {
  public:
    MovedFiles();
    ~MovedFiles();
    MovedFiles(const MovedFiles&) = delete;
    MovedFiles& operator=(const MovedFiles&) = delete;

    struct Opened {
        std::string path;
        std::string mode;
    };
    // Every file that was asked for at a moved place, in order, by its own name.
    const std::vector<Opened>& opened() const { return opened_; }
    // Names in the snapshots' directory, sorted.
    std::vector<std::string> snapshots() const;
    // Where a file of this name really is.
    std::filesystem::path real_path(const std::string& path) const;
    // From now on no snapshot can be opened.
    void remove_snapshot_directory();

    void note(const char* path, const char* mode) { opened_.push_back({path, mode}); }

  private:
    TempDir root_;
    std::vector<Opened> opened_;
};

}  // namespace kelp_test
