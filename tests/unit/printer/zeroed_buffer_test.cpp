#include "printer/zeroed_buffer.h"

#include <gtest/gtest.h>

#include <sys/mman.h>
#include <unistd.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <vector>

namespace kelp_test {
namespace {

TEST(ZeroedBuffer, IsZeroWhereOtherBytesWereBefore) {
    for (const std::size_t size : {16U, 100U, 1000U, 5000U, 50'000U, 5'000'000U}) {
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

// A page's buffers are made anew for every page, and not all of their bytes are used.
TEST(ZeroedBuffer, TakesNoMemoryForWhatIsNotTouchedAfterOthersUsedAsMuch) {
    constexpr std::size_t size = 4'000'000;
    for (int i = 0; i < 4; ++i) {
        void* const used = std::malloc(size);
        ASSERT_NE(used, nullptr);
        std::memset(used, 0xA5, size);
        std::free(used);
    }
    const ZeroedBuffer buffer = allocateZeroed(size);
    ASSERT_NE(buffer, nullptr);
    const auto page = static_cast<std::size_t>(sysconf(_SC_PAGESIZE));
    // Whole pages within the buffer.
    unsigned char* const first =
        buffer.get() + (page - reinterpret_cast<std::uintptr_t>(buffer.get()) % page) % page;
    std::vector<unsigned char> resident(size / page - 1);
    ASSERT_EQ(mincore(first, resident.size() * page, resident.data()), 0);
    EXPECT_EQ(std::count(resident.begin(), resident.end(), 0),
              static_cast<std::ptrdiff_t>(resident.size()));
}

TEST(ZeroedBuffer, IsNullWhereThereIsNoMemory) {
    EXPECT_EQ(allocateZeroed(std::size_t{1} << 62), nullptr);
}

}  // namespace
}  // namespace kelp_test
