#ifndef KELP_FUZZ_ANY_FORM_H
#define KELP_FUZZ_ANY_FORM_H

#include <fuzzer/FuzzedDataProvider.h>

#include "simd/forms.h"

namespace kelp_fuzz {

/// One of the forms that the kernels have on this machine, as the input chooses.
inline simd::Form any_form(FuzzedDataProvider& input) {
    static const std::vector<simd::Form> forms = simd::forms();
    return forms[input.ConsumeIntegralInRange<std::size_t>(0, forms.size() - 1)];
}

}  // namespace kelp_fuzz

#endif
