#include "simd/forms.h"

#include <hwy/targets.h>

#include <algorithm>

namespace {

bool plainIsForced = false;

// Highway's own emulation of vectors is no form of ours: plain loops are faster and exact as well.
std::int64_t vectorTargets() {
    return hwy::SupportedTargets() & HWY_TARGETS & ~(HWY_SCALAR | HWY_EMU128);
}

void choose(std::int64_t targets) {
    hwy::GetChosenTarget().Update(targets);
}

}  // namespace

namespace simd {

std::vector<Form> forms() {
    std::vector<Form> result;
    // The lower the bit, the better the target.
    for (std::int64_t left = vectorTargets(); left != 0; left &= left - 1) {
        const std::int64_t target = left & -left;
        result.push_back({hwy::TargetName(target), target});
    }
    result.push_back({"plain", 0});
    std::reverse(result.begin(), result.end());
    return result;
}

bool isPlain() {
    static const bool machineHasNone = vectorTargets() == 0;
    return plainIsForced || machineHasNone;
}

ForcedForm::ForcedForm(const Form& form) {
    plainIsForced = form.target == 0;
    choose(form.target);
}

ForcedForm::~ForcedForm() {
    plainIsForced = false;
    choose(hwy::SupportedTargets());
}

}  // namespace simd
