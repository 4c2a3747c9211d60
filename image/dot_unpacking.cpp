#include <cstring>

#include "image/dot_packing.h"

namespace {

using EightDots = std::array<std::uint8_t, 8>;

constexpr std::array<EightDots, 256> dotsOfBytes() {
    std::array<EightDots, 256> table{};
    for (unsigned byte = 0; byte < 256; ++byte) {
        for (unsigned i = 0; i < 8; ++i) {
            table[byte][i] = static_cast<std::uint8_t>((byte >> (7 - i)) & 1);
        }
    }
    return table;
}

constexpr std::array<EightDots, 256> kDotsOfBytes = dotsOfBytes();

}  // namespace

void unpackDots(const std::uint8_t* packed, std::size_t width, std::uint8_t* values) {
    const std::size_t whole = width / 8;
    for (std::size_t i = 0; i < whole; ++i) {
        std::memcpy(values + 8 * i, kDotsOfBytes[packed[i]].data(), 8);
    }
    if (width % 8 != 0) {
        std::memcpy(values + 8 * whole, kDotsOfBytes[packed[whole]].data(), width % 8);
    }
}
