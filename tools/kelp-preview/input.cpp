#include "tools/kelp-preview/input.h"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <system_error>

Input::Input(const std::string& path) : shownName_(path == "-" ? "standard input" : path) {
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
    setg(buffer_.data(), buffer_.data(), buffer_.data() + count);
    return traits_type::to_int_type(*gptr());
}
