#ifndef KELP_TOOLS_KELP_PREVIEW_SHEET_SHEET_COMMAND_H
#define KELP_TOOLS_KELP_PREVIEW_SHEET_SHEET_COMMAND_H

namespace CLI {
class App;
}

/// Adds the subcommand that shows a picture in every halftone. When it runs it leaves its exit
/// status in `status`, or throws what keeps it from running.
void addSheet(CLI::App& app, int& status);

#endif
