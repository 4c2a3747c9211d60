#ifndef KELP_APP_SAVED_STATE_H
#define KELP_APP_SAVED_STATE_H

#include <pappl/pappl.h>

#include <filesystem>

namespace kelp_app {

/// Keeps the printers and jobs in a file of a folder: loads it now, and saves what changes whenever
/// the server's loop wakes, whole or not at all. Jobs that waited wait again; those of which a
/// printer got something are aborted. Once. Throws std::system_error where the folder cannot be
/// written.
void keepState(pappl_system_t* system, const std::filesystem::path& folder);

}  // namespace kelp_app

#endif
