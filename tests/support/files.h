#pragma once

#include <filesystem>
#include <map>
#include <string>
#include <string_view>

namespace kelp_test {

// The whole file. Throws std::runtime_error when it cannot be read.
std::string read_file(const std::filesystem::path& path);

// Makes or replaces the file. Throws std::runtime_error when it cannot be written.
void write_file(const std::filesystem::path& path, std::string_view content);

// Name and content of every regular file of a directory; empty when there is no directory.
std::map<std::string, std::string> read_directory(const std::filesystem::path& directory);

}  // namespace kelp_test
