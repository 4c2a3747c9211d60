#ifndef KELP_TOOLS_KELP_PREVIEW_PRINT_PRINT_COMMAND_H
#define KELP_TOOLS_KELP_PREVIEW_PRINT_PRINT_COMMAND_H

namespace CLI {
class App;
}

/// Adds the subcommand that takes a document through all filters of a queue, up to its labels. When
/// it runs it leaves its exit status in `status`, or throws what keeps it from running.
void addPrint(CLI::App& app, int& status);

#endif
