#include "filter/output_file.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>

namespace {

bool isPlainFile(int descriptor, const char* path) {
    struct stat opened {};
    struct stat named {};
    // That it has one name is not enough: it may be the one that is left of two, and not this.
    return fstat(descriptor, &opened) == 0 && S_ISREG(opened.st_mode) && opened.st_nlink == 1 &&
           lstat(path, &named) == 0 && named.st_nlink == 1 && named.st_dev == opened.st_dev &&
           named.st_ino == opened.st_ino;
}

}  // namespace

OwnedFile openOutputFile(const char* path, const char* mode) {
    const bool alsoRead = std::strchr(mode, '+') != nullptr;
    // Emptied only after the check: opening with O_TRUNC would already have done the damage.
    const int descriptor = open(
        path, (alsoRead ? O_RDWR : O_WRONLY) | O_CREAT | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC, 0666);
    if (descriptor < 0) {
        return nullptr;
    }
    if (!isPlainFile(descriptor, path)) {
        close(descriptor);
        errno = EINVAL;
        return nullptr;
    }
    OwnedFile stream;
    if (ftruncate(descriptor, 0) == 0) {
        stream.reset(fdopen(descriptor, mode));
    }
    if (!stream) {
        close(descriptor);
    }
    return stream;
}
