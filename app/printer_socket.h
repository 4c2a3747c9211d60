#ifndef KELP_APP_PRINTER_SOCKET_H
#define KELP_APP_PRINTER_SOCKET_H

#include <chrono>
#include <string>
#include <string_view>

#include "preview/descriptor.h"

namespace kelp_app {

/// Where a printer listens. Nothing is looked up until somebody connects.
struct PrinterAddress {
    std::string host;  ///< a name or an address
    int port;
};

/// A sender, while a printer is not there.
class Sender {
  public:
    Sender() = default;
    Sender(const Sender&) = delete;
    Sender& operator=(const Sender&) = delete;
    virtual ~Sender() = default;
    /// Whether it still wants to send; asked several times a second.
    virtual bool isPatient() = 0;
    /// Told once that the printer is not there, and why.
    virtual void isAway(const std::string& why) = 0;
    /// Told of each connection that is made.
    virtual void isThere() = 0;
};

/// The port of a printer, connected to when there is something to send and by the thread that
/// sends. One thread at a time.
class PrinterSocket {
  public:
    explicit PrinterSocket(PrinterAddress address);

    /// Sends all bytes; a printer that is not there is tried again and again. False where the
    /// sender has lost its patience, or the connection broke: nobody knows how much of what was
    /// sent has arrived. The next call connects anew.
    bool send(std::string_view bytes, Sender& sender);

    /// Whether it has a connection: what is sent next goes at once.
    bool isConnected() const { return connection_.isOpen(); }

  private:
    bool connect(Sender& sender);

    PrinterAddress address_;
    kelp_preview::Descriptor connection_;
};

struct PrinterAnswer {
    bool isThere = false;  ///< the printer
    std::string bytes;     ///< empty where not all of it came in time
};

/// Sends a printer a question over a connection of its own and waits for the answer.
/// @param ends of the answer's parts, as many as `parts`
/// @param limit for all of it
PrinterAnswer askPrinter(const PrinterAddress& address, std::string_view question, char ends,
                         int parts, std::chrono::milliseconds limit);

}  // namespace kelp_app

#endif
