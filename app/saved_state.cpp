#include "app/saved_state.h"

#include <fstream>
#include <sstream>
#include <system_error>

#include "preview/whole_file.h"

namespace kelp_app {

namespace {

namespace fs = std::filesystem;

/// As long as the server.
fs::path stateFile;

bool saveState(pappl_system_t* system, void* /*unused*/) {
    const fs::path whole = stateFile.string() + ".whole";
    if (!papplSystemSaveState(system, whole.c_str())) {
        return false;
    }
    std::ostringstream state;
    state << std::ifstream(whole).rdbuf();
    std::error_code error;
    fs::remove(whole, error);
    try {
        kelp_preview::writeWholeFile(stateFile, withoutRunningJobs(state.str()));
    } catch (const std::system_error& failure) {
        papplLog(system, PAPPL_LOGLEVEL_ERROR, "%s", failure.what());
        return false;
    }
    return true;
}

}  // namespace

void keepState(pappl_system_t* system, const std::filesystem::path& file) {
    stateFile = file;
    papplSystemLoadState(system, stateFile.c_str());
    papplSystemSetSaveCallback(system, saveState, nullptr);
}

std::string withoutRunningJobs(const std::string& state) {
    const std::string running = " state=\"5\"";
    std::istringstream lines(state);
    std::string result;
    for (std::string line; std::getline(lines, line); result += line + '\n') {
        const std::size_t at = line.find(running);
        if (line.starts_with("Job ") && at != std::string::npos) {
            const bool isBegun = line.find(" imcompleted=") != std::string::npos;
            line.replace(at, running.size(), isBegun ? " state=\"8\"" : " state=\"3\"");
        }
    }
    return result;
}

}  // namespace kelp_app
