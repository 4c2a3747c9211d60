#ifndef KELP_PRINTER_MEMORY_STREAM_H
#define KELP_PRINTER_MEMORY_STREAM_H

#include <cstddef>
#include <cstdio>
#include <cstdlib>
#include <new>
#include <string>
#include <utility>

/// An output stream of a printer that writes to memory. Throws std::bad_alloc.
class MemoryStream {
  public:
    MemoryStream() : stream_(open_memstream(&bytes_, &size_)) {
        if (stream_ == nullptr) {
            throw std::bad_alloc();
        }
    }
    ~MemoryStream() {
        if (stream_ != nullptr) {
            std::fclose(stream_);
        }
        std::free(bytes_);
    }
    MemoryStream(const MemoryStream&) = delete;
    MemoryStream& operator=(const MemoryStream&) = delete;

    std::FILE* stream() const { return stream_; }
    /// Ends the stream, once, and gives what was written.
    std::string take() {
        const bool isWhole = std::ferror(stream_) == 0;
        if (std::fclose(std::exchange(stream_, nullptr)) != 0 || !isWhole) {
            throw std::bad_alloc();
        }
        return {bytes_, size_};
    }

  private:
    char* bytes_ = nullptr;
    std::size_t size_ = 0;
    std::FILE* stream_;
};

#endif
