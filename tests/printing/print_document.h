#pragma once

#include <filesystem>
#include <string>

namespace kelp_test {

// What the printer gets of a PostScript document: through the spooler's real filters and ours.
// A failure of any of them throws std::runtime_error with what it said.
std::string print_document(const std::filesystem::path& document, const std::string& model,
                           const std::string& job_options);

}  // namespace kelp_test
