#ifndef KELP_TOOLS_KELP_PREVIEW_LISTEN_LISTENING_SOCKET_H
#define KELP_TOOLS_KELP_PREVIEW_LISTEN_LISTENING_SOCKET_H

#include <sys/socket.h>

#include <cstdint>
#include <string>

#include "preview/descriptor.h"

namespace kelp_listen {

/// A socket that takes connections, non-blocking.
struct ListeningSocket {
    kelp_preview::Descriptor descriptor;
    std::string host;  ///< "127.0.0.1", "::1"
    std::string name;  ///< "127.0.0.1:9100", "[::1]:9100"
    bool loopback = true;
};

/// @param address numeric, IPv4 or IPv6
/// @param port 0 for one that the system chooses
/// Throws std::runtime_error or std::system_error, with address and port in the message.
ListeningSocket listenOn(const std::string& address, std::uint16_t port);

/// "127.0.0.1", "::1"
std::string numericHost(const sockaddr_storage& address, socklen_t length);

}  // namespace kelp_listen

#endif
