#include "printer/zeroed_buffer.h"

#include <sys/mman.h>

#include <cstdint>
#include <cstdlib>

namespace {

/// From here on memory comes from the system: what the C library hands out a second time it has to
/// overwrite with zeros, and it does so for bytes that nobody looks at, too. Sanitizers watch and
/// limit only what it hands out.
#ifdef KELP_BUFFERS_ARE_WATCHED
constexpr std::size_t kLarge = SIZE_MAX;
#else
constexpr std::size_t kLarge = std::size_t{512} * 1024;
#endif

}  // namespace

void FreeBuffer::operator()(unsigned char* buffer) const {
    if (mapped != 0) {
        munmap(buffer, mapped);
    } else {
        std::free(buffer);
    }
}

// A file of its own: a compiler that saw both this and the release would leave out an allocation
// that nobody writes to, and with it the news that there is no memory.
ZeroedBuffer allocateZeroed(std::size_t size) {
    if (size < kLarge) {
        return ZeroedBuffer(static_cast<unsigned char*>(std::calloc(size, 1)));
    }
    void* const bytes =
        mmap(nullptr, size, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
    return {bytes == MAP_FAILED ? nullptr : static_cast<unsigned char*>(bytes), FreeBuffer{size}};
}
