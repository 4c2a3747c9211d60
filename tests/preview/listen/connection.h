#pragma once

#include <string>
#include <string_view>

#include "tests/support/descriptor.h"

namespace kelp_test {

// A TCP connection to this machine.
class Connection {
  public:
    // Throws std::system_error.
    explicit Connection(int port, const std::string& address = "127.0.0.1");

    // False when the other side takes no more.
    bool send(std::string_view bytes) const;
    // The end of stream: nothing more is sent, answers can still come.
    void end() const;
    // Ends the connection so that the other side sees an error.
    void reset();
    // Everything up to the end of the other side's stream; waits for it within a generous limit.
    // Throws std::runtime_error when it does not come. A broken connection ends like any other.
    std::string read_all() const;
    // Whether the other side has ended the connection by now.
    bool is_ended() const;

  private:
    Descriptor socket_;
};

// Sends a job as a spooler does, and waits until the printer closes the connection.
void print_job(int port, std::string_view bytes, const std::string& address = "127.0.0.1");

}  // namespace kelp_test
