#include "filter/output_file.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>

namespace {

// Another filter, or somebody else, may put a file there again as soon as one is removed.
constexpr int kMaxAttempts = 10;

// Makes way for a new file. A plain file with no other name is removed, nothing else is.
bool removeOldFile(const char* path) {
    struct stat status {};
    if (lstat(path, &status) != 0) {
        return errno == ENOENT;
    }
    // Without any name: another removes it at this moment.
    if (!S_ISREG(status.st_mode) || status.st_nlink > 1) {
        errno = EINVAL;
        return false;
    }
    return unlink(path) == 0 || errno == ENOENT;
}

// The descriptor, or -1 with errno set.
int makeFile(const char* path, int access) {
    for (int attempt = 0; attempt < kMaxAttempts; ++attempt) {
        // Always a new file: whatever is looked up about an old one may have changed since.
        const int descriptor = open(path, access | O_CREAT | O_EXCL | O_CLOEXEC, 0666);
        if (descriptor >= 0 || errno != EEXIST || !removeOldFile(path)) {
            return descriptor;
        }
    }
    errno = EEXIST;
    return -1;
}

}  // namespace

OwnedFile openOutputFile(const char* path, const char* mode) {
    const bool alsoRead = std::strchr(mode, '+') != nullptr;
    const int descriptor = makeFile(path, alsoRead ? O_RDWR : O_WRONLY);
    if (descriptor < 0) {
        return nullptr;
    }
    OwnedFile stream(fdopen(descriptor, mode));
    if (!stream) {
        close(descriptor);
    }
    return stream;
}
