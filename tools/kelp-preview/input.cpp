#include "tools/kelp-preview/input.h"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <system_error>

namespace {

std::string megabytes(std::uint64_t bytes) {
    return std::to_string(bytes / 1'000'000) + '.' + std::to_string(bytes / 100'000 % 10) + " MB";
}

}  // namespace

Input::Input(const std::string& path, Progress& progress)
    : shownName_(path == "-" ? "standard input" : path), progress_(progress) {
    if (path != "-") {
        descriptor_ = open(path.c_str(), O_RDONLY | O_CLOEXEC);
        if (descriptor_ < 0) {
            throw std::system_error(errno, std::generic_category(), shownName_);
        }
    }
}

Input::~Input() {
    if (descriptor_ > STDIN_FILENO) {
        close(descriptor_);
    }
}

Input::int_type Input::underflow() {
    ssize_t count = 0;
    do {
        count = read(descriptor_, buffer_.data(), buffer_.size());
    } while (count < 0 && errno == EINTR);
    if (count < 0) {
        throw std::system_error(errno, std::generic_category(), shownName_);
    }
    if (count == 0) {
        return traits_type::eof();
    }
    bytesRead_ += static_cast<std::uint64_t>(count);
    progress_.show(megabytes(bytesRead_) + " of " + shownName_ + " decoded");
    setg(buffer_.data(), buffer_.data(), buffer_.data() + count);
    return traits_type::to_int_type(*gptr());
}
