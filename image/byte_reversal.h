#ifndef KELP_IMAGE_BYTE_REVERSAL_H
#define KELP_IMAGE_BYTE_REVERSAL_H

#include <cstddef>
#include <cstdint>

/// Writes `count` bytes in the opposite order; the two rows do not overlap.
void reverseBytes(const std::uint8_t* from, std::size_t count, std::uint8_t* to);

#endif
