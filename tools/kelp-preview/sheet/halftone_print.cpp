#include "tools/kelp-preview/sheet/halftone_print.h"

#include <new>
#include <sstream>
#include <string>

#include "filter/log.h"
#include "filter/published_printer.h"
#include "preview/stream_decoder.h"
#include "printer/memory_stream.h"
#include "printer/zpl_printer.h"

namespace {

std::string printRaster(const GreyPicture& raster, const Halftone& halftone,
                        const PrintOptions& options) {
    // The filter's log belongs to a job's.
    kelpSetLogSink([](int /*level*/, const char* /*message*/) {});
    MemoryStream label;
    ZplPrinter printer;
    printer.setSnapshots(false).getOutputStreams() = {label.stream()};
    printer.setBrightness(options.brightness)
        .setHalftoneType(halftone.type)
        .setMirrorPrint(options.mirror)
        .setNegativePrint(halftone.isStencil != options.negative);
    const PublishedPrinter published(&printer);
    LastSet = 0;
    printer.printImage(raster.pixels.data(), raster.width, raster.height, raster.width);
    std::string bytes = label.take();
    if (bytes.empty()) {
        throw std::bad_alloc();  // the printer leaves out a page that it has no memory for
    }
    return bytes;
}

}  // namespace

std::string printStream(GreyPicture page, const Halftone& halftone, const PrintOptions& options) {
    if (!halftone.isStencil) {
        // Label printers take ink: 255 is black.
        for (unsigned char& pixel : page.pixels) {
            pixel = static_cast<unsigned char>(255 - pixel);
        }
    }
    return printRaster(page, halftone, options);
}

kelp_preview::Bitmap printHalftone(const GreyPicture& page, const Halftone& halftone,
                                   const PrintOptions& options) {
    std::stringbuf stream(printStream(page, halftone, options));
    kelp_preview::StreamDecoder decoder(stream, {kelp_preview::kMostDots});
    kelp_preview::Bitmap dots = *decoder.next().value().dots;
    dots.width = page.width;  // the rest of the last byte is white
    return dots;
}
