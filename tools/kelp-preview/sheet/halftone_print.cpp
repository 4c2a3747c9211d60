#include "tools/kelp-preview/sheet/halftone_print.h"

#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <sstream>
#include <string>
#include <system_error>

#include "preview/stream_decoder.h"
#include "printer/zeroed_buffer.h"
#include "printer/zpl_printer.h"

namespace {

/// Standard error leads nowhere while it lives: the filter's log belongs to a job's.
class SilentStandardError {
  public:
    SilentStandardError() : saved_(fcntl(STDERR_FILENO, F_DUPFD_CLOEXEC, 3)) {
        const int nowhere = open("/dev/null", O_WRONLY | O_CLOEXEC);
        if (saved_ >= 0 && nowhere >= 0) {
            dup2(nowhere, STDERR_FILENO);
        }
        if (nowhere >= 0) {
            close(nowhere);
        }
    }
    ~SilentStandardError() {
        std::fflush(stderr);
        if (saved_ >= 0) {
            dup2(saved_, STDERR_FILENO);
            close(saved_);
        }
    }
    SilentStandardError(const SilentStandardError&) = delete;
    SilentStandardError& operator=(const SilentStandardError&) = delete;

  private:
    int saved_;
};

/// A stream into memory.
class Recording {
  public:
    Recording() : file_(open_memstream(&bytes_, &size_)) {
        if (file_ == nullptr) {
            throw std::bad_alloc();
        }
    }
    ~Recording() {
        std::fclose(file_);
        std::free(bytes_);
    }
    Recording(const Recording&) = delete;
    Recording& operator=(const Recording&) = delete;

    std::FILE* file() const { return file_; }
    std::string bytes() const {
        if (std::fflush(file_) != 0) {
            throw std::bad_alloc();
        }
        return {bytes_, size_};
    }

  private:
    char* bytes_ = nullptr;
    std::size_t size_ = 0;
    std::FILE* file_;
};

std::string printRaster(const GreyPicture& raster, const Halftone& halftone,
                        const PrintOptions& options) {
    const SilentStandardError silent;
    const Recording recording;
    ZplPrinter printer;
    printer.getOutputStreams() = {recording.file()};
    printer.setBrightness(options.brightness)
        .setHalftoneType(halftone.type)
        .setMirrorPrint(options.mirror)
        .setNegativePrint(halftone.isStencil != options.negative);
    const ZeroedBuffer processed =
        allocateZeroed(printer.processedSize(raster.width, raster.height, raster.width));
    if (!processed ||
        printer.PageProcess(halftone.type, raster.pixels.data(), static_cast<int>(raster.width),
                            static_cast<int>(raster.width), static_cast<int>(raster.height),
                            processed.get()) == 0) {
        throw std::bad_alloc();
    }
    sPrinter = &printer;
    LastSet = 0;
    const CxImage& image = *printer.processedImage();
    printer.doPrintImage(image.GetBits(0), image.GetEffWidth(), image.GetHeight(),
                         image.GetWidth());
    sPrinter = nullptr;
    return recording.bytes();
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
