#include "app/printer_status.h"

#include <chrono>
#include <map>
#include <mutex>
#include <optional>
#include <system_error>
#include <thread>
#include <utility>

#include "app/host_status.h"
#include "app/printer_socket.h"
#include "app/socket_device.h"

namespace kelp_app {

namespace {

using Clock = std::chrono::steady_clock;

constexpr std::chrono::milliseconds kAnswering{300};
constexpr std::chrono::seconds kBetween{1};
constexpr std::chrono::seconds kUntilItMayBeThere{10};
constexpr std::chrono::minutes kUntilItMayAnswer{10};

struct Reasons {
    pappl_preason_t added = PAPPL_PREASON_NONE;
    pappl_preason_t removed = PAPPL_PREASON_NONE;
};

/// What is known of a printer.
struct Look {
    bool isAsked = false;  ///< at the moment
    Clock::time_point next;
    std::optional<Reasons> reasons;  ///< not yet taken over
};

bool arePrintersAsked = true;

/// The threads that ask may outlive everything else.
struct Looks {
    std::mutex mutex;
    std::map<int, Look> ofPrinters;
};
Looks& looks() {
    static auto& forever = *new Looks;
    return forever;
}

void note(Look& look, const PrinterAnswer& answer) {
    look.isAsked = false;
    const auto now = Clock::now();
    if (!answer.isThere) {
        look.reasons = Reasons{PAPPL_PREASON_OFFLINE, kStatusReasons};
        look.next = now + kUntilItMayBeThere;
    } else if (const auto reasons = reasonsOf(answer.bytes)) {
        look.reasons = Reasons{*reasons, (kStatusReasons & ~*reasons) | PAPPL_PREASON_OFFLINE};
        look.next = now + kBetween;
    } else {
        look.reasons = Reasons{PAPPL_PREASON_NONE, kStatusReasons | PAPPL_PREASON_OFFLINE};
        look.next = now + kUntilItMayAnswer;
    }
}

/// In a thread of its own, which knows nothing of the framework: the printer may be gone by then.
void ask(int printer, const PrinterAddress& address) {
    PrinterAnswer answer;
    try {
        answer = askPrinter(address, kStatusQuestion, kStatusLineEnd, kStatusLines, kAnswering);
    } catch (const std::bad_alloc&) {
        answer = {true, ""};
    }
    const std::lock_guard lock(looks().mutex);
    note(looks().ofPrinters[printer], answer);
}

/// What has been found out since the last look. Begins to ask anew where it is time to.
std::optional<Reasons> renew(int printer, const char* deviceUri) {
    const std::lock_guard lock(looks().mutex);
    Look& look = looks().ofPrinters[printer];
    const std::optional<Reasons> found = std::exchange(look.reasons, std::nullopt);
    if (!look.isAsked && Clock::now() >= look.next) {
        if (const auto address = addressOf(deviceUri)) {
            std::thread(ask, printer, *address).detach();
            look.isAsked = true;
        }
    }
    return found;
}

}  // namespace

void askPrinters(bool areAsked) {
    arePrintersAsked = areAsked;
}

bool lookAtPrinter(pappl_printer_t* printer) {
    if (!arePrintersAsked) {
        return true;
    }
    try {
        if (const std::optional<Reasons> found =
                renew(papplPrinterGetID(printer), papplPrinterGetDeviceURI(printer))) {
            papplPrinterSetReasons(printer, found->added, found->removed);
        }
    } catch (const std::bad_alloc&) {
        papplLogPrinter(printer, PAPPL_LOGLEVEL_ERROR, "Out of memory, its state stays unknown.");
    } catch (const std::system_error& error) {
        papplLogPrinter(printer, PAPPL_LOGLEVEL_ERROR, "Its state stays unknown: %s.",
                        error.what());
    }
    return true;
}

}  // namespace kelp_app
