#include "tests/reference/numeric.h"

#include <climits>
#include <cmath>

namespace reference {

namespace {

const float kTolerance = 1e-6f;

// myLn walks back from as far as -2^24 in steps of 1 before it converges, so the
// cap has to lie above that to change no converging result.
const long kMaxIterations = 1L << 25;

}  // namespace

int truncateToInt(double value) {
    if (std::isnan(value))
        return 0;
    if (value >= 2147483647.0)
        return INT_MAX;
    if (value <= -2147483648.0)
        return INT_MIN;
    return static_cast<int>(value);
}

int truncateToInt(float value) {
    return truncateToInt(static_cast<double>(value));
}

float myAbs(float x) {
    if (0.0f > x)
        return -x;
    return x;
}

int myRound(float x) {
    if (static_cast<double>(x) >= 0.0) {
        float up = x + 0.5f;
        return truncateToInt(up);
    }
    float down = x - 0.5f;
    return truncateToInt(down);
}

int myClamp(int v, int lo, int hi) {
    if (v < lo)
        return lo;
    if (v < hi)
        return v;
    return hi;
}

float mySqrt(float x) {
    if (0.0f > x)
        return -1.0f;
    if (x == 0.0f)
        return 0.0f;
    float g = x / 2.0f;
    for (long i = 0; i < kMaxIterations; i++) {
        float quotient = x / g;
        float sum = g + quotient;
        float n = 0.5f * sum;
        float difference = n - g;
        if (std::isnan(difference))
            return g;
        if (myAbs(difference) < kTolerance)
            return g;
        g = n;
    }
    return g;
}

float myExp(float x) {
    if (0.0f > x) {
        double positive = static_cast<double>(myExp(-x));
        return static_cast<float>(1.0 / positive);
    }
    float sum = 1.0f;
    float term = 1.0f;
    for (int k = 1; k <= 20; k++) {
        float ratio = x / static_cast<float>(k);
        term = ratio * term;
        sum = sum + term;
        if (static_cast<double>(term) < 1e-6)
            break;
    }
    return sum;
}

float myLn(float x) {
    if (0.0f >= x)
        return -1.0f;
    float numerator = x - 1.0f;
    float denominator = 1.0f + x;
    float y = numerator / denominator;
    for (long i = 0; i < kMaxIterations; i++) {
        float excess = myExp(y) - x;
        float correction = excess / x;
        float n = y - correction;
        float difference = n - y;
        if (std::isnan(difference))
            return y;
        if (myAbs(difference) < kTolerance)
            return y;
        y = n;
    }
    return y;
}

float myPow(float a, float b) {
    if (a == 0.0f) {
        if (b == 0.0f)
            return 1.0f;
        if (b > 0.0f)
            return 0.0f;
        return -1.0f;
    }
    if (a < 0.0f) {
        float f = b - static_cast<float>(truncateToInt(b));
        if (f != 0.0f)  // also true for a not-a-number
            return -1.0f;
    }
    float product = b * myLn(a);
    return myExp(product);
}

}  // namespace reference
