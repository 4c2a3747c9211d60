#include "tools/kelp-preview/listen/listening_socket.h"

#include <netdb.h>
#include <netinet/in.h>

#include <array>
#include <cerrno>
#include <memory>
#include <stdexcept>
#include <system_error>

namespace kelp_listen {
namespace {

/// Connections that wait for their turn.
constexpr int kBacklog = 64;

std::string join(const std::string& host, std::uint16_t port) {
    const bool v6 = host.find(':') != std::string::npos;
    return (v6 ? "[" + host + "]" : host) + ":" + std::to_string(port);
}

std::uint16_t portOf(const sockaddr_storage& address) {
    return ntohs(address.ss_family == AF_INET6
                     ? reinterpret_cast<const sockaddr_in6&>(address).sin6_port
                     : reinterpret_cast<const sockaddr_in&>(address).sin_port);
}

bool isLoopback(const sockaddr_storage& address) {
    if (address.ss_family == AF_INET6) {
        const in6_addr& v6 = reinterpret_cast<const sockaddr_in6&>(address).sin6_addr;
        return IN6_IS_ADDR_LOOPBACK(&v6);
    }
    const in_addr v4 = reinterpret_cast<const sockaddr_in&>(address).sin_addr;
    return ntohl(v4.s_addr) >> 24 == 127;
}

void setOption(int socket, int level, int option) {
    const int on = 1;
    setsockopt(socket, level, option, &on, sizeof on);
}

}  // namespace

std::string numericHost(const sockaddr_storage& address, socklen_t length) {
    std::array<char, NI_MAXHOST> host{};
    const int error = getnameinfo(reinterpret_cast<const sockaddr*>(&address), length, host.data(),
                                  host.size(), nullptr, 0, NI_NUMERICHOST);
    return error == 0 ? host.data() : "unknown";
}

ListeningSocket listenOn(const std::string& address, std::uint16_t port) {
    addrinfo hints{};
    hints.ai_family = AF_UNSPEC;
    hints.ai_socktype = SOCK_STREAM;
    hints.ai_flags = AI_NUMERICHOST | AI_NUMERICSERV | AI_PASSIVE;
    addrinfo* found = nullptr;
    if (address.empty() ||
        getaddrinfo(address.c_str(), std::to_string(port).c_str(), &hints, &found) != 0) {
        throw std::runtime_error("no IP address: " + address);
    }
    const std::unique_ptr<addrinfo, void (*)(addrinfo*)> owner(found, freeaddrinfo);

    const auto fail = [&] {
        throw std::system_error(errno, std::generic_category(), join(address, port));
    };
    ListeningSocket result;
    result.descriptor = kelp_preview::Descriptor(
        socket(found->ai_family, SOCK_STREAM | SOCK_NONBLOCK | SOCK_CLOEXEC, found->ai_protocol));
    const int number = result.descriptor.get();
    if (number < 0) {
        fail();
    }
    // Connections of an earlier run that fade away do not keep the port.
    setOption(number, SOL_SOCKET, SO_REUSEADDR);
    if (found->ai_family == AF_INET6) {
        setOption(number, IPPROTO_IPV6, IPV6_V6ONLY);
    }
    sockaddr_storage bound{};
    socklen_t length = sizeof bound;
    if (bind(number, found->ai_addr, found->ai_addrlen) != 0 || listen(number, kBacklog) != 0 ||
        getsockname(number, reinterpret_cast<sockaddr*>(&bound), &length) != 0) {
        fail();
    }
    result.host = numericHost(bound, length);
    result.name = join(result.host, portOf(bound));
    result.loopback = isLoopback(bound);
    return result;
}

}  // namespace kelp_listen
