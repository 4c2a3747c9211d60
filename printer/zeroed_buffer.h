#ifndef KELP_PRINTER_ZEROED_BUFFER_H
#define KELP_PRINTER_ZEROED_BUFFER_H

#include <cstddef>
#include <memory>

struct FreeBuffer {
    std::size_t mapped = 0;  ///< bytes, where they came from the system itself
    void operator()(unsigned char* buffer) const;
};

/// Bytes of one page; null where there was no memory.
using ZeroedBuffer = std::unique_ptr<unsigned char, FreeBuffer>;

/// Allocates `size` bytes of 0. Memory that is never touched costs nothing, also where a page
/// before has used as much.
ZeroedBuffer allocateZeroed(std::size_t size);

#endif
