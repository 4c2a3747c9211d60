#include "tests/app/silent_port.h"

#include <arpa/inet.h>
#include <netinet/in.h>
#include <sys/socket.h>

#include <cerrno>
#include <system_error>
#include <utility>

namespace kelp_test {

SilentPort::SilentPort() : listener_(socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0)) {
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    auto* const any = reinterpret_cast<sockaddr*>(&address);
    socklen_t size = sizeof address;
    if (bind(listener_.get(), any, size) != 0 || listen(listener_.get(), 0) != 0 ||
        getsockname(listener_.get(), any, &size) != 0) {
        throw std::system_error(errno, std::generic_category(), "a silent port");
    }
    port_ = ntohs(address.sin_port);
    for (int count = 0; count < 4; ++count) {
        Descriptor client(socket(AF_INET, SOCK_STREAM | SOCK_NONBLOCK | SOCK_CLOEXEC, 0));
        connect(client.get(), any, size);
        waiting_.push_back(std::move(client));
    }
}

}  // namespace kelp_test
