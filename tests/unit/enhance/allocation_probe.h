#pragma once

#include <gtest/gtest.h>

#include <cstddef>
#include <new>

namespace kelp_test {

/// Blocks that operator new has given out and operator delete has not taken back.
std::size_t liveBlocks();

/// While it lives, the allocation of this number (0 is the next one) fails, and only that one.
class FailingAllocation {
  public:
    explicit FailingAllocation(std::size_t number);
    ~FailingAllocation();
    FailingAllocation(const FailingAllocation&) = delete;
    FailingAllocation& operator=(const FailingAllocation&) = delete;

    /// Whether it came to that.
    bool hasFailed() const;
};

/// Runs `work` once for each of its allocations, with that one failing: it must throw
/// std::bad_alloc and leave no block behind.
/// @return the number of its allocations
template <typename Work>
std::size_t failEachAllocation(Work work);

}  // namespace kelp_test

template <typename Work>
std::size_t kelp_test::failEachAllocation(Work work) {
    for (std::size_t number = 0;; ++number) {
        const std::size_t before = liveBlocks();
        bool thrown = false;
        bool failed = false;
        {
            const FailingAllocation failing(number);
            try {
                work();
            } catch (const std::bad_alloc&) {
                thrown = true;
            }
            failed = failing.hasFailed();
        }
        EXPECT_EQ(thrown, failed) << "allocation " << number;
        EXPECT_EQ(liveBlocks(), before) << "allocation " << number;
        if (!failed) {
            return number;
        }
    }
}
