// What Highway's headers leave to its library: which vectors the machine has, and which are chosen.
//
// The library itself is not linked. While it is loaded it measures the processor's clock, which
// takes longer than to print a label; and 64-bit ARM has vectors for it only where there are
// instructions for AES, too, which small machines lack and no kernel uses.

#include <hwy/base.h>
#include <hwy/targets.h>

#include <cstdarg>
#include <cstdio>
#include <cstdlib>

#if HWY_ARCH_X86
#include <cpuid.h>
#endif

namespace {

#if HWY_ARCH_X86

// Two that the compilers' own question knows under different names.
bool hasHalfFloatsAndLeadingZeros() {
    unsigned a = 0;
    unsigned b = 0;
    unsigned basic = 0;
    unsigned extended = 0;
    unsigned d = 0;
    return __get_cpuid(1, &a, &b, &basic, &d) != 0 && (basic & bit_F16C) != 0 &&
           __get_cpuid(0x80000001, &a, &b, &extended, &d) != 0 && (extended & bit_ABM) != 0;
}

// All that Highway compiles a target for.
// NOLINTBEGIN(readability-implicit-bool-conversion): a bool to Clang, an int to GCC
std::int64_t askProcessor() {
    __builtin_cpu_init();
    std::int64_t found = 0;
    if (__builtin_cpu_supports("ssse3") != 0) {
        found |= HWY_SSSE3;
        if (__builtin_cpu_supports("sse4.1") != 0 && __builtin_cpu_supports("sse4.2") != 0 &&
            __builtin_cpu_supports("pclmul") != 0 && __builtin_cpu_supports("aes") != 0 &&
            __builtin_cpu_supports("avx2") != 0 && __builtin_cpu_supports("bmi") != 0 &&
            __builtin_cpu_supports("bmi2") != 0 && __builtin_cpu_supports("fma") != 0 &&
            hasHalfFloatsAndLeadingZeros()) {
            found |= HWY_AVX2;
        }
    }
    return found;
}
// NOLINTEND(readability-implicit-bool-conversion)

#else

// What every machine has that the programs are compiled for.
std::int64_t askProcessor() {
    return 0;
}

#endif

}  // namespace

namespace hwy {

std::int64_t SupportedTargets() {
    // cppcheck-suppress badBitmaskCheck  // it does not see Highway's numbers
    static const std::int64_t found = askProcessor() | HWY_ENABLED_BASELINE;
    return found;
}

ChosenTarget& GetChosenTarget() {
    static ChosenTarget chosen;
    return chosen;
}

// Only builds that check Highway's own use of its vectors call it.
void Abort(const char* file, int line, const char* format, ...) {
    std::fprintf(stderr, "%s:%d: ", file, line);
    std::va_list arguments;
    va_start(arguments, format);
    std::vfprintf(stderr, format, arguments);
    va_end(arguments);
    std::abort();
}

}  // namespace hwy
