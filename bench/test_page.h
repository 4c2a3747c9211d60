#ifndef KELP_BENCH_TEST_PAGE_H
#define KELP_BENCH_TEST_PAGE_H

#include <array>
#include <cstdint>
#include <vector>

/// One byte per pixel, 255 white.
struct TestPage {
    std::uint32_t width;
    std::uint32_t height;
    std::vector<unsigned char> pixels;
};

/// A page as people print them: text-like bars on white above, a photograph-like picture (slow
/// tones with grain) in the middle, line art below. The same on every run.
TestPage makeTestPage(std::uint32_t width, std::uint32_t height);

/// A picture as a camera sees it: sky, hills one behind the other, a round face with a highlight,
/// hair-thin strands, and grain all over. The same on every run.
TestPage makePhotograph(std::uint32_t width, std::uint32_t height);

/// Nearly black: there the errors of a stencil shrink to the smallest numbers that there are, which
/// slow some processors.
TestPage makeDarkPage(std::uint32_t width, std::uint32_t height);

/// The pages that everything is measured on.
struct KnownPage {
    const char* name;
    std::uint32_t width;
    std::uint32_t height;
    TestPage (*make)(std::uint32_t width, std::uint32_t height);

    TestPage page() const { return make(width, height); }
};
inline constexpr std::array<KnownPage, 4> kPages = {{{"label", 812, 1218, makeTestPage},
                                                     {"stencil", 1664, 2496, makeTestPage},
                                                     {"photograph", 1664, 2496, makePhotograph},
                                                     {"dark", 1664, 2496, makeDarkPage}}};

#endif
