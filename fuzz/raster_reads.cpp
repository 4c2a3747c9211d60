#include "fuzz/raster_reads.h"

#include <algorithm>
#include <cerrno>
#include <cstring>

namespace {

kelp_fuzz::RasterReads* current = nullptr;

}  // namespace

// The linker sends every call of a libcups function to its __wrap_ and calls the real one as its
// __real_ (--wrap).
extern "C" {
unsigned __real_cupsRasterReadHeader2(cups_raster_t* raster, cups_page_header2_t* header);
unsigned __wrap_cupsRasterReadHeader2(cups_raster_t* raster, cups_page_header2_t* header);
unsigned __real_cupsRasterReadPixels(cups_raster_t* raster, unsigned char* pixels, unsigned count);
unsigned __wrap_cupsRasterReadPixels(cups_raster_t* raster, unsigned char* pixels, unsigned count);

unsigned __wrap_cupsRasterReadHeader2(cups_raster_t* raster, cups_page_header2_t* header) {
    const unsigned read = __real_cupsRasterReadHeader2(raster, header);
    if (read == 0) {
        errno = 0;  // a row that there is no memory for ends the stream, see sanitizer_options.cpp
    }
    return current == nullptr ? read : current->header(read, *header);
}

unsigned __wrap_cupsRasterReadPixels(cups_raster_t* raster, unsigned char* pixels, unsigned count) {
    const unsigned read = __real_cupsRasterReadPixels(raster, pixels, count);
    return current == nullptr ? read : current->pixels(read, pixels, count);
}
}

namespace kelp_fuzz {

RasterReads::RasterReads(const RasterJob& job) : job_(job) {
    current = this;
}

RasterReads::~RasterReads() {
    current = nullptr;
}

unsigned RasterReads::header(unsigned read, cups_page_header2_t& header) {
    if (read == 0) {
        return 0;
    }
    const std::uint64_t libcups_row = header.cupsBytesPerLine;
    change(header);
    const std::uint64_t size = std::uint64_t{header.cupsBytesPerLine} * header.cupsHeight;
    if (std::max(size, libcups_row) > longest_page && size < no_memory) {
        return 0;
    }
    largest_ = std::max(largest_, size);
    headers_.push_back(header);
    return read;
}

void RasterReads::change(cups_page_header2_t& header) const {
    if (job_.byte(RasterJob::change_page) % 4 != headers_.size() % 4) {
        return;
    }
    const std::uint32_t value = job_.number(RasterJob::change_value, 4);
    switch (static_cast<ChangedField>(job_.byte(RasterJob::change))) {
        case ChangedField::width:
            header.cupsWidth = value;
            break;
        case ChangedField::height:
            header.cupsHeight = value;
            break;
        case ChangedField::bytes_per_line:
            header.cupsBytesPerLine = value;
            break;
        case ChangedField::bits_per_pixel:
            header.cupsBitsPerPixel = value;
            break;
        case ChangedField::resolution_x:
            header.HWResolution[0] = value;
            break;
        case ChangedField::resolution_y:
            header.HWResolution[1] = value;
            break;
        case ChangedField::copies:
            header.NumCopies = value;
            break;
        case ChangedField::color_space:
            // Perhaps none of its type.
            std::memcpy(&header.cupsColorSpace, &value, sizeof value);
            break;
        case ChangedField::page_size_name: {
            static constexpr const char* names[] = {"A4", "Letter", "Tattoo_A5", "Tattoo_A6", "A"};
            std::strncpy(header.cupsPageSizeName, names[value % std::size(names)],
                         sizeof header.cupsPageSizeName);
            break;
        }
        case ChangedField::unended_name:
            std::memset(header.cupsPageSizeName, 'A', sizeof header.cupsPageSizeName);
            break;
    }
}

unsigned RasterReads::pixels(unsigned read, unsigned char* bytes, unsigned count) const {
    const unsigned shorter = job_.byte(RasterJob::short_page);
    if (shorter == 0 || read == 0 || shorter >= count) {
        return read;
    }
    // What is missing is the same for everybody.
    std::memset(bytes + shorter, 0x5A, count - shorter);
    return shorter;
}

OpenRaster::OpenRaster(const std::string& stream) : stream_(stream) {
    const auto deliver = [](void* context, unsigned char* bytes, std::size_t size) {
        auto& self = *static_cast<OpenRaster*>(context);
        const std::size_t count = std::min(size, self.stream_.size() - self.position_);
        std::memcpy(bytes, self.stream_.data() + self.position_, count);
        self.position_ += count;
        return static_cast<ssize_t>(count);
    };
    raster_ = cupsRasterOpenIO(deliver, this, CUPS_RASTER_READ);
}

OpenRaster::~OpenRaster() {
    cupsRasterClose(raster_);
}

}  // namespace kelp_fuzz
