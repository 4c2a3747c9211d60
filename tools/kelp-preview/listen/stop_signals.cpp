#include "tools/kelp-preview/listen/stop_signals.h"

#include <sys/signalfd.h>

#include <cerrno>
#include <csignal>
#include <system_error>

namespace kelp_listen {

StopSignals::StopSignals() {
    sigset_t signals;
    sigemptyset(&signals);
    for (const int signal : {SIGINT, SIGTERM, SIGHUP}) {
        sigaddset(&signals, signal);
    }
    sigprocmask(SIG_BLOCK, &signals, nullptr);
    descriptor_ = kelp_preview::Descriptor(signalfd(-1, &signals, SFD_NONBLOCK | SFD_CLOEXEC));
    if (!descriptor_.isOpen()) {
        throw std::system_error(errno, std::generic_category(), "signalfd");
    }
}

bool StopSignals::came() {
    signalfd_siginfo signal{};
    return read(descriptor_.get(), &signal, sizeof signal) == sizeof signal;
}

}  // namespace kelp_listen
