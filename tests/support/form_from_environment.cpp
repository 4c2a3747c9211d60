// Lets every test of the program run in the form that KELP_TEST_FORM names, such as "plain";
// without it, in the best that the machine has. Compiled into the programs that test the kernels.

#include <gtest/gtest.h>

#include <cstdlib>
#include <memory>
#include <string_view>

#include "simd/forms.h"

namespace {

class FormFromEnvironment : public testing::Environment {
  public:
    void SetUp() override {
        const char* const wanted = std::getenv("KELP_TEST_FORM");
        if (wanted == nullptr) {
            return;
        }
        for (const simd::Form& form : simd::forms()) {
            if (std::string_view(form.name) == wanted) {
                forced_ = std::make_unique<simd::ForcedForm>(form);
                return;
            }
        }
        FAIL() << "this machine has no form " << wanted;
    }
    void TearDown() override { forced_.reset(); }

  private:
    std::unique_ptr<simd::ForcedForm> forced_;
};

[[maybe_unused]] const auto* const registered =
    testing::AddGlobalTestEnvironment(new FormFromEnvironment);

}  // namespace
