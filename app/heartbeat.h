#ifndef KELP_APP_HEARTBEAT_H
#define KELP_APP_HEARTBEAT_H

#include <pappl/pappl.h>

namespace kelp_app {

/// Keeps the server's loop awake, once a second: it saves the state whenever it wakes, else after
/// half a minute. The first time, it has the jobs begun that were loaded; the framework does not.
///
/// Where the loop does not come round for two minutes, the process ends with status 1, to be
/// started again by whoever started it: the framework (1.3) takes two of its locks in either order
/// when two rasters reach a printer at the moment in which the state is saved, and would answer
/// nobody any more. The saved jobs print then.
void keepBeating(pappl_system_t* system);

}  // namespace kelp_app

#endif
