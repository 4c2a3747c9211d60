#include <gtest/gtest.h>

#include <new>
#include <stdexcept>

#include "enhance/error_diffusion.h"
#include "enhance/gaussian.h"
#include "enhance/tattoo.h"
#include "enhance/tq_image.h"
#include "tests/unit/enhance/allocation_probe.h"
#include "tests/unit/enhance/grey_image.h"

// Whichever allocation of an operation fails, it throws and releases what it had made so far.

namespace {

using namespace kelp_test;

TEST(ExhaustedMemory, EndsTheCopyOfAnImage) {
    const TQImage source = scattered(9, 7);
    EXPECT_EQ(failEachAllocation([&] { const TQImage copy(source); }), 1U);
    EXPECT_EQ(failEachAllocation([&] { cvtGray(source); }), 1U);
}

TEST(ExhaustedMemory, EndsAnAssignmentAndLeavesAnImageThatCanBeUsed) {
    const TQImage source = scattered(9, 7);
    TQImage target = uniform(3, 3, 5);
    {
        const FailingAllocation failing(0);
        EXPECT_THROW(target = source, std::bad_alloc);
    }
    target = source;
    EXPECT_EQ(rowsOf(target), rowsOf(source));
}

TEST(ExhaustedMemory, EndsTheConvolutions) {
    const TQImage source = scattered(9, 7);
    const double kernel[3] = {0.25, 0.5, 0.25};
    EXPECT_GE(failEachAllocation([&] { convolve1D(source, kernel, 3, true); }), 1U);
    EXPECT_GE(failEachAllocation([&] { convolve1D(source, kernel, 3, false); }), 1U);
    EXPECT_GE(failEachAllocation([&] { add_Weighted(source, source, 3.0F); }), 1U);
    EXPECT_GE(failEachAllocation([&] { enh_gaussian_filter_fast(source, 11, 3.0); }), 3U);
    EXPECT_GE(failEachAllocation([&] { enh_gaussian_filter(source, 11, 3.0, 3.0); }), 2U);
    EXPECT_GE(failEachAllocation([&] { enh_unsharp_mask(source, 300.0F, 11); }), 4U);
}

TEST(ExhaustedMemory, EndsTheErrorDiffusion) {
    const TQImage source = scattered(9, 7);
    EXPECT_GE(failEachAllocation([&] { edf_cus(source, 128); }), 2U);
}

TEST(ExhaustedMemory, EndsBothTattooChains) {
    TQImage source = scattered(9, 7);
    EXPECT_GE(failEachAllocation([&] { tqTattooDithering(source); }), 5U);
    EXPECT_GE(failEachAllocation([&] { tqTattooDitheringX8(source); }), 5U);
    TQImage empty(0, 7, TQ_IMG_GRAY);
    failEachAllocation([&] { tqTattooDithering(empty); });
}

TEST(ExhaustedMemory, IsNotReachedByARefusedKernelSize) {
    // The size is looked at before anything is allocated: the one allocation is the exception's
    // text.
    const TQImage source = scattered(9, 7);
    const double kernel[4] = {};
    const auto refuses = [](const auto& work) {
        const FailingAllocation second(1);
        EXPECT_THROW(work(), std::invalid_argument);
    };
    refuses([&] { enh_unsharp_mask(source, 300.0F, 10); });
    refuses([&] { enh_gaussian_filter(source, 4, 1.0, 1.0); });
    refuses([&] { enh_gaussian_filter_fast(source, 4, 1.0); });
    refuses([&] { convolve1D(source, kernel, 4, true); });
}

}  // namespace
