#include "fuzz/left_files.h"

#include <cerrno>
#include <cstdlib>
#include <ctime>

#include "filter/output_file.h"

namespace {

kelp_fuzz::LeftFiles* watching = nullptr;

std::FILE* open_file(const char* path) {
    if (watching == nullptr) {
        errno = ENOENT;
        return nullptr;
    }
    return watching->open(path);
}

}  // namespace

// The linker sends every call of these functions here (--wrap, with the names as the compiler
// writes them).
OwnedFile opened_by_the_filter(const char* path,
                               const char* mode) asm("__wrap__Z14openOutputFilePKcS0_");
std::FILE* opened_by_the_reference(const char* path, int flags, const char* mode) asm(
    "__wrap__ZN9reference11openRegularEPKciS1_");
extern "C" std::time_t __wrap_time(std::time_t* result);

OwnedFile opened_by_the_filter(const char* path, const char* /*mode*/) {
    return OwnedFile(open_file(path));
}

std::FILE* opened_by_the_reference(const char* path, int /*flags*/, const char* /*mode*/) {
    return open_file(path);
}

extern "C" std::time_t __wrap_time(std::time_t* result) {
    constexpr std::time_t now = 1'700'000'000;
    if (result != nullptr) {
        *result = now;
    }
    return now;
}

namespace kelp_fuzz {

LeftFiles::LeftFiles(unsigned failing) : failing_(failing) {
    watching = this;
}

LeftFiles::~LeftFiles() {
    watching = nullptr;
    for (const File& file : files_) {
        std::free(file.bytes);
    }
}

std::FILE* LeftFiles::open(const char* path) {
    const unsigned bit = asked_++ % 8;
    if ((failing_ >> bit & 1U) != 0) {
        errno = EACCES;
        return nullptr;
    }
    File& file = files_.emplace_back();
    file.path = path;
    return open_memstream(&file.bytes, &file.size);
}

std::string LeftFiles::all() const {
    std::string text;
    for (const File& file : files_) {
        text += file.path + ": " + std::string(file.bytes, file.size) + "\n";
    }
    return text;
}

}  // namespace kelp_fuzz
