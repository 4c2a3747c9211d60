#pragma once

#include <gtest/gtest.h>
#include <sys/mman.h>
#include <unistd.h>

#include <cstddef>
#include <memory>
#include <string>

#include "filter/page_loop.h"
#include "printer/zpl_printer.h"
#include "tests/support/descriptor.h"
#include "tests/support/files.h"
#include "tests/support/raster_stream.h"
#include "tests/unit/printer/support/memory_stream.h"
#include "tests/unit/printer/support/moved_files.h"
#include "tests/unit/printer/support/stderr_capture.h"

namespace kelp_test {

// Prints raster streams to memory.
class PageLoop : public testing::Test {
  protected:
    PageLoop() {
        printer.getOutputStreams() = {output.file()};
        sPrinter = &printer;
        settings.Darkness = -1;
    }
    ~PageLoop() override {
        sPrinter = nullptr;
        LastSet = 0;
        page_index = 0;
    }

    // The status of printing a stream; what it wrote is in `text` and `log`.
    int print(const std::string& stream) {
        const Descriptor file(memfd_create("raster", MFD_CLOEXEC));
        EXPECT_EQ(write(file.get(), stream.data(), stream.size()),
                  static_cast<ssize_t>(stream.size()));
        lseek(file.get(), 0, SEEK_SET);
        const std::unique_ptr<cups_raster_t, decltype(&cupsRasterClose)> raster(
            cupsRasterOpen(file.get(), CUPS_RASTER_READ), cupsRasterClose);
        int status = -1;
        log = stderr_of([&] { status = printPages(raster.get(), settings, printer); });
        text = output.take();
        return status;
    }
    bool logged(const std::string& line) const {
        return ("\n" + log).find("\n" + line + "\n") != std::string::npos;
    }
    static std::size_t count(const std::string& text, const std::string& part) {
        std::size_t times = 0;
        for (std::size_t at = text.find(part); at != std::string::npos;
             at = text.find(part, at + 1)) {
            ++times;
        }
        return times;
    }

    MovedFiles files;
    MemoryStream output;
    ZplPrinter printer;
    Settings settings{};
    std::string text;
    std::string log;
};

// The example of the encoder: row 0 all dots, row 1 the first four. Threshold: above 128 is a dot.
inline Page example_page() {
    Page page;
    page.pixels = std::string(20, '\xFF');
    return page;
}

// 16 and 2 dots at 203 dots per inch: 2.0020 and 0.2502 mm.
inline const std::string example_setup =
    "SIZE 2.0 mm, 0.3 mm\r\n^XX\r\n^PW16\r\n^LL2\r\n^MNN\r\n^PON\r\n^XZ\r\n\r\n";
inline const std::string example_label =
    "^XX\r\n^PQ1\n~DGR:CUPS.GRF,4,2,\nJFF0,^FO0,0^XGR:CUPS.GRF,1,1^FS\n^XZ\r\n";

}  // namespace kelp_test
