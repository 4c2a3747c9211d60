#ifndef KELP_IMAGE_DIFFUSION_KERNELS_H
#define KELP_IMAGE_DIFFUSION_KERNELS_H

#include <array>
#include <cstddef>

/// The classical error-diffusion kernels, each a table of taps. Scanning is left to right on every
/// row; a grey value above 128 becomes white.
enum class ErrorKernel {
    FloydSteinberg,     ///< Floyd and Steinberg, 1976
    Burkes,             ///< Burkes, 1988
    Stucki,             ///< Stucki, 1981
    JarvisJudiceNinke,  ///< Jarvis, Judice and Ninke, 1976
    Sierra,             ///< Sierra, 1989 (three rows)
    StevensonArce,      ///< Stevenson and Arce, 1985, on a rectangular grid
};

namespace diffusion {

constexpr int kThreshold = 128;
/// Widest sideways reach of a kernel.
constexpr std::size_t kReach = 3;
/// How far down the tallest kernel reaches.
constexpr std::size_t kRowsBelow = 3;
/// The largest errors: of a black 128 and of a white 129.
constexpr int kBlackError = kThreshold;
constexpr int kWhiteError = 255 - kThreshold - 1;

/// A neighbour at (x + dx, y + dy) receives error * weight / divisor, truncated toward zero.
struct Tap {
    int dx;
    int dy;
    int weight;
};

/// The taps stand in reading order. Each reaches a cell of its own, so for the pixel that gives the
/// order decides nothing. A pixel that receives gets its terms in the order in which its neighbours
/// are scanned, which is the taps' order backwards; as each addition clamps, that order counts.
template <std::size_t N>
struct Kernel {
    int divisor;
    std::array<Tap, N> taps;
};

inline constexpr Kernel<4> kFloydSteinberg{16, {{{1, 0, 7}, {-1, 1, 3}, {0, 1, 5}, {1, 1, 1}}}};

inline constexpr Kernel<7> kBurkes{
    32, {{{1, 0, 8}, {2, 0, 4}, {-2, 1, 2}, {-1, 1, 4}, {0, 1, 8}, {1, 1, 4}, {2, 1, 2}}}};

inline constexpr Kernel<12> kStucki{42,
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

inline constexpr Kernel<12> kJarvisJudiceNinke{48,
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

inline constexpr Kernel<10> kSierra{32,
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

/// The right-hand neighbour receives nothing.
inline constexpr Kernel<12> kStevensonArce{200,
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

}  // namespace diffusion

#endif
