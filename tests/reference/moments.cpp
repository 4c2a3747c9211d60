#include "tests/reference/moments.h"

#include <cmath>

#include "tests/reference/numeric.h"

namespace reference {

int thresholdGlobalMoments(const GrayImage& image) {
    int total = image.width * image.height;
    std::vector<int> count(256, 0);
    for (std::size_t k = 0; k < static_cast<std::size_t>(total); k++)
        count[image.px[k]] += 1;

    std::vector<float> p(256, 0.0f);
    for (std::size_t i = 0; i < 256; i++)
        p[i] = static_cast<float>(count[i]) / static_cast<float>(total);

    const float m0 = 1.0f;
    float m1 = 0.0f;
    float m2 = 0.0f;
    float m3 = 0.0f;
    for (int i = 0; i < 256; i++) {
        float share = p[static_cast<std::size_t>(i)];
        float t1 = static_cast<float>(i) * share;
        float t2 = static_cast<float>(i * i) * share;
        float t3 = static_cast<float>(i * i * i) * share;
        m1 += t1;
        m2 += t2;
        m3 += t3;
    }

    float m0m2 = m0 * m2;
    float m1m1 = m1 * m1;
    float cd = m0m2 - m1m1;
    if (cd == 0.0f)
        return 128;

    float m2m2 = -m2 * m2;
    float m1m3 = m1 * m3;
    float c0 = (m2m2 + m1m3) / cd;

    float m0m3 = m0 * -m3;
    float m2m1 = m2 * m1;
    float c1 = (m0m3 + m2m1) / cd;

    float c1c1 = c1 * c1;
    float disc = static_cast<float>(static_cast<double>(c1c1) - 4.0 * static_cast<double>(c0));
    if (!std::isfinite(disc))
        return 128;
    if (0.0f > disc)
        return 128;

    float z0 = 0.5f * (-c1 - mySqrt(disc));
    float z1 = 0.5f * (-c1 + mySqrt(disc));
    float p0 = (z1 - m1) / (z1 - z0);

    float cum = 0.0f;
    for (int i = 0; i < 256; i++) {
        cum += p[static_cast<std::size_t>(i)];
        if (cum > p0)
            return i;
    }
    return -1;
}

}  // namespace reference
