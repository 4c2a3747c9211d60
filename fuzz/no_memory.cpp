// An allocation of zeroed memory over most_memory fails: pages and images are all
// allocated so, and this is quicker and says less than a sanitizer's own limit.

#include <cstddef>

#include "fuzz/memory_limit.h"

// The linker sends every call of calloc() to the second of these (--wrap).
extern "C" {
void* __real_calloc(std::size_t count, std::size_t size);
void* __wrap_calloc(std::size_t count, std::size_t size);

void* __wrap_calloc(std::size_t count, std::size_t size) {
    if (size != 0 && count > kelp_fuzz::most_memory / size) {
        return nullptr;
    }
    return __real_calloc(count, size);
}
}
