#include "tests/preview/listen/connection.h"

#include <netdb.h>
#include <poll.h>
#include <sys/socket.h>

#include <array>
#include <cerrno>
#include <memory>
#include <stdexcept>
#include <system_error>

namespace kelp_test {

Connection::Connection(int port, const std::string& address) {
    addrinfo hints{};
    hints.ai_socktype = SOCK_STREAM;
    hints.ai_flags = AI_NUMERICHOST | AI_NUMERICSERV;
    addrinfo* found = nullptr;
    if (getaddrinfo(address.c_str(), std::to_string(port).c_str(), &hints, &found) != 0) {
        throw std::runtime_error("no address: " + address);
    }
    const std::unique_ptr<addrinfo, void (*)(addrinfo*)> owner(found, freeaddrinfo);
    socket_ = Descriptor(socket(found->ai_family, SOCK_STREAM | SOCK_CLOEXEC, 0));
    if (connect(socket_.get(), found->ai_addr, found->ai_addrlen) != 0) {
        throw std::system_error(errno, std::generic_category(), "connect");
    }
}

bool Connection::send(std::string_view bytes) const {
    while (!bytes.empty()) {
        const ssize_t count = ::send(socket_.get(), bytes.data(), bytes.size(), MSG_NOSIGNAL);
        if (count <= 0) {
            return false;
        }
        bytes.remove_prefix(static_cast<std::size_t>(count));
    }
    return true;
}

void Connection::end() const {
    shutdown(socket_.get(), SHUT_WR);
}

void Connection::reset() {
    const linger at_once{1, 0};
    setsockopt(socket_.get(), SOL_SOCKET, SO_LINGER, &at_once, sizeof at_once);
    socket_.reset();
}

std::string Connection::read_all() const {
    std::string all;
    std::array<char, 65536> buffer;
    while (true) {
        pollfd event{socket_.get(), POLLIN, 0};
        if (poll(&event, 1, 60'000) <= 0) {
            throw std::runtime_error("the other side does not end the connection");
        }
        const ssize_t count = recv(socket_.get(), buffer.data(), buffer.size(), 0);
        if (count <= 0) {
            return all;
        }
        all.append(buffer.data(), static_cast<std::size_t>(count));
    }
}

bool Connection::is_ended() const {
    pollfd event{socket_.get(), POLLIN, 0};
    return poll(&event, 1, 0) > 0;
}

void print_job(int port, std::string_view bytes, const std::string& address) {
    const Connection connection(port, address);
    if (!connection.send(bytes)) {
        throw std::runtime_error("the printer does not take the job");
    }
    connection.end();
    connection.read_all();
}

}  // namespace kelp_test
