#pragma once

#include <sys/mman.h>
#include <unistd.h>

#include <stdexcept>
#include <string>

#include "tests/support/descriptor.h"

namespace kelp_test {

// A file without a name, positioned at its beginning.
inline Descriptor memory_file(const std::string& content = {}) {
    Descriptor file(memfd_create("kelp", MFD_CLOEXEC));
    if (write(file.get(), content.data(), content.size()) != static_cast<ssize_t>(content.size()) ||
        lseek(file.get(), 0, SEEK_SET) != 0) {
        throw std::runtime_error("no memory file");
    }
    return file;
}

inline std::string content_of(const Descriptor& file) {
    std::string content(static_cast<std::size_t>(lseek(file.get(), 0, SEEK_END)), '\0');
    if (pread(file.get(), content.data(), content.size(), 0) !=
        static_cast<ssize_t>(content.size())) {
        throw std::runtime_error("the memory file cannot be read");
    }
    return content;
}

}  // namespace kelp_test
