#include "tests/unit/simd/probe.h"

// The file is compiled once for each target.
#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "tests/unit/simd/probe.cpp"
#include <hwy/foreach_target.h>  // keep it before highway.h
//
#include <hwy/highway.h>

HWY_BEFORE_NAMESPACE();
namespace kelp_test::HWY_NAMESPACE {

std::int64_t target() {
    return HWY_TARGET;
}

}  // namespace kelp_test::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace kelp_test {

HWY_EXPORT(target);

std::int64_t dispatched_target() {
    return HWY_DYNAMIC_DISPATCH(target)();
}

}  // namespace kelp_test
#endif
