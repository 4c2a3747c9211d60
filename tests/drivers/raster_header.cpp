// Reads a raster stream from standard input and prints a line a page: the header fields that the
// filter depends on, and the grey levels of two opposite corners.
//
//     raster_header [ROW]
//
// With a ROW it prints the runs of dark dots in that row instead, each as start+length.

#include <cups/raster.h>
#include <unistd.h>

#include <cstddef>
#include <cstdio>
#include <cstdlib>
#include <vector>

namespace {

void printDarkRuns(const cups_page_header2_t& header, const unsigned char* row) {
    const auto dark = [&](unsigned x) {
        return header.cupsColorSpace == CUPS_CSPACE_K ? row[x] > 127 : row[x] < 128;
    };
    for (unsigned x = 0; x < header.cupsWidth; ++x) {
        if (dark(x)) {
            const unsigned start = x;
            while (x < header.cupsWidth && dark(x)) {
                ++x;
            }
            std::printf("%u+%u ", start, x - start);
        }
    }
    std::puts("");
}

}  // namespace

int main(int argc, char** argv) {
    cups_raster_t* raster = cupsRasterOpen(STDIN_FILENO, CUPS_RASTER_READ);
    if (raster == nullptr) {
        std::fputs("raster_header: not a raster stream\n", stderr);
        return 1;
    }
    cups_page_header2_t header;
    int pages = 0;
    while (cupsRasterReadHeader2(raster, &header) != 0) {
        std::vector<unsigned char> pixels(std::size_t{header.cupsBytesPerLine} * header.cupsHeight);
        const auto size = static_cast<unsigned>(pixels.size());
        if (size == 0 || cupsRasterReadPixels(raster, pixels.data(), size) != size) {
            std::fprintf(stderr, "raster_header: page %d is cut short\n", pages + 1);
            return 1;
        }
        ++pages;
        if (argc > 1) {
            const auto row = static_cast<unsigned>(std::strtoul(argv[1], nullptr, 10));
            if (row >= header.cupsHeight) {
                std::fprintf(stderr, "raster_header: page %d has no row %u\n", pages, row);
                return 1;
            }
            printDarkRuns(header, &pixels[std::size_t{row} * header.cupsBytesPerLine]);
            continue;
        }
        std::printf(
            "page=%d size=%s width=%u height=%u bytesPerLine=%u bitsPerPixel=%u colorSpace=%d "
            "colorOrder=%d resolution=%ux%u upperLeft=%d lowerRight=%d\n",
            pages, header.cupsPageSizeName, header.cupsWidth, header.cupsHeight,
            header.cupsBytesPerLine, header.cupsBitsPerPixel,
            static_cast<int>(header.cupsColorSpace), static_cast<int>(header.cupsColorOrder),
            header.HWResolution[0], header.HWResolution[1], pixels.front(), pixels.back());
    }
    cupsRasterClose(raster);
    return pages > 0 ? 0 : 1;
}
