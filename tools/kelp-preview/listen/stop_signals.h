#ifndef KELP_TOOLS_KELP_PREVIEW_LISTEN_STOP_SIGNALS_H
#define KELP_TOOLS_KELP_PREVIEW_LISTEN_STOP_SIGNALS_H

#include "preview/descriptor.h"

namespace kelp_listen {

/// From here on SIGINT, SIGTERM and SIGHUP do not end the process: they can be polled for. A signal
/// that was ignored stays so.
class StopSignals {
  public:
    /// Throws std::system_error.
    StopSignals();

    int descriptor() const { return descriptor_.get(); }
    /// Whether one came since this was asked last.
    bool came();

  private:
    kelp_preview::Descriptor descriptor_;
};

}  // namespace kelp_listen

#endif
