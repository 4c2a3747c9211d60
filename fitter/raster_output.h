#ifndef KELP_FITTER_RASTER_OUTPUT_H
#define KELP_FITTER_RASTER_OUTPUT_H

#include <cups/raster.h>

#include <cstddef>
#include <memory>
#include <vector>

/// A CUPS raster stream of 8-bit rows as it is written. Every function throws FitError when the
/// descriptor does not take the bytes.
class RasterOutput {
  public:
    explicit RasterOutput(int descriptor);
    ~RasterOutput() = default;
    RasterOutput(const RasterOutput&) = delete;
    RasterOutput& operator=(const RasterOutput&) = delete;

    void startPage(cups_page_header2_t header);

    /// Room for the page's next row, which holds what an earlier row left there.
    unsigned char* nextRow();

    /// Sends the rows that wait; after a page's last row, or where the page breaks off.
    void flush();

    /// Closes the descriptor, which can report that what was written is lost.
    void close();

  private:
    struct CloseRaster {
        void operator()(cups_raster_t* raster) const { cupsRasterClose(raster); }
    };

    int descriptor_;
    std::unique_ptr<cups_raster_t, CloseRaster> raster_;
    std::vector<unsigned char> rows_;  // several, for one system call
    std::size_t rowSize_ = 0;
    std::size_t used_ = 0;
};

#endif
