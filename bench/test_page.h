#ifndef KELP_BENCH_TEST_PAGE_H
#define KELP_BENCH_TEST_PAGE_H

#include <cstdint>
#include <vector>

/// A page as people print them, one byte per pixel, 255 white: text-like bars on white above, a
/// photograph-like picture (slow tones with grain) in the middle, line art below. The same on every
/// run.
struct TestPage {
    std::uint32_t width;
    std::uint32_t height;
    std::vector<unsigned char> pixels;
};
TestPage makeTestPage(std::uint32_t width, std::uint32_t height);

#endif
