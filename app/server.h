#ifndef KELP_APP_SERVER_H
#define KELP_APP_SERVER_H

#include <pappl/pappl.h>

namespace kelp_app {

/// Makes the server of the "server" subcommand; null, with a message on standard error, for options
/// that cannot be. A pappl_ml_system_cb_t.
///
/// It listens on the loopback alone, besides the socket that the other subcommands use. The option
/// "share=yes" opens it to the network, and takes a "password-file" with the password for changes
/// from there. "state-directory" names the folder of stateFolder(). "status-query=no" asks no
/// printer how it is. Otherwise the framework's own options: server-port, server-hostname,
/// log-file, log-level, auth-service, admin-group.
pappl_system_t* makeServer(int optionCount, cups_option_t* options, void* unused);

}  // namespace kelp_app

#endif
