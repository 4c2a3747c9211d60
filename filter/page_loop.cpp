#include "filter/page_loop.h"

#include <cstddef>
#include <cstdlib>

#include "filter/log.h"
#include "filter/memory_checked.h"
#include "filter/output_file.h"
#include "filter/page.h"
#include "filter/page_header.h"
#include "printer/zeroed_buffer.h"

namespace {

/// The pixels of one page, kept from page to page.
class PageBuffer {
  public:
    /// Makes room for `size` bytes, zeroed where the buffer had to grow; false without memory.
    bool resize(std::size_t size) {
        if (size > size_) {
            // Not realloc: setting the new bytes to zero would touch memory for a page that the
            // stream only promises.
            bytes_.reset();
            bytes_ = allocateZeroed(size);
            size_ = bytes_ ? size : 0;
        }
        return bytes_ != nullptr;
    }
    unsigned char* data() { return bytes_.get(); }

  private:
    ZeroedBuffer bytes_;
    std::size_t size_ = 0;
};

/// Leaves the page's dimensions in a file for whoever looks into a bad print; overwritten by every
/// page.
void writeDebugLine(const cups_page_header2_t& header) {
    if (const OwnedFile file = openOutputFile("/tmp/xxxxx.log", "w+")) {
        std::fprintf(
            file.get(), "cupsWidth:%d, cupsHeight:%d, cupsBytesPerLine:%d, cupsBitsPerPixel:%d\n",
            static_cast<int>(header.cupsWidth), static_cast<int>(header.cupsHeight),
            static_cast<int>(header.cupsBytesPerLine), static_cast<int>(header.cupsBitsPerPixel));
    }
}

}  // namespace

int printPages(cups_raster_t* raster, Settings& settings, KelpPrinter& printer) {
    PageBuffer pixels;
    cups_page_header2_t header;
    int page = 0;
    while (raster != nullptr &&
           memoryChecked([&] { return cupsRasterReadHeader2(raster, &header); }) != 0) {
        if (header.cupsBitsPerPixel != 8) {
            kelpLogCommon(3, "Unsupported bits per pixel : %d ! Requires 8 bits per pixel!",
                          static_cast<int>(header.cupsBitsPerPixel));
            return EXIT_FAILURE;
        }
        if (header.cupsHeight == 0 || header.cupsBytesPerLine == 0) {
            return EXIT_SUCCESS;
        }
        if (!isPrintablePage(header)) {
            return EXIT_FAILURE;
        }
        const unsigned int pageSize = header.cupsBytesPerLine * header.cupsHeight;
        writeDebugLine(header);
        if (!pixels.resize(pageSize)) {
            return EXIT_FAILURE;
        }
        setUpPage(settings, printer, header, ++page);

        if (memoryChecked([&] { return cupsRasterReadPixels(raster, pixels.data(), pageSize); }) >
            0) {
            printPixels(printer, header, pixels.data());
        }
    }
    return EXIT_SUCCESS;
}
