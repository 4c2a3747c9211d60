#include "tests/unit/filter/raster_reader.h"

#include <algorithm>
#include <cerrno>
#include <optional>
#include <vector>

namespace {

kelp_test::ChangedHeader::Change change_header = nullptr;
std::optional<unsigned> pixels_of_a_page;
// Reads until one fails; never where negative.
int headers_granted = -1;
int pixels_granted = -1;

bool is_refused(int& granted) {
    if (granted != 0) {
        --granted;
        return false;
    }
    errno = ENOMEM;
    return true;
}

}  // namespace

// The linker sends every call of a libcups function to its __wrap_ and calls the real one as its
// __real_ (--wrap).
extern "C" {
unsigned __real_cupsRasterReadHeader2(cups_raster_t* raster, cups_page_header2_t* header);
unsigned __wrap_cupsRasterReadHeader2(cups_raster_t* raster, cups_page_header2_t* header);
unsigned __real_cupsRasterReadPixels(cups_raster_t* raster, unsigned char* pixels, unsigned count);
unsigned __wrap_cupsRasterReadPixels(cups_raster_t* raster, unsigned char* pixels, unsigned count);

unsigned __wrap_cupsRasterReadHeader2(cups_raster_t* raster, cups_page_header2_t* header) {
    if (is_refused(headers_granted)) {
        return 0;
    }
    const unsigned read = __real_cupsRasterReadHeader2(raster, header);
    if (read != 0 && change_header != nullptr) {
        change_header(*header);
    }
    return read;
}

unsigned __wrap_cupsRasterReadPixels(cups_raster_t* raster, unsigned char* pixels, unsigned count) {
    if (is_refused(pixels_granted)) {
        return 0;
    }
    if (!pixels_of_a_page) {
        return __real_cupsRasterReadPixels(raster, pixels, count);
    }
    std::vector<unsigned char> all(count);
    const unsigned read = __real_cupsRasterReadPixels(raster, all.data(), count);
    const unsigned handed_over = std::min(read, *pixels_of_a_page);
    std::copy_n(all.begin(), handed_over, pixels);
    return handed_over;
}
}

namespace kelp_test {

ChangedHeader::ChangedHeader(Change change) {
    change_header = change;
}

ChangedHeader::~ChangedHeader() {
    change_header = nullptr;
}

ShortPages::ShortPages(unsigned pixels) {
    pixels_of_a_page = pixels;
}

ShortPages::~ShortPages() {
    pixels_of_a_page.reset();
}

ReaderWithoutMemory::ReaderWithoutMemory(int page, For what) {
    (what == For::header ? headers_granted : pixels_granted) = page;
}

ReaderWithoutMemory::~ReaderWithoutMemory() {
    headers_granted = -1;
    pixels_granted = -1;
}

}  // namespace kelp_test
