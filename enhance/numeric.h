#ifndef KELP_ENHANCE_NUMERIC_H
#define KELP_ENHANCE_NUMERIC_H

#include <cstdint>

// The numeric approximations of the tattoo chain, in single precision. Their start values, stopping
// tests and order of operations decide the last bits of what they return, and those decide dots:
// none of them may be replaced by the C library's function.

/// |x|; -0.0 and a not-a-number pass through.
float myabs(float x);

/// Rounds half away from zero; the addition of the half is in single precision. Values beyond int
/// saturate, a not-a-number gives 0.
int my_round(float x);

/// v held to lo ... hi.
template <typename T>
constexpr T myClamp(T v, T lo, T hi) {
    if (v < lo) {
        return lo;
    }
    return v < hi ? v : hi;
}

/// Square root by Newton's iteration from x / 2 until a step is below 1e-6; the result is the
/// iterate before that step. -1 for a negative x; an infinity and a not-a-number return themselves.
float my_sqrt(float x);

/// e to the x by up to 20 terms of the power series; for a negative x the reciprocal.
float my_exp(float x);

/// Natural logarithm by an iteration on my_exp whose correction is divided by x, until a step is
/// below 1e-6; the result is the iterate before that step. -1 for x of 0 or less.
float my_ln(float x);

/// a to the b as my_exp(b * my_ln(a)). 0 to the 0 is 1, 0 to a positive b is 0, and 0 to a negative
/// b is -1. A negative a gives -1 for a fractional b and my_exp(-b) for a whole one.
float my_pow(float a, float b);

/// Truncates toward zero; values beyond int saturate, a not-a-number gives 0.
int truncateToInt(float x);

/// The low eight bits.
constexpr unsigned char lowByte(int v) {
    return static_cast<unsigned char>(static_cast<unsigned>(v) & 0xFFU);
}

#endif
