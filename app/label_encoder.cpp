#include "app/label_encoder.h"

#include <cstdio>
#include <cstdlib>
#include <mutex>
#include <new>
#include <utility>

#include "filter/page.h"
#include "filter/published_printer.h"
#include "printer/zpl_printer.h"

namespace kelp_app {

namespace {

std::mutex encoding;

/// A stream into memory.
class MemoryStream {
  public:
    MemoryStream() : stream_(open_memstream(&bytes_, &size_)) {
        if (stream_ == nullptr) {
            throw std::bad_alloc();
        }
    }
    ~MemoryStream() {
        if (stream_ != nullptr) {
            std::fclose(stream_);
        }
        std::free(bytes_);
    }
    MemoryStream(const MemoryStream&) = delete;
    MemoryStream& operator=(const MemoryStream&) = delete;

    std::FILE* stream() { return stream_; }
    /// What was written; ends the stream.
    std::string take() {
        const bool isWhole = std::ferror(stream_) == 0;
        if (std::fclose(std::exchange(stream_, nullptr)) != 0 || !isWhole) {
            throw std::bad_alloc();
        }
        return {bytes_, size_};
    }

  private:
    char* bytes_ = nullptr;
    std::size_t size_ = 0;
    std::FILE* stream_;
};

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
