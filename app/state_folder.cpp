#include "app/state_folder.h"

#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <stdexcept>
#include <string>

#include "app/program_name.h"

namespace kelp_app {

namespace {

namespace fs = std::filesystem;

fs::path usualFolder() {
    if (const char* ofService = std::getenv("STATE_DIRECTORY")) {
        // The service manager makes it, behind a link of its own.
        std::error_code error;
        const fs::path behind = fs::canonical(ofService, error);
        return error ? fs::path(ofService) : behind;
    }
    if (geteuid() == 0) {
        return fs::path("/var/lib") / kProgramName;
    }
    if (const char* state = std::getenv("XDG_STATE_HOME")) {
        return fs::path(state) / kProgramName;
    }
    const char* home = std::getenv("HOME");
    if (home == nullptr) {
        throw std::runtime_error("There is no home folder: name a state-directory.");
    }
    return fs::path(home) / ".local/state" / kProgramName;
}

}  // namespace

fs::path stateFolder(const char* chosen) {
    const fs::path folder = chosen != nullptr ? fs::path(chosen) : usualFolder();
    std::error_code error;
    fs::create_directories(folder.parent_path(), error);
    struct stat found {};
    if ((mkdir(folder.c_str(), S_IRWXU) != 0 && errno != EEXIST) ||
        lstat(folder.c_str(), &found) != 0) {
        throw std::runtime_error(folder.string() + ": " + std::strerror(errno));
    }
    if (!S_ISDIR(found.st_mode) || found.st_uid != geteuid()) {
        throw std::runtime_error(folder.string() + ": Not a folder of this user");
    }
    if (chmod(folder.c_str(), S_IRWXU) != 0) {
        throw std::runtime_error(folder.string() + ": " + std::strerror(errno));
    }
    return folder;
}

}  // namespace kelp_app
