#include "preview/whole_file.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <random>
#include <system_error>

namespace kelp_preview {
namespace {

[[noreturn]] void fail(const std::string& path, int error = errno) {
    throw std::system_error(error, std::generic_category(), path);
}

/// A file of a name that nobody has, open for writing; removed unless it is renamed.
class TemporaryFile {
  public:
    explicit TemporaryFile(const std::string& beside) {
        std::random_device random;
        do {
            path_ = beside + "." + std::to_string(random()) + ".tmp";
            descriptor_ =
                open(path_.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC, 0666);
        } while (descriptor_ < 0 && errno == EEXIST);
        if (descriptor_ < 0) {
            fail(beside);
        }
    }
    ~TemporaryFile() {
        if (descriptor_ >= 0) {
            close(descriptor_);
        }
        if (!path_.empty()) {
            unlink(path_.c_str());
        }
    }
    TemporaryFile(const TemporaryFile&) = delete;
    TemporaryFile& operator=(const TemporaryFile&) = delete;

    void write(std::string_view content, const std::string& shownPath) const {
        while (!content.empty()) {
            const ssize_t written = ::write(descriptor_, content.data(), content.size());
            if (written < 0 && errno != EINTR) {
                fail(shownPath);
            }
            content.remove_prefix(written < 0 ? 0 : static_cast<std::size_t>(written));
        }
    }
    void renameTo(const std::string& path) {
        const int descriptor = descriptor_;
        descriptor_ = -1;
        if (close(descriptor) != 0 || std::rename(path_.c_str(), path.c_str()) != 0) {
            fail(path);
        }
        path_.clear();
    }

  private:
    std::string path_;
    int descriptor_ = -1;
};

}  // namespace

void writeWholeFile(const std::string& path, std::string_view content) {
    struct stat old {};
    if (lstat(path.c_str(), &old) == 0 && !S_ISREG(old.st_mode) && !S_ISLNK(old.st_mode)) {
        fail(path, S_ISDIR(old.st_mode) ? EISDIR : EEXIST);
    }
    TemporaryFile file(path);
    file.write(content, path);
    file.renameTo(path);
}

}  // namespace kelp_preview
