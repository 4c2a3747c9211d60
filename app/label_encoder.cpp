#include "app/label_encoder.h"

#include <mutex>

#include "filter/page.h"
#include "filter/published_printer.h"
#include "printer/memory_stream.h"
#include "printer/zpl_printer.h"

namespace kelp_app {

namespace {

std::mutex encoding;

}  // namespace

std::string encodeLabel(const Settings& settings, const cups_page_header2_t& header,
                        unsigned char* pixels, int page) {
    const std::lock_guard lock(encoding);
    MemoryStream label;
    ZplPrinter printer;
    printer.setSnapshots(false).getOutputStreams().assign(1, label.stream());
    const PublishedPrinter published(&printer);
    if (page == 1) {
        startPages(printer);
    }
    Settings ofPage = settings;
    setUpPage(ofPage, printer, header, page);
    printPixels(printer, header, pixels);
    return label.take();
}

}  // namespace kelp_app
