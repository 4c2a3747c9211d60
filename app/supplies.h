#ifndef KELP_APP_SUPPLIES_H
#define KELP_APP_SUPPLIES_H

#include <pappl/pappl.h>

namespace kelp_app {

/// Tells what a printer uses up: its labels or its transfer paper, once its driver is known. How
/// much is left, no printer of ours says.
void describeSupplies(pappl_printer_t* printer);

}  // namespace kelp_app

#endif
