#ifndef KELP_ENHANCE_ROW_SOURCE_H
#define KELP_ENHANCE_ROW_SOURCE_H

#include <cstdint>
#include <functional>

/// Writes row y of a one-channel image. Whoever takes one asks for every row once, from the top, so
/// that one stage hands its rows to the next while they are still near the processor.
using RowSource = std::function<void(std::int32_t y, unsigned char* row)>;

#endif
