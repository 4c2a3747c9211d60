#ifndef KELP_IMAGE_DIFFUSION_STREAMS_H
#define KELP_IMAGE_DIFFUSION_STREAMS_H

#include <array>
#include <cstddef>

#include "image/diffusion_kernels.h"

/// What a kernel's table of taps means when many rows run side by side, each kLag columns behind
/// the one above it: which products are worked out in a step, and when they are received.
namespace diffusion {

/// A row needs the row above at up to kReach columns further on; one column more leaves time.
constexpr std::size_t kLag = kReach + 1;

/// Which weights a kernel has, each once.
template <std::size_t N>
struct Weights {
    std::size_t count = 0;
    std::array<int, N> list{};

    constexpr explicit Weights(const Kernel<N>& kernel) {
        for (const Tap& tap : kernel.taps) {
            if (indexOf(tap.weight) == count) {
                list[count++] = tap.weight;
            }
        }
    }
    constexpr std::size_t indexOf(int weight) const {
        std::size_t i = 0;
        while (i < count && list[i] != weight) {
            ++i;
        }
        return i;
    }
};

template <const auto& kernel>
inline constexpr Weights kWeights{kernel};

/// After how many steps a tap's term is received.
constexpr std::size_t delayOf(const Tap& tap) {
    const int delay = tap.dy * static_cast<int>(kLag) + tap.dx;
    return static_cast<std::size_t>(delay);
}

/// Terms of the last steps stay in registers: their way through memory would be felt.
constexpr std::size_t kRecent = 2;

/// The taps of one weight to one row take their terms from one stream.
template <std::size_t N>
struct Streams {
    struct Stream {
        int dy;
        int weight;
        bool inMemory;  // some term is needed after more than kRecent steps
    };
    std::size_t count = 0;
    std::array<Stream, N> list{};

    constexpr explicit Streams(const Kernel<N>& kernel) {
        for (const Tap& tap : kernel.taps) {
            const std::size_t i = indexOf(tap);
            if (i == count) {
                list[count++] = {tap.dy, tap.weight, false};
            }
            list[i].inMemory = list[i].inMemory || delayOf(tap) > kRecent;
        }
    }
    constexpr std::size_t indexOf(const Tap& tap) const {
        std::size_t i = 0;
        while (i < count && (list[i].dy != tap.dy || list[i].weight != tap.weight)) {
            ++i;
        }
        return i;
    }
};

}  // namespace diffusion

#endif
