#ifndef KELP_TOOLS_KELP_PREVIEW_LISTEN_LISTEN_OPTIONS_H
#define KELP_TOOLS_KELP_PREVIEW_LISTEN_LISTEN_OPTIONS_H

#include <cstddef>
#include <cstdint>
#include <string>

#include "preview/stream_decoder.h"

namespace kelp_listen {

struct ReceiverLimits {
    std::size_t connections = 16;  ///< at a time; more wait in line
    std::uint64_t jobBytes = 64 << 20;
    std::uint32_t idleSeconds = 60;  ///< that a sender may be silent
};

/// Beyond these the rest of a job is not drawn; its stream is stored in any case.
struct DrawingLimits {
    std::uint64_t maxDots = kelp_preview::DecoderLimits{}.maxDots;  ///< of a label
    std::uint64_t jobDots = kelp_preview::kMostDots;                ///< of a job's labels together
    std::size_t labels = 1000;                                      ///< of a job
    std::size_t textBytes = 1 << 20;  ///< of a job's descriptions, which stay in memory
};

struct ListenOptions {
    std::string address = "127.0.0.1";
    std::uint16_t port = 9100;
    std::string webAddress = "127.0.0.1";
    std::uint16_t webPort = 9180;
    std::string folder = "kelp-jobs";
    std::size_t keep = 100;  ///< jobs
    ReceiverLimits receiver;
    DrawingLimits drawing;
};

}  // namespace kelp_listen

#endif
