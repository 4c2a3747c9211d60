#ifndef KELP_APP_SOCKET_DEVICE_H
#define KELP_APP_SOCKET_DEVICE_H

#include <pappl/pappl.h>

#include <optional>

#include "app/printer_socket.h"

namespace kelp_app {

// Printers on a port of the network, "socket://HOST:PORT". The framework (1.3) connects to one
// under the printer's lock and waits up to half a minute for it: a printer that is switched off
// would hold up whoever asks for its state, and in the end the server. So it is given devices of
// our own, "kelpip://HOST:PORT", which are opened at once and connected to by the thread that
// sends.

/// Makes the devices known; before any printer is made.
void addSocketDevices();

/// Turns a printer of the framework's sockets, when it is made, into one of ours.
void useOwnSocket(pappl_printer_t* printer);

/// Where such a device's printer listens; none for another kind of device.
std::optional<PrinterAddress> addressOf(const char* deviceUri);

/// The connection of a printer's open device; null for another kind of device.
PrinterSocket* socketOf(pappl_printer_t* printer, pappl_device_t* device);

}  // namespace kelp_app

#endif
