#include "enhance/moments_threshold.h"

#include <array>
#include <cmath>
#include <cstddef>
#include <cstring>

#include "enhance/numeric.h"

namespace {

constexpr int kNoSolution = 128;
constexpr int kNeverPassed = -1;

using Shares = std::array<float, 256>;

// Pixels one after another are often of one level: with four histograms by turns a count rarely
// waits for the one before it.
Shares normalisedHistogram(const TQImage& img) {
    using Counts = std::array<std::uint32_t, 256>;
    std::array<Counts, 4> counts{};
    const std::int32_t pixels = img.pixelCount();
    std::int32_t k = 0;
    for (; k + 8 <= pixels; k += 8) {
        std::uint64_t levels = 0;
        std::memcpy(&levels, img.data + k, sizeof levels);
        for (unsigned i = 0; i < 8; ++i) {
            ++counts[i % 4][(levels >> (8 * i)) & 0xFFU];
        }
    }
    for (; k < pixels; ++k) {
        ++counts[0][img.data[k]];
    }
    Shares shares;
    for (std::size_t i = 0; i < shares.size(); ++i) {
        const auto count =
            static_cast<int>(counts[0][i] + counts[1][i] + counts[2][i] + counts[3][i]);
        shares[i] = static_cast<float>(count) / static_cast<float>(pixels);
    }
    return shares;
}

}  // namespace

int thresh_global_moments(const TQImage& img) {
    const Shares p = normalisedHistogram(img);

    const float m0 = 1.0F;
    float m1 = 0.0F;
    float m2 = 0.0F;
    float m3 = 0.0F;
    for (int i = 0; i < 256; ++i) {
        const float share = p[static_cast<std::size_t>(i)];
        m1 += static_cast<float>(i) * share;
        m2 += static_cast<float>(i * i) * share;
        m3 += static_cast<float>(i * i * i) * share;
    }

    const float cd = m0 * m2 - m1 * m1;
    if (cd == 0.0F) {
        return kNoSolution;
    }
    const float c0 = (-m2 * m2 + m1 * m3) / cd;
    const float c1 = (m0 * (-m3) + m2 * m1) / cd;
    const auto disc =
        static_cast<float>(static_cast<double>(c1 * c1) - 4.0 * static_cast<double>(c0));
    if (!std::isfinite(disc) || 0.0F > disc) {
        return kNoSolution;
    }
    const float z0 = 0.5F * (-c1 - my_sqrt(disc));
    const float z1 = 0.5F * (-c1 + my_sqrt(disc));
    const float p0 = (z1 - m1) / (z1 - z0);

    float cumulative = 0.0F;
    for (int i = 0; i < 256; ++i) {
        cumulative += p[static_cast<std::size_t>(i)];
        if (cumulative > p0) {
            return i;
        }
    }
    return kNeverPassed;
}
