#include "fitter/raster_output.h"

#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <string>

#include "fitter/fit_error.h"

namespace {

constexpr std::size_t kOutputBufferSize = 65536;

[[noreturn]] void failWriting() {
    const int reason = errno;
    const std::string text =
        "Unable to write the fitted raster: " + std::string(std::strerror(reason)) + ".";
    if (reason == EPIPE) {
        throw ReaderGone(text);
    }
    throw FitError(text);
}

}  // namespace

// Uncompressed: the reader sits behind a pipe of this machine, where packing costs more than bytes.
RasterOutput::RasterOutput(int descriptor)
    : descriptor_(descriptor), raster_(cupsRasterOpen(descriptor, CUPS_RASTER_WRITE)) {
    if (!raster_) {
        failWriting();
    }
}

void RasterOutput::startPage(cups_page_header2_t header) {
    rowSize_ = header.cupsBytesPerLine;
    rows_.resize(rowSize_ * std::max<std::size_t>(1, kOutputBufferSize / rowSize_));
    used_ = 0;
    if (cupsRasterWriteHeader2(raster_.get(), &header) == 0) {
        failWriting();
    }
}

unsigned char* RasterOutput::nextRow() {
    if (used_ == rows_.size()) {
        flush();
    }
    unsigned char* row = rows_.data() + used_;
    used_ += rowSize_;
    return row;
}

void RasterOutput::flush() {
    if (used_ > 0) {
        const auto size = static_cast<unsigned int>(used_);
        used_ = 0;
        if (cupsRasterWritePixels(raster_.get(), rows_.data(), size) != size) {
            failWriting();
        }
    }
}

void RasterOutput::close() {
    raster_.reset();
    if (::close(descriptor_) != 0) {
        failWriting();
    }
}
