#include "tests/reference/job/output.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cstdarg>

namespace reference {

void Output::bytes(const std::string& data) {
    for (FILE* stream : streams)
        fwrite(data.data(), 1, data.size(), stream);
}

void Output::byte(int value) {
    for (FILE* stream : streams)
        fputc(value & 255, stream);
}

void Output::format(const char* text, ...) {
    for (FILE* stream : streams) {
        va_list arguments;
        va_start(arguments, text);
        vfprintf(stream, text, arguments);
        va_end(arguments);
    }
}

FILE* openRegular(const char* path, int flags, const char* mode) {
    int descriptor = open(path, flags | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC, 0666);
    if (descriptor < 0)
        return nullptr;
    struct stat information;
    if (fstat(descriptor, &information) != 0 || !S_ISREG(information.st_mode)) {
        close(descriptor);
        return nullptr;
    }
    FILE* stream = fdopen(descriptor, mode);
    if (stream == nullptr)
        close(descriptor);
    return stream;
}

void occupyClosedStandardDescriptors() {
    for (int descriptor = 0; descriptor <= 2; descriptor++)
        if (fcntl(descriptor, F_GETFD) < 0)
            open("/dev/null", O_RDONLY);
}

}  // namespace reference
