#pragma once

#include <cups/raster.h>

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace kelp_test {

// A page of 8-bit grey as the spooler's rasteriser would hand it over.
struct Page {
    unsigned width = 16;
    unsigned height = 2;
    std::optional<unsigned> bytes_per_line;  // the width when absent
    unsigned resolution_x = 203;
    unsigned resolution_y = 203;
    cups_cspace_t color_space = CUPS_CSPACE_K;
    unsigned copies = 1;
    unsigned bits_per_pixel = 8;
    std::string size_name;
    // bytes_per_line × height bytes; what is missing is zero.
    std::string pixels;

    unsigned stride() const { return bytes_per_line.value_or(width); }
};

cups_page_header2_t page_header(const Page& page);

// The stream as libcups writes it. Throws std::runtime_error when libcups refuses a page.
std::string raster_stream(const std::vector<Page>& pages, cups_mode_t mode = CUPS_RASTER_WRITE);

// The uncompressed stream written without libcups: any header, followed by any bytes.
struct RawPage {
    cups_page_header2_t header;
    std::string pixels;
};
RawPage raw_page(const Page& page);
std::string raw_raster_stream(const std::vector<RawPage>& pages);

// The same in the other byte order.
std::string swapped_raster_stream(const std::vector<RawPage>& pages);

}  // namespace kelp_test
