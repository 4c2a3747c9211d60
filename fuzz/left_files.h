#pragma once

#include <cstddef>
#include <cstdio>
#include <list>
#include <string>

namespace kelp_fuzz {

// While an object lives, the files that the filter and the reference leave at fixed places, the
// snapshots and the debug line, go to memory, or cannot be opened. Without one none can. Time
// stands still in such a program.
class LeftFiles {
  public:
    // `failing` has a bit set for each file, counted from 0, that cannot be opened.
    explicit LeftFiles(unsigned failing);
    ~LeftFiles();
    LeftFiles(const LeftFiles&) = delete;
    LeftFiles& operator=(const LeftFiles&) = delete;

    std::FILE* open(const char* path);
    // Names and contents of all that were closed since.
    std::string all() const;

  private:
    struct File {
        std::string path;
        char* bytes = nullptr;
        std::size_t size = 0;
    };

    unsigned failing_;
    unsigned asked_ = 0;
    std::list<File> files_;
};

}  // namespace kelp_fuzz
