#ifndef KELP_APP_SAVED_STATE_H
#define KELP_APP_SAVED_STATE_H

#include <pappl/pappl.h>

#include <filesystem>
#include <string>

namespace kelp_app {

/// Keeps the printers and jobs in a file: loads it now, and saves what changes whenever the
/// server's loop wakes, whole or not at all. Once.
void keepState(pappl_system_t* system, const std::filesystem::path& file);

/// The framework's saved state with jobs that were under way when it was saved as they should go
/// on: one of which no page was sent waits again; another is aborted, for nothing should print
/// twice. The framework would never end them.
std::string withoutRunningJobs(const std::string& state);

}  // namespace kelp_app

#endif
