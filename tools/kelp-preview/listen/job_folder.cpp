#include "tools/kelp-preview/listen/job_folder.h"

#include <sys/stat.h>

#include <algorithm>
#include <cerrno>
#include <charconv>
#include <cstdio>
#include <filesystem>
#include <string_view>
#include <system_error>

namespace kelp_listen {
namespace {

constexpr std::string_view kPrefix = "job-";
/// Higher ones are nobody's job numbers.
constexpr std::uint64_t kHighest = 999'999'999'999'999;

/// The number that a name begins with behind "job-", or 0.
std::uint64_t numberIn(std::string_view name) {
    std::uint64_t number = 0;
    if (!name.starts_with(kPrefix)) {
        return 0;
    }
    name.remove_prefix(kPrefix.size());
    const auto [end, error] = std::from_chars(name.begin(), name.end(), number);
    return error == std::errc() && number <= kHighest ? number : 0;
}

}  // namespace

JobFolder::JobFolder(const std::string& path) : path_(path) {
    if (mkdir(path.c_str(), 0777) != 0 && errno != EEXIST) {
        throw std::system_error(errno, std::generic_category(), path);
    }
    UnfinishedJob(path_).endStream();  // says whether jobs can be written
    std::error_code error;
    std::uint64_t highest = 0;
    for (std::filesystem::directory_iterator entry(path, error), end; !error && entry != end;
         entry.increment(error)) {
        highest = std::max(highest, numberIn(entry->path().filename().native()));
    }
    if (error) {
        throw std::system_error(error, path);
    }
    next_ = highest + 1;
}

std::uint64_t JobFolder::keep(UnfinishedJob& job) {
    while (true) {
        const std::uint64_t number = next_++;
        char name[32];
        std::snprintf(name, sizeof name, "job-%04llu", static_cast<unsigned long long>(number));
        if (job.becomes(path_ + "/" + name)) {
            return number;
        }
    }
}

}  // namespace kelp_listen
