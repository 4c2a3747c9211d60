#include "app/printer_socket.h"

#include <netdb.h>
#include <netinet/in.h>
#include <netinet/tcp.h>
#include <poll.h>
#include <sys/socket.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstddef>
#include <cstring>
#include <functional>
#include <memory>
#include <thread>
#include <utility>

namespace kelp_app {

namespace {

using kelp_preview::Descriptor;
using std::chrono::milliseconds;
using Clock = std::chrono::steady_clock;
using IsPatient = std::function<bool()>;

constexpr milliseconds kConnecting{10000};  // to one address
constexpr milliseconds kUntilNextTry{1000};
constexpr milliseconds kSlice{100};
constexpr std::size_t kMostAnswer = 4096;

struct FreeAddresses {
    void operator()(addrinfo* addresses) const { freeaddrinfo(addresses); }
};
using Addresses = std::unique_ptr<addrinfo, FreeAddresses>;

/// Whether something happened on a descriptor within the time.
bool waitFor(const Descriptor& descriptor, short events, milliseconds time) {
    pollfd entry{descriptor.get(), events, 0};
    return poll(&entry, 1, static_cast<int>(time.count())) > 0;
}

/// A printer that is switched off between two labels must not hold its job forever. In the middle
/// of one the system gives up after a quarter of an hour.
void keepAlive(const Descriptor& connection) {
    const auto set = [&](int level, int option, int value) {
        setsockopt(connection.get(), level, option, &value, sizeof value);
    };
    set(SOL_SOCKET, SO_KEEPALIVE, 1);
    set(IPPROTO_TCP, TCP_KEEPIDLE, 30);
    set(IPPROTO_TCP, TCP_KEEPINTVL, 10);
    set(IPPROTO_TCP, TCP_KEEPCNT, 6);
    // A label is one write; its last piece waits for no acknowledgement.
    set(IPPROTO_TCP, TCP_NODELAY, 1);
}

/// The reason as errno has it.
int errorOf(const Descriptor& connection) {
    int error = 0;
    socklen_t size = sizeof error;
    if (getsockopt(connection.get(), SOL_SOCKET, SO_ERROR, &error, &size) != 0) {
        return errno;
    }
    return error;
}

/// Open where it could be had.
Descriptor connectTo(const addrinfo& address, milliseconds limit, const IsPatient& isPatient,
                     int& error) {
    Descriptor connection(socket(address.ai_family, SOCK_STREAM | SOCK_NONBLOCK | SOCK_CLOEXEC, 0));
    if (!connection.isOpen()) {
        error = errno;
        return {};
    }
    keepAlive(connection);
    if (connect(connection.get(), address.ai_addr, address.ai_addrlen) == 0) {
        return connection;
    }
    error = errno;
    if (error != EINPROGRESS) {
        return {};
    }
    const auto end = Clock::now() + limit;
    for (auto now = Clock::now(); now < end && isPatient(); now = Clock::now()) {
        const auto left = std::chrono::ceil<milliseconds>(end - now);
        if (waitFor(connection, POLLOUT, std::min(kSlice, left))) {
            error = errorOf(connection);
            return error == 0 ? std::move(connection) : Descriptor();
        }
    }
    error = ETIMEDOUT;
    return {};
}

/// Not open, with a reason, where there is none.
Descriptor connectTo(const PrinterAddress& printer, milliseconds limit, const IsPatient& isPatient,
                     std::string& why) {
    const std::string port = std::to_string(printer.port);
    addrinfo wanted{};
    wanted.ai_socktype = SOCK_STREAM;
    addrinfo* found = nullptr;
    if (const int error = getaddrinfo(printer.host.c_str(), port.c_str(), &wanted, &found);
        error != 0) {
        why = gai_strerror(error);
        return {};
    }
    const Addresses addresses(found);
    for (const addrinfo* address = found; address != nullptr; address = address->ai_next) {
        int error = 0;
        Descriptor connection = connectTo(*address, limit, isPatient, error);
        if (connection.isOpen()) {
            return connection;
        }
        why = std::strerror(error);
    }
    return {};
}

/// Whether all bytes went. A printer takes its time: there is no limit but the connection's end.
bool sendAll(const Descriptor& connection, std::string_view bytes) {
    while (!bytes.empty()) {
        const ssize_t count = ::send(connection.get(), bytes.data(), bytes.size(), MSG_NOSIGNAL);
        if (count >= 0) {
            bytes.remove_prefix(static_cast<std::size_t>(count));
        } else if (errno == EAGAIN || errno == EWOULDBLOCK) {
            waitFor(connection, POLLOUT, milliseconds(-1));
        } else if (errno != EINTR) {
            return false;
        }
    }
    return true;
}

}  // namespace

PrinterSocket::PrinterSocket(PrinterAddress address) : address_(std::move(address)) {}

bool PrinterSocket::connect(Sender& sender) {
    const auto isPatient = [&] { return sender.isPatient(); };
    bool isAway = false;
    while (isPatient()) {
        std::string why;
        connection_ = connectTo(address_, kConnecting, isPatient, why);
        if (connection_.isOpen()) {
            sender.isThere();
            return true;
        }
        if (!isAway) {
            isAway = true;
            sender.isAway(why);
        }
        const auto next = Clock::now() + kUntilNextTry;
        while (Clock::now() < next && isPatient()) {
            std::this_thread::sleep_for(kSlice);
        }
    }
    return false;
}

bool PrinterSocket::send(std::string_view bytes, Sender& sender) {
    if (!connection_.isOpen() && !connect(sender)) {
        return false;
    }
    if (!sendAll(connection_, bytes)) {
        connection_.reset();
        return false;
    }
    return true;
}

PrinterAnswer askPrinter(const PrinterAddress& address, std::string_view question, char ends,
                         int parts, milliseconds limit) {
    const auto until = Clock::now() + limit;
    std::string unused;
    const Descriptor connection = connectTo(
        address, limit, [&] { return Clock::now() < until; }, unused);
    PrinterAnswer answer{connection.isOpen(), ""};
    if (!answer.isThere || !sendAll(connection, question)) {
        return answer;
    }
    std::array<char, 512> piece{};
    while (std::count(answer.bytes.begin(), answer.bytes.end(), ends) < parts) {
        const auto left = std::chrono::ceil<milliseconds>(until - Clock::now());
        const ssize_t count = left.count() > 0 && waitFor(connection, POLLIN, left)
                                  ? recv(connection.get(), piece.data(), piece.size(), 0)
                                  : 0;
        if (count <= 0 || answer.bytes.size() > kMostAnswer) {
            answer.bytes.clear();
            return answer;
        }
        answer.bytes.append(piece.data(), static_cast<std::size_t>(count));
    }
    return answer;
}

}  // namespace kelp_app
