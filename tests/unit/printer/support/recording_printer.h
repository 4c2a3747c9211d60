#pragma once

#include <vector>

#include "printer/kelp_printer.h"

namespace kelp_test {

using Bytes = std::vector<unsigned char>;

// A printer that keeps what it is to print.
class RecordingPrinter : public KelpPrinter {
  public:
    struct Print {
        const unsigned char* address;
        Bytes bytes;
        unsigned long bytesPerLine;
        unsigned long height;
        unsigned long width;
    };

    void doPrintImage(const unsigned char* pixels, unsigned long bytesPerLine, unsigned long height,
                      unsigned long width) override {
        prints.push_back(
            {pixels, Bytes(pixels, pixels + bytesPerLine * height), bytesPerLine, height, width});
    }
    void set_resolution(int dots_per_inch) { resolution_ = dots_per_inch; }

    std::vector<Print> prints;
};

}  // namespace kelp_test
