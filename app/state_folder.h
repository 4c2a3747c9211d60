#ifndef KELP_APP_STATE_FOLDER_H
#define KELP_APP_STATE_FOLDER_H

#include <filesystem>

namespace kelp_app {

/// The folder that keeps the printers and the jobs that wait, and that nobody else may look into.
/// Made where it is missing. Throws std::runtime_error where it cannot be made, or is another
/// user's.
/// @param chosen its name; null for the usual one: the service manager's (STATE_DIRECTORY), for
/// root
///   /var/lib/kelp-printer-app, else $XDG_STATE_HOME/kelp-printer-app or the same in
///   ~/.local/state
std::filesystem::path stateFolder(const char* chosen);

}  // namespace kelp_app

#endif
