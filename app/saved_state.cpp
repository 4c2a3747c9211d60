#include "app/saved_state.h"

#include <algorithm>
#include <cerrno>
#include <exception>
#include <fstream>
#include <iterator>
#include <set>
#include <stdexcept>
#include <string>
#include <system_error>

#include "app/begun_jobs.h"
#include "app/state_text.h"
#include "preview/whole_file.h"

namespace kelp_app {

namespace {

namespace fs = std::filesystem;

/// As long as the server.
fs::path stateFile;

/// Throws std::system_error.
std::string contentOf(const fs::path& path) {
    errno = 0;
    std::ifstream file(path, std::ios::binary);
    std::string content{std::istreambuf_iterator<char>(file), {}};
    if (!file.is_open() || file.bad()) {
        throw std::system_error(errno, std::generic_category(), path.string());
    }
    return content;
}

/// As many as are saved.
int printersOf(pappl_system_t* system) {
    int count = 0;
    papplSystemIteratePrinters(
        system,
        [](pappl_printer_t* printer, void* number) {
            *static_cast<int*>(number) += papplPrinterIsDeleted(printer) ? 0 : 1;
        },
        &count);
    return count;
}

/// What has changed is saved when the server's loop wakes next. Takes the framework's lock.
void markChanged(pappl_system_t* system) {
    papplSystemSetDefaultPrinterID(system, papplSystemGetDefaultPrinterID(system));
}

/// Throws std::system_error, std::runtime_error, std::bad_alloc.
void saveNow(pappl_system_t* system) {
    // One that begins from now on may be missing in what is saved.
    const std::set<JobNumber> begun = begunJobs();
    const fs::path whole = stateFile.string() + ".whole";
    if (!papplSystemSaveState(system, whole.c_str())) {
        throw std::system_error(errno, std::generic_category(), whole.string());
    }
    JobsToSave jobs;
    const std::string state = stateToSave(contentOf(whole), jobs);
    std::error_code error;
    fs::remove(whole, error);
    // The framework does not tell that a disk is full.
    if (!isWholeState(state, printersOf(system))) {
        throw std::runtime_error("they are not whole");
    }
    static std::string written;
    if (state != written) {
        kelp_preview::writeWholeFile(stateFile, state);
        written = state;
    }
    std::set<JobNumber> ended;
    std::set_difference(begun.begin(), begun.end(), jobs.waiting.begin(), jobs.waiting.end(),
                        std::inserter(ended, ended.end()));
    unmark(ended);
    if (jobs.areDocumentsOnTheWay) {
        // When they have come the framework does not save again.
        markChanged(system);
    }
}

bool saveState(pappl_system_t* system, void* /*unused*/) {
    static bool hasFailed = false;
    try {
        saveNow(system);
        hasFailed = false;
        return true;
    } catch (const std::exception& failure) {
        if (!hasFailed) {
            papplLog(system, PAPPL_LOGLEVEL_ERROR,
                     "Unable to save the printers and jobs, what was saved before stays: %s.",
                     failure.what());
        }
        hasFailed = true;
        // The framework does not try again before something changes.
        markChanged(system);
        return false;
    }
}

}  // namespace

void keepState(pappl_system_t* system, const fs::path& folder) {
    stateFile = folder / "printers.state";
    keepBegunJobs(folder / "begun");
    if (fs::exists(stateFile)) {
        const std::set<JobNumber> begun = begunJobs();
        kelp_preview::writeWholeFile(stateFile, stateToLoad(contentOf(stateFile), begun));
        unmark(begun);
    }
    papplSystemLoadState(system, stateFile.c_str());
    papplSystemSetSaveCallback(system, saveState, nullptr);
}

}  // namespace kelp_app
