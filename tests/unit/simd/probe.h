#pragma once

#include <cstdint>

namespace kelp_test {

// A kernel that tells which vector target it was compiled for and dispatched to.
std::int64_t dispatched_target();

}  // namespace kelp_test
