#include "tests/app/silent_port.h"

#include <sys/socket.h>

#include <cerrno>
#include <system_error>
#include <utility>

namespace kelp_test {

SilentPort::SilentPort() : listener_(bound_to_any_port()), port_(port_of(listener_)) {
    if (listen(listener_.get(), 0) != 0) {
        throw std::system_error(errno, std::generic_category(), "a silent port");
    }
    const sockaddr_in address = local_address(port_);
    for (int count = 0; count < 4; ++count) {
        Descriptor client(socket(AF_INET, SOCK_STREAM | SOCK_NONBLOCK | SOCK_CLOEXEC, 0));
        connect(client.get(), reinterpret_cast<const sockaddr*>(&address), sizeof address);
        waiting_.push_back(std::move(client));
    }
}

}  // namespace kelp_test
