#include "fitter/raster_input.h"

#include <poll.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <string>

#include "filter/memory_checked.h"
#include "fitter/fit_error.h"

namespace {

// libcups reads row by row; a system call for each would be most of the work.
constexpr std::size_t kInputBufferSize = 65536;

}  // namespace

RasterInput::RasterInput(int descriptor) : descriptor_(descriptor), buffer_(kInputBufferSize) {
    memoryChecked([&] {
        raster_.reset(cupsRasterOpenIO(deliver, this, CUPS_RASTER_READ));
        checkReading();
        return raster_.get();
    });
    // Nothing at all is a job without pages: whoever should have sent them says why there are none.
    // Anything else that is no raster would vanish without a word, so it is an error.
    if (!raster_ && end_ > 0) {
        throw FitError("The data to print is not CUPS raster.");
    }
}

bool RasterInput::readHeader(cups_page_header2_t& header) {
    if (!raster_) {
        return false;
    }
    asked_ = false;
    const bool read = cupsRasterReadHeader2(raster_.get(), &header) != 0;
    checkReading();
    if (headerSize_ == 0) {
        // libcups holds nothing back yet, so this is the size of a whole header.
        headerSize_ = firstRequest_;
    }
    // The stream ends well where a whole header was asked for and nothing came: less was asked for
    // where libcups had the beginning of one from unpacking the page before.
    const bool ended = asked_ && firstRequest_ == headerSize_ && firstDelivery_ == 0;
    if (!read && !ended) {
        throw FitError("The raster to print is damaged: a page's header is cut or makes no sense.");
    }
    return read;
}

bool RasterInput::readRow(unsigned char* row, unsigned int size) {
    const bool read = cupsRasterReadPixels(raster_.get(), row, size) == size;
    checkReading();
    return read;
}

ssize_t RasterInput::deliver(void* context, unsigned char* bytes, std::size_t size) {
    auto& input = *static_cast<RasterInput*>(context);
    const std::size_t available = input.fill();
    const std::size_t count = std::min(size, available);
    std::memcpy(bytes, input.buffer_.data() + input.position_, count);
    input.position_ += count;
    if (!input.asked_) {
        input.asked_ = true;
        input.firstRequest_ = size;
        input.firstDelivery_ = count;
    }
    return input.error_ != 0 ? -1 : static_cast<ssize_t>(count);
}

/// Reads on when the buffer is used up.
/// @return the bytes that are in it, 0 at the end of the stream or after an error
std::size_t RasterInput::fill() {
    while (position_ == end_ && error_ == 0) {
        const ssize_t count = read(descriptor_, buffer_.data(), buffer_.size());
        if (count >= 0) {
            if (count == 0) {
                break;
            }
            position_ = 0;
            end_ = static_cast<std::size_t>(count);
        } else if (errno == EAGAIN) {
            // Somebody made the descriptor one that does not wait.
            pollfd waiting{descriptor_, POLLIN, 0};
            static_cast<void>(poll(&waiting, 1, -1));  // if it fails, reading tells why
        } else if (errno != EINTR) {
            error_ = errno;
        }
    }
    return end_ - position_;
}

void RasterInput::checkReading() const {
    if (error_ != 0) {
        throw FitError("Unable to read the raster to print: " + std::string(std::strerror(error_)) +
                       ".");
    }
}
