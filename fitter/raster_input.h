#ifndef KELP_FITTER_RASTER_INPUT_H
#define KELP_FITTER_RASTER_INPUT_H

#include <cups/raster.h>

#include <cstddef>
#include <memory>
#include <vector>

/// A CUPS raster stream as it is read. Tells a stream that has ended from one that is damaged,
/// which libcups' return values do not.
class RasterInput {
  public:
    /// Reads the stream's first bytes. Throws FitError when they cannot be read or are no raster.
    /// @param descriptor stays the caller's
    explicit RasterInput(int descriptor);
    ~RasterInput() = default;
    RasterInput(const RasterInput&) = delete;
    RasterInput& operator=(const RasterInput&) = delete;

    /// The next page's header; false behind the last page. Throws FitError for a header that is cut
    /// or that libcups refuses.
    bool readHeader(cups_page_header2_t& header);

    /// One row of the page; false when the stream ends within it. Throws FitError when reading
    /// fails.
    bool readRow(unsigned char* row, unsigned int size);

  private:
    struct CloseRaster {
        void operator()(cups_raster_t* raster) const { cupsRasterClose(raster); }
    };

    static ssize_t deliver(void* context, unsigned char* bytes, std::size_t size);
    std::size_t fill();
    void checkReading() const;

    int descriptor_;
    int error_ = 0;
    std::vector<unsigned char> buffer_;
    std::size_t position_ = 0;
    std::size_t end_ = 0;
    // What libcups asked for first since this was last reset, and what it was given.
    bool asked_ = false;
    std::size_t firstRequest_ = 0;
    std::size_t firstDelivery_ = 0;
    std::size_t headerSize_ = 0;
    std::unique_ptr<cups_raster_t, CloseRaster> raster_;
};

#endif
