#include "simd/forms.h"

#include <gtest/gtest.h>

#include <string>

#include "tests/unit/simd/probe.h"

namespace kelp_test {
namespace {

std::int64_t best_vector_target() {
    const auto forms = simd::forms();
    return forms.back().target;
}

TEST(Forms, BeginWithThePlainOne) {
    const auto forms = simd::forms();
    ASSERT_FALSE(forms.empty());
    EXPECT_STREQ(forms.front().name, "plain");
    EXPECT_EQ(forms.front().target, 0);
}

TEST(Forms, HaveVectorsWhereEveryMachineHasThem) {
#if defined(__aarch64__)
    ASSERT_EQ(simd::forms().size(), 2U);
    EXPECT_STREQ(simd::forms().back().name, "NEON");
#elif defined(__AVX2__)
    EXPECT_STREQ(simd::forms().back().name, "AVX2");
#elif defined(__x86_64__)
    const bool ssse3 = __builtin_cpu_supports("ssse3") != 0;
    const bool avx2 = __builtin_cpu_supports("avx2") != 0;
    EXPECT_EQ(simd::forms().size(), 1U + (ssse3 ? 1 : 0) + (avx2 ? 1 : 0));
#else
    EXPECT_GE(simd::forms().size(), 1U);
#endif
}

TEST(Forms, AreChosenByTheMachine) {
    EXPECT_EQ(simd::isPlain(), simd::forms().size() == 1);
    if (!simd::isPlain()) {
        EXPECT_EQ(dispatched_target(), best_vector_target());
    }
}

TEST(ForcedForm, HoldsUntilItGoes) {
    const bool plain = simd::isPlain();
    const std::int64_t best = best_vector_target();
    for (const simd::Form& form : simd::forms()) {
        {
            const simd::ForcedForm forced(form);
            EXPECT_EQ(simd::isPlain(), form.target == 0) << form.name;
            if (form.target != 0) {
                EXPECT_EQ(dispatched_target(), form.target) << form.name;
            }
        }
        EXPECT_EQ(simd::isPlain(), plain);
        EXPECT_EQ(best_vector_target(), best) << "after " << form.name;
        if (!plain) {
            EXPECT_EQ(dispatched_target(), best) << "after " << form.name;
        }
    }
}

}  // namespace
}  // namespace kelp_test
