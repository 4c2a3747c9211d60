#include "tests/support/files.h"

#include <fstream>
#include <sstream>
#include <stdexcept>

namespace kelp_test {

std::string read_file(const std::filesystem::path& path) {
    std::ifstream file(path, std::ios::binary);
    std::ostringstream content;
    // An empty file makes the insertion fail, which is no error here.
    if (file && file.peek() != std::ifstream::traits_type::eof()) {
        content << file.rdbuf();
    } else if (!file.eof()) {
        throw std::runtime_error("cannot read " + path.string());
    }
    return content.str();
}

void write_file(const std::filesystem::path& path, std::string_view content) {
    std::ofstream file(path, std::ios::binary | std::ios::trunc);
    file.write(content.data(), static_cast<std::streamsize>(content.size()));
    file.close();
    if (!file) {
        throw std::runtime_error("cannot write " + path.string());
    }
}

std::map<std::string, std::string> read_directory(const std::filesystem::path& directory) {
    std::map<std::string, std::string> files;
    if (!std::filesystem::is_directory(directory)) {
        return files;
    }
    for (const auto& entry : std::filesystem::directory_iterator(directory)) {
        if (entry.symlink_status().type() == std::filesystem::file_type::regular) {
            files[entry.path().filename().string()] = read_file(entry.path());
        }
    }
    return files;
}

}  // namespace kelp_test
