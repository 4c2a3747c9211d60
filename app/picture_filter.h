#ifndef KELP_APP_PICTURE_FILTER_H
#define KELP_APP_PICTURE_FILTER_H

#include <pappl/pappl.h>

namespace kelp_app {

/// Prints PNG and JPEG by our own readers: the framework's never comes to an end with a PNG that is
/// cut short. Once, before the server runs.
void addPictureFilters(pappl_system_t* system);

}  // namespace kelp_app

#endif
