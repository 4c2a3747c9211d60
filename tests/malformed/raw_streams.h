#pragma once

#include <cups/raster.h>

#include <string>

#include "tests/support/raster_stream.h"

namespace kelp_test {

// The first four bytes of a stream, and with them its kind: "RaSt" (1), "RaS2" (2, compressed),
// "RaS3" (3); as a big-endian machine writes them, or a little-endian one.
struct StreamKind {
    unsigned version;
    bool big_endian;
};

std::string sync_word(const StreamKind& kind);

// A header in the stream's byte order; version 1 ends before the fields that version 2 brought.
std::string header_bytes(const StreamKind& kind, const cups_page_header2_t& header);

// A whole stream of one page.
std::string stream(const StreamKind& kind, const cups_page_header2_t& header,
                   const std::string& pixels);

// Bytes given as hexadecimal digits, in groups as it reads best.
std::string hex(const std::string& digits);

}  // namespace kelp_test
