#include "printer/zeroed_buffer.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <cstring>

namespace kelp_test {
namespace {

TEST(ZeroedBuffer, IsZeroWhereOtherBytesWereBefore) {
    for (const std::size_t size : {16U, 100U, 1000U, 5000U, 50'000U}) {
        // Memory of this size that was used and given back is the first to be handed out again.
        for (int i = 0; i < 4; ++i) {
            const ZeroedBuffer used = allocateZeroed(size);
            std::memset(used.get(), 0xA5, size);
        }
        const ZeroedBuffer buffer = allocateZeroed(size);
        ASSERT_NE(buffer, nullptr);
        EXPECT_TRUE(std::all_of(buffer.get(), buffer.get() + size, [](unsigned char byte) {
            return byte == 0;
        })) << size;
    }
}

TEST(ZeroedBuffer, IsNullWhereThereIsNoMemory) {
    EXPECT_EQ(allocateZeroed(std::size_t{1} << 62), nullptr);
}

}  // namespace
}  // namespace kelp_test
