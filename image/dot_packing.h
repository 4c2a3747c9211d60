#ifndef KELP_IMAGE_DOT_PACKING_H
#define KELP_IMAGE_DOT_PACKING_H

#include <array>
#include <cstddef>
#include <cstdint>

/// What each pixel of a row is compared with; columns take turns.
using DotLimits = std::array<std::uint8_t, 4>;

/// Makes a row of bits from a row of bytes: 1 where value x is greater than limits[x % 4].
///
/// @param values `width` bytes
/// @param packed takes (width + 7) / 8 bytes, most significant bit first, unused low bits 0; may
///   begin where `values` does, or before
void packDots(const std::uint8_t* values, std::size_t width, const DotLimits& limits,
              std::uint8_t* packed);

/// Makes a row of bytes, 0 and 1, from a row of bits as packDots makes them.
///
/// @param packed (width + 7) / 8 bytes
/// @param values takes `width` bytes, which do not overlap with `packed`
void unpackDots(const std::uint8_t* packed, std::size_t width, std::uint8_t* values);

#endif
