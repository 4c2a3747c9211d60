#pragma once

#include <cstddef>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

#include "printer/kelp_printer.h"
#include "tests/unit/printer/support/recording_printer.h"
#include "tests/unit/printer/support/stderr_capture.h"

namespace kelp_test {

// A page of 8-bit grey.
struct GreyPage {
    int width;
    int height;
    Bytes pixels;
    int bytesPerLine;

    GreyPage(int page_width, int page_height, Bytes page_pixels)
        : GreyPage(page_width, page_height, std::move(page_pixels), page_width) {}
    GreyPage(int page_width, int page_height, Bytes page_pixels, int bytes_per_line)
        : width(page_width),
          height(page_height),
          pixels(std::move(page_pixels)),
          bytesPerLine(bytes_per_line) {
        if (pixels.size() !=
            static_cast<std::size_t>(bytesPerLine) * static_cast<std::size_t>(height)) {
            throw std::invalid_argument("a page whose pixels are not its lines");
        }
    }
};

// What PageProcess made of a page.
struct Processed {
    int length = -1;
    Bytes out;
    std::string log;
};

inline Processed process(KelpPrinter& printer, DitherType type, const GreyPage& page) {
    Processed result;
    result.out.resize(printer.processedSize(static_cast<unsigned long>(page.bytesPerLine),
                                            static_cast<unsigned long>(page.height),
                                            static_cast<unsigned long>(page.width)));
    result.log = stderr_of([&] {
        result.length = printer.PageProcess(type, page.pixels.data(), page.bytesPerLine, page.width,
                                            page.height, result.out.data());
    });
    return result;
}

// With the halftone set as the filter sets it.
inline Processed process(KelpPrinter& printer, const GreyPage& page) {
    return process(printer, printer.getHalftoneType(), page);
}

// The indices of an image row by row, each row in its own list.
inline std::vector<std::vector<int>> indices(const CxImage& image) {
    std::vector<std::vector<int>> rows;
    for (unsigned y = 0; y < image.GetHeight(); ++y) {
        std::vector<int>& row = rows.emplace_back();
        for (unsigned x = 0; x < image.GetWidth(); ++x) {
            row.push_back(image.GetPixelIndex(x, y));
        }
    }
    return rows;
}

using Rows = std::vector<std::vector<int>>;

}  // namespace kelp_test
