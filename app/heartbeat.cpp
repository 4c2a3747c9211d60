#include "app/heartbeat.h"

#include <chrono>
#include <cstdio>
#include <cstdlib>

#include "app/program_name.h"
#include "app/watchdog.h"

namespace kelp_app {

namespace {

constexpr int kSecondsBetween = 1;
/// More than the framework takes for what it does with a lock held: a name looked up on the
/// network, a device connected to, each half a minute.
constexpr std::chrono::minutes kLongest{2};

/// Nothing that would take a lock.
[[noreturn]] void giveUp() {
    std::fprintf(stderr, "%s: The server is locked up, it ends here.\n", kProgramName);
    std::_Exit(EXIT_FAILURE);
}

bool beat(pappl_system_t* system, void* /*unused*/) {
    static Watchdog watchdog(kLongest, giveUp);
    static bool areJobsBegun = false;
    watchdog.feed();
    if (!areJobsBegun) {
        areJobsBegun = true;
        papplSystemIteratePrinters(
            system, [](pappl_printer_t* printer, void* /*unused*/) { papplPrinterResume(printer); },
            nullptr);
    }
    return true;
}

}  // namespace

void keepBeating(pappl_system_t* system) {
    papplSystemAddTimerCallback(system, 0, kSecondsBetween, beat, nullptr);
}

}  // namespace kelp_app
