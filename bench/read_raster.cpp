// The least that any raster filter must do: open the PPD and read the raster on standard input. The
// process benchmark holds the filter against it.

#include <cups/cups.h>
#include <cups/ppd.h>
#include <cups/raster.h>

#include <cstdlib>
#include <vector>

int main() {
    ppd_file_t* ppd = ppdOpenFile(std::getenv("PPD"));
    ppdMarkDefaults(ppd);
    cups_raster_t* raster = cupsRasterOpen(0, CUPS_RASTER_READ);
    cups_page_header2_t header;
    std::vector<unsigned char> pixels;
    while (raster != nullptr && cupsRasterReadHeader2(raster, &header) != 0) {
        pixels.resize(std::size_t{header.cupsBytesPerLine} * header.cupsHeight);
        cupsRasterReadPixels(raster, pixels.data(), static_cast<unsigned>(pixels.size()));
    }
    cupsRasterClose(raster);
    ppdClose(ppd);
}
