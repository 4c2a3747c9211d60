#ifndef KELP_PREVIEW_DESCRIPTOR_H
#define KELP_PREVIEW_DESCRIPTOR_H

#include <unistd.h>

#include <utility>

namespace kelp_preview {

/// Owns a file descriptor, or none.
class Descriptor {
  public:
    Descriptor() = default;
    explicit Descriptor(int number) : number_(number) {}
    Descriptor(const Descriptor&) = delete;
    Descriptor& operator=(const Descriptor&) = delete;
    Descriptor(Descriptor&& other) noexcept : number_(other.release()) {}
    Descriptor& operator=(Descriptor&& other) noexcept {
        std::swap(number_, other.number_);
        return *this;
    }
    ~Descriptor() { reset(); }

    int get() const { return number_; }
    bool isOpen() const { return number_ >= 0; }
    int release() { return std::exchange(number_, -1); }
    void reset() {
        if (isOpen()) {
            close(release());
        }
    }

  private:
    int number_ = -1;
};

}  // namespace kelp_preview

#endif
