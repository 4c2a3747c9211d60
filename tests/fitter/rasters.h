#pragma once

#include <cups/raster.h>

#include <string>
#include <vector>

#include "tests/support/raster_stream.h"

namespace kelp_test {

// A kind of pixels.
struct Kind {
    const char* name;
    cups_cspace_t space;
    unsigned bits_per_color;
    unsigned bits_per_pixel;

    unsigned colors() const { return bits_per_pixel / bits_per_color; }
    // The bytes of a row without padding.
    unsigned row_bytes(unsigned width) const { return (width * bits_per_pixel + 7) / 8; }
};

inline constexpr Kind k8{"K8", CUPS_CSPACE_K, 8, 8};
inline constexpr Kind w8{"W8", CUPS_CSPACE_W, 8, 8};
inline constexpr Kind sw8{"SW8", CUPS_CSPACE_SW, 8, 8};
inline constexpr Kind k1{"K1", CUPS_CSPACE_K, 1, 1};
inline constexpr Kind w1{"W1", CUPS_CSPACE_W, 1, 1};
inline constexpr Kind sw1{"SW1", CUPS_CSPACE_SW, 1, 1};
inline constexpr Kind rgb{"RGB", CUPS_CSPACE_RGB, 8, 24};
inline constexpr Kind srgb{"SRGB", CUPS_CSPACE_SRGB, 8, 24};

// Every kind that can be fitted.
std::vector<Kind> kinds();

// A page at 72 dpi with `padding` bytes behind each row. The pixels may be fewer than the page
// needs: the rest is zero.
RawPage page_of(const Kind& kind, unsigned width, unsigned height, const std::string& pixels,
                unsigned padding = 0);

// A PPD of one page size. At 72 dpi, a point is a dot.
struct PagePpd {
    std::string width = "36";
    std::string height = "8";
    unsigned color_space = CUPS_CSPACE_K;
    unsigned bits_per_color = 8;
    unsigned resolution_x = 72;
    unsigned resolution_y = 72;

    std::string text() const;
};

// The pages of an uncompressed stream in this machine's byte order, taken apart without libcups.
// The last one may have fewer pixels than its header says. Throws std::runtime_error for a stream
// with another beginning.
std::vector<RawPage> pages_in(const std::string& stream);

// The stream as libcups writes it, packed or not. Throws std::runtime_error when it refuses a page.
std::string written_by_libcups(const std::vector<RawPage>& pages, cups_mode_t mode);

}  // namespace kelp_test
