#include "tests/unit/image/allocation_failure.h"

#include <cstdlib>
#include <limits>
#include <new>

namespace {

constexpr std::size_t kNever = std::numeric_limits<std::size_t>::max();
std::size_t refuseFrom = kNever;
std::size_t grants = 0;
std::size_t refusals = 0;

bool isRefused(std::size_t bytes) {
    if (bytes < refuseFrom) {
        return false;
    }
    if (grants > 0) {
        --grants;
        return false;
    }
    ++refusals;
    return true;
}

}  // namespace

extern "C" {
void* __real_malloc(std::size_t size);
void* __real_calloc(std::size_t count, std::size_t size);
void* __wrap_malloc(std::size_t size);
void* __wrap_calloc(std::size_t count, std::size_t size);

void* __wrap_malloc(std::size_t size) {
    return isRefused(size) ? nullptr : __real_malloc(size);
}

void* __wrap_calloc(std::size_t count, std::size_t size) {
    return isRefused(count * size) ? nullptr : __real_calloc(count, size);
}
}

void* operator new(std::size_t size) {
    void* block = isRefused(size) ? nullptr : __real_malloc(size == 0 ? 1 : size);
    if (block == nullptr) {
        throw std::bad_alloc();
    }
    return block;
}

// A sanitizer's own array forms would not come through the plain ones.
void* operator new[](std::size_t size) {
    return operator new(size);
}

void operator delete(void* block) noexcept {
    std::free(block);
}

void operator delete(void* block, std::size_t) noexcept {
    std::free(block);
}

void operator delete[](void* block) noexcept {
    std::free(block);
}

void operator delete[](void* block, std::size_t) noexcept {
    std::free(block);
}

namespace kelp_test {

AllocationFailure::AllocationFailure(std::size_t bytes, std::size_t granted) {
    refuseFrom = bytes;
    grants = granted;
    refusals = 0;
}

AllocationFailure::~AllocationFailure() {
    refuseFrom = kNever;
}

std::size_t AllocationFailure::refused() const {
    return refusals;
}

}  // namespace kelp_test
