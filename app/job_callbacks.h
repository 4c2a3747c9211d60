#ifndef KELP_APP_JOB_CALLBACKS_H
#define KELP_APP_JOB_CALLBACKS_H

#include <pappl/pappl.h>

namespace kelp_app {

/// The type of documents that are printer commands already: they are sent as they are.
constexpr const char* kCommandsFormat = "application/vnd.kelp-zpl";

/// Whether a document begins as printer commands do. The type above, or null.
const char* recognizeCommands(const unsigned char* header, size_t size, void* unused);

/// For raster jobs that the framework starts twice. Once, before the server runs.
void addRasterFilters(pappl_system_t* system);

/// Sets what the framework calls for a job. The printer's extension must be its model.
void setJobCallbacks(pappl_pr_driver_data_t& printer);

}  // namespace kelp_app

#endif
