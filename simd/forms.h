#ifndef KELP_SIMD_FORMS_H
#define KELP_SIMD_FORMS_H

#include <cstdint>
#include <vector>

/// The forms that a kernel is compiled in: plain C++, and one for each set of vector instructions.
/// All give the same bytes. The best one that the machine has is chosen when a kernel first runs.
namespace simd {

struct Form {
    const char* name;     ///< such as "plain", "SSSE3", "AVX2", "NEON"
    std::int64_t target;  ///< as Highway numbers them; 0 is the plain form
};

/// The forms that this machine can run, the plain one first, the best one last.
std::vector<Form> forms();

/// Whether kernels run in their plain form: on a machine without vectors, or as forced.
bool isPlain();

/// Makes all kernels run in one form until it goes. For tests and benchmarks, one at a time.
class ForcedForm {
  public:
    /// @param form one of forms()
    explicit ForcedForm(const Form& form);
    ~ForcedForm();
    ForcedForm(const ForcedForm&) = delete;
    ForcedForm& operator=(const ForcedForm&) = delete;
};

}  // namespace simd

#endif
