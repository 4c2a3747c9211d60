#include "bench/job_files.h"

#include <cups/raster.h>
#include <fcntl.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <cstring>

namespace {

[[noreturn]] void fail(const std::string& path) {
    std::perror(path.c_str());
    std::exit(1);
}

}  // namespace

void writeRaster(const std::string& path, const KnownPage& known, int pages) {
    TestPage page = known.page();
    const int descriptor = open(path.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0600);
    cups_raster_t* stream = cupsRasterOpen(descriptor, CUPS_RASTER_WRITE);
    cups_page_header2_t header;
    std::memset(&header, 0, sizeof header);
    header.HWResolution[0] = header.HWResolution[1] = 203;
    header.NumCopies = 1;
    header.cupsWidth = header.cupsBytesPerLine = page.width;
    header.cupsHeight = page.height;
    header.cupsBitsPerColor = header.cupsBitsPerPixel = 8;
    header.cupsNumColors = 1;
    header.cupsColorSpace = CUPS_CSPACE_W;
    for (int i = 0; i < pages; ++i) {
        if (cupsRasterWriteHeader2(stream, &header) == 0 ||
            cupsRasterWritePixels(stream, page.pixels.data(),
                                  static_cast<unsigned>(page.pixels.size())) == 0) {
            fail(path);
        }
    }
    cupsRasterClose(stream);
    close(descriptor);
}

void writePpd(const std::string& path) {
    std::FILE* file = std::fopen(path.c_str(), "w");
    if (file == nullptr) {
        fail(path);
    }
    std::fputs(
        "*PPD-Adobe: \"4.3\"\n"
        "*OpenUI *PageSize: PickOne\n*DefaultPageSize: Page\n"
        "*PageSize Page: \"\"\n*CloseUI: *PageSize\n"
        "*PaperDimension Page: \"288 432\"\n*ImageableArea Page: \"0 0 288 432\"\n"
        "*OpenUI *HalftoneType: PickOne\n*DefaultHalftoneType: None\n",
        file);
    for (const char* option : kHalftoneOptions) {
        std::fprintf(file, "*HalftoneType %s: \"\"\n", option);
    }
    std::fputs("*CloseUI: *HalftoneType\n", file);
    if (std::fclose(file) != 0) {
        fail(path);
    }
}
