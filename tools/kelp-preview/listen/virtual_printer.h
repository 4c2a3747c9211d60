#ifndef KELP_TOOLS_KELP_PREVIEW_LISTEN_VIRTUAL_PRINTER_H
#define KELP_TOOLS_KELP_PREVIEW_LISTEN_VIRTUAL_PRINTER_H

#include "tools/kelp-preview/listen/listen_options.h"

namespace kelp_listen {

/// Takes jobs, draws and shows them until SIGINT, SIGTERM or SIGHUP comes, or standard output
/// fails. Throws what keeps it from starting.
void runVirtualPrinter(const ListenOptions& options);

}  // namespace kelp_listen

#endif
