#include "tests/unit/enhance/allocation_probe.h"

#include <cstdlib>
#include <limits>
#include <new>

namespace {

constexpr std::size_t kNever = std::numeric_limits<std::size_t>::max();
std::size_t untilFailure = kNever;
bool failed = false;
std::size_t live = 0;

}  // namespace

void* operator new(std::size_t size) {
    if (untilFailure != kNever && untilFailure-- == 0) {
        untilFailure = kNever;
        failed = true;
        throw std::bad_alloc();
    }
    void* block = std::malloc(size == 0 ? 1 : size);
    if (block == nullptr) {
        throw std::bad_alloc();
    }
    ++live;
    return block;
}

// A sanitizer's own array forms would not come through the plain ones.
void* operator new[](std::size_t size) {
    return operator new(size);
}

void operator delete(void* block) noexcept {
    if (block != nullptr) {
        --live;
        std::free(block);
    }
}

void operator delete(void* block, std::size_t) noexcept {
    operator delete(block);
}

void operator delete[](void* block) noexcept {
    operator delete(block);
}

void operator delete[](void* block, std::size_t) noexcept {
    operator delete(block);
}

namespace kelp_test {

std::size_t liveBlocks() {
    return live;
}

FailingAllocation::FailingAllocation(std::size_t number) {
    untilFailure = number;
    failed = false;
}

FailingAllocation::~FailingAllocation() {
    untilFailure = kNever;
}

bool FailingAllocation::hasFailed() const {
    return failed;
}

}  // namespace kelp_test
