#include "tests/support/raster_stream.h"

#include <sys/mman.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstring>
#include <memory>
#include <stdexcept>

#include "tests/support/descriptor.h"

namespace kelp_test {
namespace {

struct RasterCloser {
    void operator()(cups_raster_t* raster) const { cupsRasterClose(raster); }
};

std::string padded_pixels(const Page& page) {
    std::string pixels = page.pixels;
    pixels.resize(std::size_t{page.stride()} * page.height, '\0');
    return pixels;
}

std::string whole_content(const Descriptor& file) {
    std::string content;
    std::array<char, 65536> buffer;
    ssize_t count = 0;
    while ((count = pread(file.get(), buffer.data(), buffer.size(),
                          static_cast<off_t>(content.size()))) > 0) {
        content.append(buffer.data(), static_cast<std::size_t>(count));
    }
    return content;
}

template <typename Value>
std::string bytes_of(const Value& value) {
    return {reinterpret_cast<const char*>(&value), sizeof(value)};
}

// Reverses every four-byte word of [begin, end).
void swap_words(std::string& bytes, std::size_t begin, std::size_t end) {
    for (std::size_t at = begin; at + 4 <= end; at += 4) {
        std::reverse(bytes.begin() + static_cast<std::ptrdiff_t>(at),
                     bytes.begin() + static_cast<std::ptrdiff_t>(at + 4));
    }
}

}  // namespace

cups_page_header2_t page_header(const Page& page) {
    cups_page_header2_t header{};
    header.HWResolution[0] = page.resolution_x;
    header.HWResolution[1] = page.resolution_y;
    header.NumCopies = page.copies;
    header.cupsWidth = page.width;
    header.cupsHeight = page.height;
    header.cupsBitsPerColor = page.bits_per_pixel;
    header.cupsBitsPerPixel = page.bits_per_pixel;
    header.cupsBytesPerLine = page.stride();
    header.cupsColorOrder = CUPS_ORDER_CHUNKED;
    header.cupsColorSpace = page.color_space;
    header.cupsNumColors = 1;
    page.size_name.copy(header.cupsPageSizeName, sizeof(header.cupsPageSizeName) - 1);
    return header;
}

std::string raster_stream(const std::vector<Page>& pages, cups_mode_t mode) {
    const Descriptor file(memfd_create("raster", MFD_CLOEXEC));
    std::unique_ptr<cups_raster_t, RasterCloser> raster(cupsRasterOpen(file.get(), mode));
    if (!raster) {
        throw std::runtime_error("libcups does not open a raster stream");
    }
    for (const Page& page : pages) {
        cups_page_header2_t header = page_header(page);
        std::string pixels = padded_pixels(page);
        const auto length = static_cast<unsigned>(pixels.size());
        auto* bytes = reinterpret_cast<unsigned char*>(pixels.data());
        if (cupsRasterWriteHeader2(raster.get(), &header) == 0 ||
            cupsRasterWritePixels(raster.get(), bytes, length) != length) {
            throw std::runtime_error("libcups does not write this page");
        }
    }
    raster.reset();
    return whole_content(file);
}

RawPage raw_page(const Page& page) {
    return {page_header(page), padded_pixels(page)};
}

std::string raw_raster_stream(const std::vector<RawPage>& pages) {
    std::string stream = bytes_of(static_cast<unsigned>(CUPS_RASTER_SYNC));
    for (const RawPage& page : pages) {
        stream += bytes_of(page.header) + page.pixels;
    }
    return stream;
}

std::string swapped_raster_stream(const std::vector<RawPage>& pages) {
    std::string stream = bytes_of(static_cast<unsigned>(CUPS_RASTER_REVSYNC));
    for (const RawPage& page : pages) {
        std::string header = bytes_of(page.header);
        swap_words(header, offsetof(cups_page_header2_t, AdvanceDistance),
                   offsetof(cups_page_header2_t, cupsString));
        stream += header + page.pixels;
    }
    return stream;
}

}  // namespace kelp_test
