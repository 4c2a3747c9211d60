#pragma once

#include <cstdint>

namespace kelp_fuzz {

// A program with no_memory.cpp has no zeroed memory of more bytes.
constexpr std::uint64_t most_memory = 8 << 20;

}  // namespace kelp_fuzz
