#ifndef KELP_TOOLS_KELP_PREVIEW_LISTEN_LISTEN_COMMAND_H
#define KELP_TOOLS_KELP_PREVIEW_LISTEN_LISTEN_COMMAND_H

namespace CLI {
class App;
}

/// Adds the subcommand that is a virtual label printer. When it runs it leaves its exit status in
/// `status`, or throws what keeps it from running.
void addListen(CLI::App& app, int& status);

#endif
