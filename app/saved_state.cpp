#include "app/saved_state.h"

#include <algorithm>
#include <fstream>
#include <iterator>
#include <set>
#include <sstream>
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

std::string contentOf(const fs::path& path) {
    std::ostringstream content;
    content << std::ifstream(path).rdbuf();
    return content.str();
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

bool saveState(pappl_system_t* system, void* /*unused*/) {
    // One that begins from now on may be missing in what is saved.
    const std::set<JobNumber> begun = begunJobs();
    const fs::path whole = stateFile.string() + ".whole";
    if (!papplSystemSaveState(system, whole.c_str())) {
        return false;
    }
    std::set<JobNumber> waiting;
    const std::string state = stateToSave(contentOf(whole), waiting);
    std::error_code error;
    fs::remove(whole, error);
    // The framework does not tell that a disk is full.
    if (!isWholeState(state, printersOf(system))) {
        papplLog(system, PAPPL_LOGLEVEL_ERROR,
                 "Unable to save the printers and jobs whole: what was saved before stays.");
        return false;
    }
    try {
        kelp_preview::writeWholeFile(stateFile, state);
    } catch (const std::system_error& failure) {
        papplLog(system, PAPPL_LOGLEVEL_ERROR, "%s", failure.what());
        return false;
    }
    std::set<JobNumber> ended;
    std::set_difference(begun.begin(), begun.end(), waiting.begin(), waiting.end(),
                        std::inserter(ended, ended.end()));
    unmark(ended);
    return true;
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
