#pragma once

#include <string>
#include <vector>

#include "tests/spooler/local_port.h"
#include "tests/support/descriptor.h"

namespace kelp_test {

// A port that neither takes a connection nor refuses it.
class SilentPort {
  public:
    SilentPort();
    int port() const { return port_; }
    std::string device() const { return socket_device(port_); }

  private:
    Descriptor listener_;
    int port_;
    std::vector<Descriptor> waiting_;  // as many as the port lets wait
};

}  // namespace kelp_test
