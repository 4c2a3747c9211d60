#include "image/error_diffusion.h"

#include <algorithm>
#include <utility>

#include "image/error_diffusion_simd.h"
#include "simd/forms.h"

namespace {

using diffusion::Kernel;
using diffusion::Tap;

constexpr std::size_t kGreys = 256;

constexpr bool isWhite(int grey) {
    return grey > diffusion::kThreshold;
}

// What every tap gives for every grey value. Every share is truncated toward zero on its own; what
// that loses of the error is dropped.
template <std::size_t N>
constexpr auto shares(const Kernel<N>& kernel) {
    std::array<std::array<std::int8_t, N>, kGreys> table{};
    for (std::size_t i = 0; i < kGreys; ++i) {
        const int grey = static_cast<int>(i);
        const int error = isWhite(grey) ? grey - 255 : grey;
        for (std::size_t tap = 0; tap < N; ++tap) {
            const int share = error * kernel.taps[tap].weight / kernel.divisor;
            table[i][tap] = static_cast<std::int8_t>(share);
        }
    }
    return table;
}

template <const auto& kernel>
constexpr auto kShares = shares(kernel);

using Rows = std::array<std::uint8_t*, diffusion::kRowsBelow + 1>;

// The two pixels to the right. They stay in registers: along a row nothing can be done side by
// side, so the way through memory would be felt.
struct Right {
    std::uint8_t next;
    std::uint8_t second;
};

template <const auto& kernel, std::size_t tap>
inline void give(int share, Right& right, const Rows& rows, std::size_t x,
                 const std::uint8_t* corrected) {
    constexpr Tap to = kernel.taps[tap];
    if constexpr (to.dy == 0) {
        static_assert(to.dx == 1 || to.dx == 2);
        std::uint8_t& cell = to.dx == 1 ? right.next : right.second;
        cell = corrected[cell + share];
    } else {
        std::uint8_t& cell = rows[to.dy][static_cast<std::ptrdiff_t>(x) + to.dx];
        cell = corrected[cell + share];
    }
}

// Adds the shares of a pixel to its neighbours, each sum clamped at once.
template <const auto& kernel, std::size_t... I>
inline void distribute(std::uint8_t grey, Right& right, const Rows& rows, std::size_t x,
                       const std::uint8_t* corrected, std::index_sequence<I...>) {
    const auto& share = kShares<kernel>[grey];
    (give<kernel, I>(share[I], right, rows, x, corrected), ...);
}

template <const auto& kernel>
void diffuseRow(const Rows& rows, std::size_t width, const std::uint8_t* corrected,
                std::uint8_t* packed) {
    std::uint8_t grey = rows[0][0];
    Right right{rows[0][1], rows[0][2]};
    unsigned dots = 1;  // the leading 1 tells when eight dots are in
    for (std::size_t x = 0; x < width; ++x) {
        dots = dots << 1 | (isWhite(grey) ? 1 : 0);
        if (dots >= 0x100) {
            *packed++ = static_cast<std::uint8_t>(dots);
            dots = 1;
        }
        distribute<kernel>(grey, right, rows, x, corrected,
                           std::make_index_sequence<kernel.taps.size()>());
        grey = right.next;
        right = {right.second, rows[0][x + 3]};
    }
    if (dots != 1) {
        *packed = static_cast<std::uint8_t>(dots << (8 - width % 8));
    }
}

}  // namespace

ErrorDiffusion::ErrorDiffusion(ErrorKernel kernel, std::size_t width, std::uint8_t storedBits)
    : kernel_(kernel), width_(width), cells_(kRows * (width + 2 * kMargin)) {
    for (std::size_t i = 0; i < corrected_.size(); ++i) {
        const int sum = static_cast<int>(i) - kLargestShare;
        corrected_[i] = static_cast<std::uint8_t>(std::clamp(sum, 0, 255) & storedBits);
    }
}

std::uint8_t* ErrorDiffusion::rowBuffer(std::size_t index) {
    return cells_.data() + index % kRows * (width_ + 2 * kMargin) + kMargin;
}

std::uint8_t* ErrorDiffusion::nextInputRow() {
    return rowBuffer(fed_++);
}

void ErrorDiffusion::halftoneRow(std::uint8_t* packed) {
    Rows rows;
    for (std::size_t dy = 0; dy < rows.size(); ++dy) {
        rows[dy] = rowBuffer(done_ + dy);
    }
    ++done_;
    const std::uint8_t* corrected = corrected_.data() + kLargestShare;
    switch (kernel_) {
        case ErrorKernel::FloydSteinberg:
            return diffuseRow<diffusion::kFloydSteinberg>(rows, width_, corrected, packed);
        case ErrorKernel::Burkes:
            return diffuseRow<diffusion::kBurkes>(rows, width_, corrected, packed);
        case ErrorKernel::Stucki:
            return diffuseRow<diffusion::kStucki>(rows, width_, corrected, packed);
        case ErrorKernel::JarvisJudiceNinke:
            return diffuseRow<diffusion::kJarvisJudiceNinke>(rows, width_, corrected, packed);
        case ErrorKernel::Sierra:
            return diffuseRow<diffusion::kSierra>(rows, width_, corrected, packed);
        case ErrorKernel::StevensonArce:
            return diffuseRow<diffusion::kStevensonArce>(rows, width_, corrected, packed);
    }
}

void diffuseErrors(ErrorKernel kernel, const GreyPage& page, const MonoPage& dots) {
    if (simd::isPlain()) {
        diffuseErrorsPlainly(kernel, page, dots);
    } else {
        diffusion::diffuseInVectors(kernel, page, dots);
    }
}

void diffuseErrorsPlainly(ErrorKernel kernel, const GreyPage& page, const MonoPage& dots) {
    ErrorDiffusion diffusion(kernel, page.width, 0xFF);
    for (std::size_t fed = 0; fed < page.height + ErrorDiffusion::kRowsAhead; ++fed) {
        std::uint8_t* row = diffusion.nextInputRow();
        if (fed < page.height) {
            std::copy_n(page.first + fed * page.stride, page.width, row);
        }
        if (fed >= ErrorDiffusion::kRowsAhead) {
            diffusion.halftoneRow(dots.first + (fed - ErrorDiffusion::kRowsAhead) * dots.stride);
        }
    }
}
