#include "tests/unit/printer/support/moved_files.h"

#include <algorithm>
#include <cerrno>
#include <string_view>

#include "filter/output_file.h"

namespace {

kelp_test::MovedFiles* active = nullptr;

constexpr std::string_view snapshot_directory = "/var/spool/cups/tmp/";

bool is_moved(std::string_view path) {
    return path.starts_with(snapshot_directory) || path == "/tmp/xxxxx.log";
}

}  // namespace

// The linker sends every call of openOutputFile to the second of these and calls the real one the
// first (--wrap, with the name as the compiler writes it).
OwnedFile real_open_output_file(const char* path,
                                const char* mode) asm("__real__Z14openOutputFilePKcS0_");
OwnedFile wrapped_open_output_file(const char* path,
                                   const char* mode) asm("__wrap__Z14openOutputFilePKcS0_");

OwnedFile wrapped_open_output_file(const char* path, const char* mode) {
    if (!is_moved(path)) {
        return real_open_output_file(path, mode);
    }
    if (active == nullptr) {
        errno = ENOENT;
        return nullptr;
    }
    active->note(path, mode);
    return real_open_output_file(active->real_path(path).c_str(), mode);
}

namespace kelp_test {

MovedFiles::MovedFiles() {
    std::filesystem::create_directories(real_path(std::string(snapshot_directory)));
    std::filesystem::create_directories(real_path("/tmp"));
    active = this;
}

MovedFiles::~MovedFiles() {
    active = nullptr;
}

std::vector<std::string> MovedFiles::snapshots() const {
    std::vector<std::string> names;
    for (const auto& entry :
         std::filesystem::directory_iterator(real_path(std::string(snapshot_directory)))) {
        names.push_back(entry.path().filename().string());
    }
    std::sort(names.begin(), names.end());
    return names;
}

std::filesystem::path MovedFiles::real_path(const std::string& path) const {
    return root_.path().string() + path;
}

void MovedFiles::remove_snapshot_directory() {
    std::filesystem::remove_all(real_path("/var/spool"));
}

}  // namespace kelp_test
