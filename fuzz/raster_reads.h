#pragma once

#include <cups/raster.h>

#include <cstdint>
#include <string>
#include <vector>

#include "fuzz/memory_limit.h"
#include "fuzz/raster_job.h"

namespace kelp_fuzz {

// What libcups reads is not all that a filter must be ready for: which headers it refuses by itself
// and whether it hands over a part of a page differs between its versions. While an object lives,
// raster is read through it, by the code under test and by the reference alike.
class RasterReads {
  public:
    // A page of more bytes than this, but not of so many that there is no memory for it, ends the
    // stream: it would take the time of a thousand others. So does one with such a row in the
    // stream itself, whatever is changed: libcups takes memory for the row when it unpacks.
    static constexpr std::uint64_t longest_page = 60000;
    static constexpr std::uint64_t no_memory = most_memory + 1;

    explicit RasterReads(const RasterJob& job);
    ~RasterReads();
    RasterReads(const RasterReads&) = delete;
    RasterReads& operator=(const RasterReads&) = delete;

    unsigned header(unsigned read, cups_page_header2_t& header);
    unsigned pixels(unsigned read, unsigned char* bytes, unsigned count) const;

    // Every header that was handed over, and the largest page that one of them promised.
    const std::vector<cups_page_header2_t>& headers() const { return headers_; }
    std::uint64_t largest() const { return largest_; }

  private:
    void change(cups_page_header2_t& header) const;

    const RasterJob& job_;
    std::vector<cups_page_header2_t> headers_;
    std::uint64_t largest_ = 0;
};

// A stream in memory as libcups opens it; null for one that it does not open.
class OpenRaster {
  public:
    explicit OpenRaster(const std::string& stream);
    ~OpenRaster();
    OpenRaster(const OpenRaster&) = delete;
    OpenRaster& operator=(const OpenRaster&) = delete;

    cups_raster_t* get() const { return raster_; }

  private:
    const std::string& stream_;
    std::size_t position_ = 0;
    cups_raster_t* raster_;
};

}  // namespace kelp_fuzz
