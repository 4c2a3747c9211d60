#include "printer/zeroed_buffer.h"

// A file of its own: a compiler that saw both this and the release would leave out an allocation
// that nobody writes to, and with it the news that there is no memory.
ZeroedBuffer allocateZeroed(std::size_t size) {
    return ZeroedBuffer(static_cast<unsigned char*>(std::calloc(size, 1)));
}
