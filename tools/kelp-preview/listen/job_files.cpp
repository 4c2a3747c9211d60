#include "tools/kelp-preview/listen/job_files.h"

#include <fcntl.h>

#include <algorithm>
#include <cerrno>
#include <system_error>

namespace kelp_listen {
namespace {

Identity identityFrom(const struct stat& status) {
    if (S_ISDIR(status.st_mode)) {
        return {status.st_dev, status.st_ino};
    }
    return {status.st_dev, status.st_ino, status.st_mtim.tv_sec, status.st_mtim.tv_nsec};
}

/// Of what has this name, not of what a link points to.
Identity identityOf(const std::string& path) {
    struct stat status {};
    if (lstat(path.c_str(), &status) != 0) {
        throw std::system_error(errno, std::generic_category(), path);
    }
    return identityFrom(status);
}

}  // namespace

JobFiles::JobFiles(const std::string& path) : path_(path), identity_(identityOf(path)) {}

void JobFiles::add(const std::string& name) {
    files_.push_back({name, identityOf(path_ + "/" + name)});
}

kelp_preview::Descriptor JobFiles::openFolder() const {
    kelp_preview::Descriptor folder(
        ::open(path_.c_str(), O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC));
    struct stat status {};
    if (folder.isOpen() &&
        (fstat(folder.get(), &status) != 0 || identityFrom(status) != identity_)) {
        folder.reset();
    }
    return folder;
}

OpenFile JobFiles::open(const std::string& name) const {
    const auto file =
        std::find_if(files_.begin(), files_.end(), [&](const File& f) { return f.name == name; });
    const kelp_preview::Descriptor folder = openFolder();
    if (file == files_.end() || !folder.isOpen()) {
        return {};
    }
    OpenFile result;
    // O_NONBLOCK: another's FIFO in its place would keep us waiting
    result.descriptor = kelp_preview::Descriptor(
        openat(folder.get(), name.c_str(), O_RDONLY | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC));
    struct stat status {};
    if (result.descriptor.isOpen() &&
        (fstat(result.descriptor.get(), &status) != 0 || identityFrom(status) != file->identity)) {
        result.descriptor.reset();
    }
    result.size = static_cast<std::uint64_t>(status.st_size);
    result.version = std::to_string(file->identity.inode) + "-" +
                     std::to_string(file->identity.seconds) + "-" +
                     std::to_string(file->identity.nanoseconds);
    return result;
}

bool JobFiles::remove() const {
    const kelp_preview::Descriptor folder = openFolder();
    if (!folder.isOpen()) {
        return false;
    }
    for (const File& file : files_) {
        struct stat status {};
        if (fstatat(folder.get(), file.name.c_str(), &status, AT_SYMLINK_NOFOLLOW) == 0 &&
            identityFrom(status) == file.identity) {
            unlinkat(folder.get(), file.name.c_str(), 0);
        }
    }
    return rmdir(path_.c_str()) == 0;
}

}  // namespace kelp_listen
