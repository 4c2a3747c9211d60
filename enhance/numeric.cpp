#include "enhance/numeric.h"

#include <cfloat>
#include <limits>

static_assert(FLT_EVAL_METHOD == 0, "wider intermediate results would change dots");

namespace {

constexpr float kTolerance = 1e-6F;

// Far above the steps of any argument that converges. Newton's iteration halves its way down from
// x / 2, under 70 steps for the largest float. The logarithm's first step throws a tiny x out to
// about -0.4 / x and then comes back by 1 a step, which single precision can follow from no
// further than 2^24. Only arguments that go round in a circle for ever reach these.
constexpr int kMaxSqrtSteps = 1000;
constexpr int kMaxLnSteps = 1 << 25;

// True as well when the step is not a number, which would never meet the tolerance.
bool hasConverged(float next, float last) {
    return !(myabs(next - last) >= kTolerance);
}

}  // namespace

float myabs(float x) {
    return 0.0F > x ? -x : x;
}

int truncateToInt(float x) {
    if (x != x) {
        return 0;
    }
    // 2^31 is a float; the largest int is not.
    if (x >= 2147483648.0F) {
        return std::numeric_limits<int>::max();
    }
    if (x <= -2147483648.0F) {
        return std::numeric_limits<int>::min();
    }
    return static_cast<int>(x);
}

int my_round(float x) {
    return truncateToInt(static_cast<double>(x) >= 0.0 ? x + 0.5F : x - 0.5F);
}

float my_sqrt(float x) {
    if (0.0F > x) {
        return -1.0F;
    }
    if (x == 0.0F) {
        return 0.0F;
    }
    float root = x / 2.0F;
    for (int step = 0; step < kMaxSqrtSteps; ++step) {
        const float next = 0.5F * (root + x / root);
        if (hasConverged(next, root)) {
            break;
        }
        root = next;
    }
    return root;
}

float my_exp(float x) {
    if (0.0F > x) {
        return static_cast<float>(1.0 / static_cast<double>(my_exp(-x)));
    }
    float sum = 1.0F;
    float term = 1.0F;
    for (int k = 1; k <= 20; ++k) {
        term = (x / static_cast<float>(k)) * term;
        sum = sum + term;
        if (static_cast<double>(term) < 1e-6) {
            break;
        }
    }
    return sum;
}

float my_ln(float x) {
    if (0.0F >= x) {
        return -1.0F;
    }
    float y = (x - 1.0F) / (1.0F + x);
    for (int step = 0; step < kMaxLnSteps; ++step) {
        const float next = y - (my_exp(y) - x) / x;
        if (hasConverged(next, y)) {
            break;
        }
        y = next;
    }
    return y;
}

float my_pow(float a, float b) {
    if (a == 0.0F) {
        if (b == 0.0F) {
            return 1.0F;
        }
        return b > 0.0F ? 0.0F : -1.0F;
    }
    if (a < 0.0F) {
        const float fraction = b - static_cast<float>(truncateToInt(b));
        if (!(fraction == 0.0F)) {
            return -1.0F;
        }
    }
    return my_exp(b * my_ln(a));
}
