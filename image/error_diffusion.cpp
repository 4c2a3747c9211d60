#include "image/error_diffusion.h"

#include <algorithm>

namespace {

struct Tap {
    int dx;
    int dy;
    int weight;
};

template <std::size_t N>
struct Kernel {
    int divisor;
    std::array<Tap, N> taps;
};

// The taps stand in reading order. Each reaches a cell of its own, so the order decides nothing.
constexpr Kernel<4> kFloydSteinberg{16, {{{1, 0, 7}, {-1, 1, 3}, {0, 1, 5}, {1, 1, 1}}}};

constexpr Kernel<7> kBurkes{
    32, {{{1, 0, 8}, {2, 0, 4}, {-2, 1, 2}, {-1, 1, 4}, {0, 1, 8}, {1, 1, 4}, {2, 1, 2}}}};

constexpr Kernel<12> kStucki{42,
                             {{{1, 0, 8},
                               {2, 0, 4},
                               {-2, 1, 2},
                               {-1, 1, 4},
                               {0, 1, 8},
                               {1, 1, 4},
                               {2, 1, 2},
                               {-2, 2, 1},
                               {-1, 2, 2},
                               {0, 2, 4},
                               {1, 2, 2},
                               {2, 2, 1}}}};

constexpr Kernel<12> kJarvisJudiceNinke{48,
                                        {{{1, 0, 7},
                                          {2, 0, 5},
                                          {-2, 1, 3},
                                          {-1, 1, 5},
                                          {0, 1, 7},
                                          {1, 1, 5},
                                          {2, 1, 3},
                                          {-2, 2, 1},
                                          {-1, 2, 3},
                                          {0, 2, 5},
                                          {1, 2, 3},
                                          {2, 2, 1}}}};

constexpr Kernel<10> kSierra{32,
                             {{{1, 0, 5},
                               {2, 0, 3},
                               {-2, 1, 2},
                               {-1, 1, 4},
                               {0, 1, 5},
                               {1, 1, 4},
                               {2, 1, 2},
                               {-1, 2, 2},
                               {0, 2, 3},
                               {1, 2, 2}}}};

// The right-hand neighbour receives nothing.
constexpr Kernel<12> kStevensonArce{200,
                                    {{{2, 0, 32},
                                      {-3, 1, 12},
                                      {-1, 1, 26},
                                      {1, 1, 30},
                                      {3, 1, 16},
                                      {-2, 2, 12},
                                      {0, 2, 26},
                                      {2, 2, 12},
                                      {-3, 3, 5},
                                      {-1, 3, 12},
                                      {1, 3, 12},
                                      {3, 3, 5}}}};

constexpr int kThreshold = 128;

using Rows = std::array<std::uint8_t*, ErrorDiffusion::kRowsAhead + 1>;

// Every neighbour's share is truncated toward zero and clamped on its own; what that loses of the
// error is dropped.
template <const auto& kernel>
void diffuseRow(const Rows& rows, std::size_t width, std::uint8_t storedBits,
                std::uint8_t* packed) {
    std::fill_n(packed, (width + 7) / 8, std::uint8_t{0});
    for (std::size_t x = 0; x < width; ++x) {
        const int grey = rows[0][x];
        const bool white = grey > kThreshold;
        const int error = white ? grey - 255 : grey;
        if (white) {
            packed[x / 8] = static_cast<std::uint8_t>(packed[x / 8] | (0x80 >> (x % 8)));
        }
        for (const Tap& tap : kernel.taps) {
            std::uint8_t& cell =
                rows[static_cast<std::size_t>(tap.dy)][static_cast<std::ptrdiff_t>(x) + tap.dx];
            const int corrected = cell + error * tap.weight / kernel.divisor;
            cell = static_cast<std::uint8_t>(std::clamp(corrected, 0, 255) & storedBits);
        }
    }
}

}  // namespace

ErrorDiffusion::ErrorDiffusion(ErrorKernel kernel, std::size_t width, std::uint8_t storedBits)
    : kernel_(kernel),
      width_(width),
      storedBits_(storedBits),
      cells_(kRows * (width + 2 * kMargin)) {}

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
    switch (kernel_) {
        case ErrorKernel::FloydSteinberg:
            return diffuseRow<kFloydSteinberg>(rows, width_, storedBits_, packed);
        case ErrorKernel::Burkes:
            return diffuseRow<kBurkes>(rows, width_, storedBits_, packed);
        case ErrorKernel::Stucki:
            return diffuseRow<kStucki>(rows, width_, storedBits_, packed);
        case ErrorKernel::JarvisJudiceNinke:
            return diffuseRow<kJarvisJudiceNinke>(rows, width_, storedBits_, packed);
        case ErrorKernel::Sierra:
            return diffuseRow<kSierra>(rows, width_, storedBits_, packed);
        case ErrorKernel::StevensonArce:
            return diffuseRow<kStevensonArce>(rows, width_, storedBits_, packed);
    }
}
