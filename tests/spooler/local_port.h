#pragma once

#include <netinet/in.h>

#include <string>

#include "tests/support/descriptor.h"

namespace kelp_test {

sockaddr_in local_address(int port);

// A stream socket that has a port of this machine; not open where somebody else has it. Nobody
// listens on it yet.
Descriptor bound_to(int port);
// A port that was free.
Descriptor bound_to_any_port();
int port_of(const Descriptor& bound);

// As a device on the port.
std::string socket_device(int port);

}  // namespace kelp_test
