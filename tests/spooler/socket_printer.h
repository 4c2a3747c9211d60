#pragma once

#include <chrono>
#include <condition_variable>
#include <cstddef>
#include <limits>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

#include "tests/support/descriptor.h"

namespace kelp_test {

// A printer on a port of this machine. It takes one connection after the other and keeps what each
// one brings.
class SocketPrinter {
  public:
    struct Connection {
        std::string bytes;
        std::chrono::steady_clock::time_point began;  // when the first of them came
        bool ended = false;                           // by the sender, after its last byte
        bool closed = false;                          // for whatever reason
    };

    SocketPrinter();
    ~SocketPrinter();
    SocketPrinter(const SocketPrinter&) = delete;
    SocketPrinter& operator=(const SocketPrinter&) = delete;

    std::string device() const;
    int port() const { return port_; }

    // Everything that was sent so far, one connection each.
    std::vector<Connection> connections() const;
    // The bytes of the connections that came to their end.
    std::vector<std::string> received() const;

    // Takes only so many bytes of a connection, then reads no more until told to go on, or to take
    // more.
    void stall_after(std::size_t bytes);
    void go_on();
    bool is_stalled() const;

    // Takes only so many bytes, then drops the connection and refuses every other.
    void go_away_after(std::size_t bytes);
    bool is_away() const;
    // Takes connections again, on the same port.
    void come_back();

  private:
    static constexpr std::size_t no_limit = std::numeric_limits<std::size_t>::max();

    void serve();
    void take(Descriptor connection);
    bool wait_for_permission();

    Descriptor listener_;
    Descriptor stop_reader_;
    Descriptor stop_writer_;
    int port_ = 0;
    mutable std::mutex mutex_;
    std::condition_variable changed_;
    std::vector<Connection> connections_;
    std::size_t stall_limit_ = no_limit;
    std::size_t away_limit_ = no_limit;
    bool stalled_ = false;
    bool away_ = false;
    bool stopping_ = false;
    std::thread thread_;
};

}  // namespace kelp_test
