#include "tests/preview/printed_page.h"

#include <cstdio>
#include <cstdlib>
#include <vector>

#include "printer/zpl_printer.h"

namespace kelp_test {

std::string printed(const kelp_preview::Bitmap& page) {
    std::vector<unsigned char> dots;
    for (std::uint64_t y = 0; y < page.height; ++y) {
        for (std::uint64_t x = 0; x < page.width; ++x) {
            dots.push_back(page.dot(x, y) ? 0xFF : 0);
        }
    }
    char* text = nullptr;
    std::size_t size = 0;
    std::FILE* stream = open_memstream(&text, &size);
    ZplPrinter printer;
    printer.getOutputStreams() = {stream};
    sPrinter = &printer;
    LastSet = 0;
    printer.doPrintImage(dots.data(), page.width, page.height, page.width);
    sPrinter = nullptr;
    std::fclose(stream);
    std::string result(text, size);
    std::free(text);
    return result;
}

}  // namespace kelp_test
