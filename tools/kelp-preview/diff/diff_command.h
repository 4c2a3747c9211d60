#ifndef KELP_TOOLS_KELP_PREVIEW_DIFF_DIFF_COMMAND_H
#define KELP_TOOLS_KELP_PREVIEW_DIFF_DIFF_COMMAND_H

namespace CLI {
class App;
}

/// Adds the subcommand that compares the labels of two streams as they print. When it runs it
/// leaves its exit status in `status`, or throws what keeps it from running.
void addDiff(CLI::App& app, int& status);

#endif
