#pragma once

#include <cstddef>
#include <cstdio>
#include <cstdlib>
#include <new>
#include <string>

namespace kelp_test {

// A stream that writes to memory.
class MemoryStream {
  public:
    MemoryStream() : file_(open_memstream(&bytes_, &size_)) {
        if (file_ == nullptr) {
            throw std::bad_alloc();
        }
    }
    ~MemoryStream() {
        std::fclose(file_);
        std::free(bytes_);
    }
    MemoryStream(const MemoryStream&) = delete;
    MemoryStream& operator=(const MemoryStream&) = delete;

    std::FILE* file() { return file_; }
    // What was written since the last call.
    std::string take() {
        std::fflush(file_);
        std::string text(bytes_ + taken_, size_ - taken_);
        taken_ = size_;
        return text;
    }

  private:
    char* bytes_ = nullptr;
    std::size_t size_ = 0;
    std::size_t taken_ = 0;
    std::FILE* file_;
};

}  // namespace kelp_test
