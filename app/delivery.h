#ifndef KELP_APP_DELIVERY_H
#define KELP_APP_DELIVERY_H

#include <pappl/pappl.h>

#include <string_view>

namespace kelp_app {

/// Sends bytes to a printer's device, all of them before it returns. False where the device did not
/// take them all.
bool deliver(pappl_device_t* device, std::string_view bytes);

}  // namespace kelp_app

#endif
