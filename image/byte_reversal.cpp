#include "image/byte_reversal.h"

#include <algorithm>
#include <cstring>

// Eight bytes at a time in a register, which every machine turns round with one instruction.
// Vectors would gain nothing: the page's way to memory and back takes the time.
void reverseBytes(const std::uint8_t* from, std::size_t count, std::uint8_t* to) {
    std::size_t x = 0;
    std::uint64_t word = 0;
#pragma GCC unroll 4
    for (; x + sizeof word <= count; x += sizeof word) {
        std::memcpy(&word, from + x, sizeof word);
        word = __builtin_bswap64(word);
        std::memcpy(to + (count - x - sizeof word), &word, sizeof word);
    }
    std::reverse_copy(from + x, from + count, to);
}
