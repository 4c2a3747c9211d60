#ifndef KELP_PRINTER_ZEROED_BUFFER_H
#define KELP_PRINTER_ZEROED_BUFFER_H

#include <cstddef>
#include <cstdlib>
#include <memory>

struct FreeBuffer {
    void operator()(unsigned char* buffer) const { std::free(buffer); }
};

/// Bytes of one page; null where there was no memory.
using ZeroedBuffer = std::unique_ptr<unsigned char, FreeBuffer>;

/// Allocates `size` bytes of 0. Memory that is never touched costs nothing.
ZeroedBuffer allocateZeroed(std::size_t size);

#endif
