#ifndef KELP_APP_DRIVER_H
#define KELP_APP_DRIVER_H

#include <pappl/pappl.h>

#include <vector>

namespace kelp_app {

/// The models, as the framework lists them.
std::vector<pappl_pr_driver_t> driverList();

/// Describes a printer to the framework; false, with a line in the log, for a model that there is
/// not. A pappl_pr_driver_cb_t.
bool describePrinter(pappl_system_t* system, const char* driverName, const char* deviceUri,
                     const char* deviceId, pappl_pr_driver_data_t* printer, ipp_t** attributes,
                     void* unused);

/// The model of a device by its IEEE 1284 ID; null for a device that is none of ours. A
/// pappl_pr_autoadd_cb_t.
const char* recognizeDevice(const char* deviceInfo, const char* deviceUri, const char* deviceId,
                            void* unused);

}  // namespace kelp_app

#endif
