#include "tests/fitter/rasters.h"

#include <algorithm>
#include <cstring>
#include <memory>
#include <stdexcept>

#include "tests/support/ppd_file.h"

namespace kelp_test {
namespace {

std::string pick_one(const std::string& option, const std::string& choice,
                     const std::string& dictionary) {
    return "*OpenUI *" + option + "/" + option + ": PickOne\n*OrderDependency: 10 AnySetup *" +
           option + "\n*Default" + option + ": " + choice + "\n*" + option + " " + choice + "/" +
           choice + ": \"<<" + dictionary + ">>setpagedevice\"\n*CloseUI: *" + option + "\n";
}

struct CloseRaster {
    void operator()(cups_raster_t* raster) const { cupsRasterClose(raster); }
};

}  // namespace

std::vector<Kind> kinds() {
    return {k8, w8, sw8, k1, w1, sw1, rgb, srgb};
}

RawPage page_of(const Kind& kind, unsigned width, unsigned height, const std::string& pixels,
                unsigned padding) {
    Page page;
    page.width = width;
    page.height = height;
    page.bytes_per_line = kind.row_bytes(width) + padding;
    page.resolution_x = page.resolution_y = 72;
    page.color_space = kind.space;
    page.pixels = pixels;
    RawPage raw = raw_page(page);
    raw.header.cupsBitsPerColor = kind.bits_per_color;
    raw.header.cupsBitsPerPixel = kind.bits_per_pixel;
    raw.header.cupsNumColors = kind.colors();
    return raw;
}

std::string PagePpd::text() const {
    const std::string across = std::to_string(resolution_x);
    const std::string down = std::to_string(resolution_y);
    return Ppd().page_size("Page", width, height).custom_page_size().text() +
           pick_one("ColorModel", "Gray",
                    "/cupsColorSpace " + std::to_string(color_space) + "/cupsBitsPerColor " +
                        std::to_string(bits_per_color) + "/cupsColorOrder 0/cupsCompression 0") +
           pick_one("Resolution", across == down ? across + "dpi" : across + "x" + down + "dpi",
                    "/HWResolution[" + across + " " + down + "]");
}

std::vector<RawPage> pages_in(const std::string& stream) {
    const unsigned sync = CUPS_RASTER_SYNC;
    if (stream.size() < sizeof(sync) || std::memcmp(stream.data(), &sync, sizeof(sync)) != 0) {
        throw std::runtime_error("no uncompressed raster of this byte order");
    }
    std::vector<RawPage> pages;
    std::size_t position = sizeof(sync);
    while (position < stream.size()) {
        RawPage page;
        if (stream.size() - position < sizeof(page.header)) {
            throw std::runtime_error("raster ends in a header");
        }
        std::memcpy(&page.header, stream.data() + position, sizeof(page.header));
        position += sizeof(page.header);
        const std::size_t size = std::size_t{page.header.cupsBytesPerLine} * page.header.cupsHeight;
        page.pixels = stream.substr(position, size);
        position += page.pixels.size();
        pages.push_back(page);
    }
    return pages;
}

std::string written_by_libcups(const std::vector<RawPage>& pages, cups_mode_t mode) {
    std::string stream;
    const auto take = [](void* context, unsigned char* bytes, std::size_t size) {
        static_cast<std::string*>(context)->append(reinterpret_cast<char*>(bytes), size);
        return static_cast<ssize_t>(size);
    };
    std::unique_ptr<cups_raster_t, CloseRaster> raster(cupsRasterOpenIO(take, &stream, mode));
    for (RawPage page : pages) {
        const auto size = static_cast<unsigned>(page.pixels.size());
        auto* bytes = reinterpret_cast<unsigned char*>(page.pixels.data());
        if (!raster || cupsRasterWriteHeader2(raster.get(), &page.header) == 0 ||
            cupsRasterWritePixels(raster.get(), bytes, size) != size) {
            throw std::runtime_error("libcups does not write this page");
        }
    }
    raster.reset();
    return stream;
}

}  // namespace kelp_test
