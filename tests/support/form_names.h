#ifndef KELP_TESTS_SUPPORT_FORM_NAMES_H
#define KELP_TESTS_SUPPORT_FORM_NAMES_H

#include <gtest/gtest.h>

#include <ostream>
#include <string>

#include "simd/forms.h"

namespace simd {

/// How GoogleTest shows a form.
inline void PrintTo(const Form& form, std::ostream* out) {
    *out << form.name;
}

}  // namespace simd

namespace kelp_test {

/// The end of the name of a test that is run in every form.
inline std::string form_name(const testing::TestParamInfo<simd::Form>& form) {
    return form.param.name;
}

}  // namespace kelp_test

#endif
