#include "tools/kelp-preview/listen/unfinished_job.h"

#include <fcntl.h>
#include <sys/stat.h>

#include <cerrno>
#include <cstdio>
#include <filesystem>
#include <random>
#include <system_error>

#include "preview/whole_file.h"

namespace kelp_listen {
namespace {

[[noreturn]] void fail(const std::string& path) {
    throw std::system_error(errno, std::generic_category(), path);
}

JobFiles makeHiddenFolder(const std::string& parent) {
    std::random_device random;
    std::string path;
    int made = 0;
    do {
        path = parent + "/.job-" + std::to_string(random()) + ".tmp";
        made = mkdir(path.c_str(), 0777);
    } while (made != 0 && errno == EEXIST);
    if (made != 0) {
        fail(parent);
    }
    return JobFiles(path);
}

/// Like rename(), but never onto anything.
bool renameToFree(const std::string& from, const std::string& to) {
    if (renameat2(AT_FDCWD, from.c_str(), AT_FDCWD, to.c_str(), RENAME_NOREPLACE) == 0) {
        return true;
    }
    if (errno == EEXIST) {
        return false;
    }
    if (errno != EINVAL && errno != ENOSYS) {
        fail(to);
    }
    // A file system without it. A folder replaces at most an empty folder.
    struct stat status {};
    if (lstat(to.c_str(), &status) == 0) {
        return false;
    }
    if (std::rename(from.c_str(), to.c_str()) != 0) {
        if (errno == EEXIST || errno == ENOTEMPTY || errno == ENOTDIR) {
            return false;
        }
        fail(to);
    }
    return true;
}

}  // namespace

UnfinishedJob::UnfinishedJob(const std::string& folder) : files_(makeHiddenFolder(folder)) {
    stream_ = kelp_preview::Descriptor(
        open(streamPath().c_str(), O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC, 0666));
    if (!stream_.isOpen()) {
        const int error = errno;
        rmdir(files_.path().c_str());
        throw std::system_error(error, std::generic_category(), folder);
    }
}

UnfinishedJob::~UnfinishedJob() {
    if (!kept_) {
        std::error_code ignored;
        std::filesystem::remove_all(files_.path(), ignored);
    }
}

void UnfinishedJob::append(std::string_view bytes) {
    while (!bytes.empty()) {
        const ssize_t written = write(stream_.get(), bytes.data(), bytes.size());
        if (written < 0 && errno != EINTR) {
            fail(std::filesystem::path(files_.path()).parent_path());
        }
        const std::size_t count = written < 0 ? 0 : static_cast<std::size_t>(written);
        bytes.remove_prefix(count);
        bytes_ += count;
    }
}

void UnfinishedJob::endStream() {
    if (close(stream_.release()) != 0) {
        fail(std::filesystem::path(files_.path()).parent_path());
    }
    files_.add(kStreamName);
}

std::string UnfinishedJob::streamPath() const {
    return files_.path() + "/" + kStreamName;
}

std::string UnfinishedJob::addPicture(std::size_t number, std::string_view png) {
    std::string name = "label-" + std::to_string(number) + ".png";
    kelp_preview::writeWholeFile(files_.path() + "/" + name, png);
    files_.add(name);
    return name;
}

bool UnfinishedJob::becomes(const std::string& path) {
    kept_ = renameToFree(files_.path(), path);
    if (kept_) {
        files_.moveTo(path);
    }
    return kept_;
}

}  // namespace kelp_listen
