#include "tests/spooler/local_port.h"

#include <arpa/inet.h>
#include <sys/socket.h>

#include <cerrno>
#include <cstdint>
#include <system_error>

namespace kelp_test {

sockaddr_in local_address(int port) {
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    address.sin_port = htons(static_cast<std::uint16_t>(port));
    return address;
}

Descriptor bound_to(int port) {
    Descriptor bound(socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0));
    const sockaddr_in address = local_address(port);
    if (bind(bound.get(), reinterpret_cast<const sockaddr*>(&address), sizeof address) != 0) {
        return {};
    }
    return bound;
}

Descriptor bound_to_any_port() {
    Descriptor bound = bound_to(0);
    if (!bound.is_open()) {
        throw std::system_error(errno, std::generic_category(), "no port is free");
    }
    return bound;
}

int port_of(const Descriptor& bound) {
    sockaddr_in address{};
    socklen_t length = sizeof address;
    if (getsockname(bound.get(), reinterpret_cast<sockaddr*>(&address), &length) != 0) {
        throw std::system_error(errno, std::generic_category(), "getsockname");
    }
    return ntohs(address.sin_port);
}

std::string socket_device(int port) {
    return "socket://127.0.0.1:" + std::to_string(port);
}

}  // namespace kelp_test
