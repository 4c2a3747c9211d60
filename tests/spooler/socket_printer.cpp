#include "tests/spooler/socket_printer.h"

#include <fcntl.h>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <system_error>
#include <utility>

#include "tests/spooler/local_port.h"

namespace kelp_test {
namespace {

[[noreturn]] void fail(const char* what) {
    throw std::system_error(errno, std::generic_category(), what);
}

// Small, so that a sender notices soon when nobody reads.
constexpr int receive_buffer = 4096;

// A socket keeps its port over a pause only if it asked for that port, so a free one is found
// first.
Descriptor open_listener() {
    for (int attempt = 0; attempt < 100; ++attempt) {
        const int port = port_of(bound_to_any_port());
        Descriptor listener = bound_to(port);
        if (listener.is_open() &&
            setsockopt(listener.get(), SOL_SOCKET, SO_RCVBUF, &receive_buffer,
                       sizeof receive_buffer) == 0 &&
            listen(listener.get(), 16) == 0) {
            return listener;
        }
    }
    fail("listen");
}

// Drops a connection at once: the sender's next byte fails.
void reset_connection(Descriptor& connection) {
    const linger at_once{1, 0};
    setsockopt(connection.get(), SOL_SOCKET, SO_LINGER, &at_once, sizeof at_once);
    connection.reset();
}

// True when there is something to do on the descriptor, false when the object is to stop.
bool wait_for_input(const Descriptor& descriptor, const Descriptor& stop) {
    std::array<pollfd, 2> events{{{descriptor.get(), POLLIN, 0}, {stop.get(), POLLIN, 0}}};
    while (poll(events.data(), events.size(), -1) < 0) {
        if (errno != EINTR) {
            return false;
        }
    }
    return events[1].revents == 0;
}

}  // namespace

SocketPrinter::SocketPrinter() : listener_(open_listener()), port_(port_of(listener_)) {
    std::array<int, 2> ends{};
    if (pipe2(ends.data(), O_CLOEXEC) != 0) {
        fail("pipe");
    }
    stop_reader_ = Descriptor(ends[0]);
    stop_writer_ = Descriptor(ends[1]);
    thread_ = std::thread([this] { serve(); });
}

SocketPrinter::~SocketPrinter() {
    {
        const std::lock_guard lock(mutex_);
        stopping_ = true;
    }
    changed_.notify_all();
    stop_writer_.reset();
    thread_.join();
}

std::string SocketPrinter::device() const {
    return socket_device(port_);
}

std::vector<SocketPrinter::Connection> SocketPrinter::connections() const {
    const std::lock_guard lock(mutex_);
    return connections_;
}

std::vector<std::string> SocketPrinter::received() const {
    std::vector<std::string> result;
    for (const Connection& connection : connections()) {
        if (connection.ended) {
            result.push_back(connection.bytes);
        }
    }
    return result;
}

void SocketPrinter::stall_after(std::size_t bytes) {
    {
        const std::lock_guard lock(mutex_);
        stall_limit_ = bytes;
    }
    changed_.notify_all();
}

void SocketPrinter::go_on() {
    {
        const std::lock_guard lock(mutex_);
        stall_limit_ = no_limit;
    }
    changed_.notify_all();
}

bool SocketPrinter::is_stalled() const {
    const std::lock_guard lock(mutex_);
    return stalled_;
}

void SocketPrinter::go_away_after(std::size_t bytes) {
    const std::lock_guard lock(mutex_);
    away_limit_ = bytes;
}

bool SocketPrinter::is_away() const {
    const std::lock_guard lock(mutex_);
    return away_;
}

void SocketPrinter::come_back() {
    {
        const std::lock_guard lock(mutex_);
        away_limit_ = no_limit;
        away_ = false;
        // A socket that was shut down keeps its port and can listen anew.
        if (listen(listener_.get(), 16) != 0) {
            fail("listen");
        }
    }
    changed_.notify_all();
}

// While stalled, waits; false when the object is to stop.
bool SocketPrinter::wait_for_permission() {
    std::unique_lock lock(mutex_);
    const Connection& current = connections_.back();
    stalled_ = current.bytes.size() >= stall_limit_;
    changed_.wait(lock, [&] { return stopping_ || current.bytes.size() < stall_limit_; });
    stalled_ = false;
    return !stopping_;
}

void SocketPrinter::take(Descriptor connection) {
    std::array<char, 4096> buffer;
    while (wait_for_permission() && wait_for_input(connection, stop_reader_)) {
        const ssize_t count = read(connection.get(), buffer.data(), buffer.size());
        const std::lock_guard lock(mutex_);
        Connection& current = connections_.back();
        if (count <= 0) {
            current.ended = count == 0;
            return;
        }
        if (current.bytes.empty()) {
            current.began = std::chrono::steady_clock::now();
        }
        current.bytes.append(buffer.data(), static_cast<std::size_t>(count));
        if (current.bytes.size() >= away_limit_) {
            shutdown(listener_.get(), SHUT_RDWR);
            reset_connection(connection);
            away_ = true;
            return;
        }
    }
}

void SocketPrinter::serve() {
    while (true) {
        {
            std::unique_lock lock(mutex_);
            changed_.wait(lock, [this] { return stopping_ || !away_; });
            if (stopping_) {
                return;
            }
        }
        if (!wait_for_input(listener_, stop_reader_)) {
            return;
        }
        Descriptor connection(accept4(listener_.get(), nullptr, nullptr, SOCK_CLOEXEC));
        if (connection.is_open()) {
            {
                const std::lock_guard lock(mutex_);
                connections_.emplace_back();
            }
            take(std::move(connection));
            const std::lock_guard lock(mutex_);
            connections_.back().closed = true;
        }
    }
}

}  // namespace kelp_test
