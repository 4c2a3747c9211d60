#ifndef KELP_TOOLS_KELP_PREVIEW_SHOW_SHOW_COMMAND_H
#define KELP_TOOLS_KELP_PREVIEW_SHOW_SHOW_COMMAND_H

namespace CLI {
class App;
}

/// Adds the subcommand that describes the labels of a stream on standard output and writes their
/// pictures. When it runs it leaves its exit status in `status`, or throws what keeps it from
/// running.
void addShow(CLI::App& app, int& status);

#endif
