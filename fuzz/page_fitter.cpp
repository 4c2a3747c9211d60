// The page fitter: any raster stream, brought to any page.
//
// Checked: what comes out is raster that libcups reads, of whole rows; every page is one that the
// filter prints, in the page's size and polarity; the samples of whole pages, and of the rows there
// are of a cut one, are those worked out dot by dot; a stream without a fault is fitted to its end,
// and one that ends within a page is a failure.

#include <sys/mman.h>
#include <unistd.h>

#include <algorithm>
#include <optional>
#include <string>
#include <vector>

#include "filter/page_header.h"
#include "fitter/fit_error.h"
#include "fitter/header_number.h"
#include "fitter/page_fitter.h"
#include "fuzz/captured_log.h"
#include "fuzz/check.h"
#include "fuzz/raster_job.h"
#include "fuzz/raster_reads.h"
#include "tests/fitter/rasters.h"

namespace {

using kelp_fuzz::RasterJob;
using kelp_fuzz::require;
using kelp_test::RawPage;

// The target's bytes of the plan.
enum Plan : std::size_t { width = RasterJob::own, height, polarity, resolution, plan_end };
static_assert(plan_end <= RasterJob::plan_size);

// A file without a name, used again by every run.
class MemoryFile {
  public:
    MemoryFile() : descriptor_(memfd_create("raster", MFD_CLOEXEC)) {}

    int descriptor() const { return descriptor_; }
    void hold(const std::string& content) const {
        require(ftruncate(descriptor_, 0) == 0 &&
                    pwrite(descriptor_, content.data(), content.size(), 0) ==
                        static_cast<ssize_t>(content.size()) &&
                    lseek(descriptor_, 0, SEEK_SET) == 0,
                "no memory file");
    }
    std::string content() const {
        std::string text(static_cast<std::size_t>(lseek(descriptor_, 0, SEEK_END)), '\0');
        require(
            pread(descriptor_, text.data(), text.size(), 0) == static_cast<ssize_t>(text.size()),
            "no memory file");
        return text;
    }

  private:
    int descriptor_;
};

// None where the printer's description makes no page.
std::optional<TargetPage> target_of(const RasterJob& job) {
    cups_page_header2_t header{};
    header.cupsWidth = job.byte(width) % 70;
    header.cupsHeight = job.byte(height) % 20;
    header.cupsColorSpace = job.byte(polarity) % 2 == 0 ? CUPS_CSPACE_K : CUPS_CSPACE_W;
    header.cupsBitsPerColor = header.cupsBitsPerPixel = 8;
    header.HWResolution[0] = header.HWResolution[1] = job.byte(resolution) % 4 == 0 ? 72 : 203;
    header.cupsPageSize[0] = header.cupsPageSize[1] = 10.0F;
    try {
        return targetPageOf(header);
    } catch (const FitError&) {
        require(header.cupsWidth < 4 || header.cupsHeight == 0, "a page refused");
        return std::nullopt;
    }
}

// How light a dot of a page is, 255 is white. The page is of a kind that can be fitted.
unsigned lightness(const RawPage& page, std::size_t x, std::size_t y) {
    const auto byte = [&](std::size_t at) {
        return static_cast<unsigned>(
            static_cast<unsigned char>(page.pixels[y * page.header.cupsBytesPerLine + at]));
    };
    const bool is_black_space = headerNumber(page.header.cupsColorSpace) == CUPS_CSPACE_K;
    if (page.header.cupsBitsPerPixel == 1) {
        return ((byte(x / 8) >> (7 - x % 8) & 1) != 0) == is_black_space ? 0 : 255;
    }
    if (page.header.cupsBitsPerPixel == 8) {
        return is_black_space ? 255 - byte(x) : byte(x);
    }
    return (299 * byte(3 * x) + 587 * byte(3 * x + 1) + 114 * byte(3 * x + 2) + 500) / 1000;
}

std::string fitted(const RawPage& page, const TargetPage& target) {
    std::string samples;
    for (std::size_t y = 0; y < target.height; ++y) {
        for (std::size_t x = 0; x < target.width; ++x) {
            const bool is_inside = x < page.header.cupsWidth && y < page.header.cupsHeight;
            const unsigned light = is_inside ? lightness(page, x, y) : 255;
            samples +=
                static_cast<char>(target.polarity == Polarity::kBlackSpace ? 255 - light : light);
        }
    }
    return samples;
}

// The pages that libcups finds, each with the rows that it hands over before the stream breaks off.
std::vector<RawPage> read_by_libcups(const std::string& stream) {
    std::vector<RawPage> pages;
    const kelp_fuzz::OpenRaster raster(stream);
    cups_page_header2_t header;
    while (raster.get() != nullptr && cupsRasterReadHeader2(raster.get(), &header) != 0) {
        RawPage& page = pages.emplace_back(RawPage{header, {}});
        if (header.cupsBytesPerLine > 1U << 24U) {
            return pages;  // no page
        }
        std::string row(header.cupsBytesPerLine, '\0');
        for (unsigned y = 0; y < header.cupsHeight && !row.empty(); ++y) {
            if (cupsRasterReadPixels(raster.get(), reinterpret_cast<unsigned char*>(row.data()),
                                     header.cupsBytesPerLine) != header.cupsBytesPerLine) {
                return pages;
            }
            page.pixels += row;
            if (page.pixels.size() > 1U << 22U) {
                return pages;
            }
        }
    }
    return pages;
}

bool is_whole(const RawPage& page) {
    return page.pixels.size() == std::size_t{page.header.cupsBytesPerLine} * page.header.cupsHeight;
}

bool can_be_fitted(const cups_page_header2_t& header, const TargetPage& target) {
    for (int axis = 0; axis < 2; ++axis) {
        if (header.HWResolution[axis] != target.header.HWResolution[axis]) {
            return false;
        }
    }
    const std::vector<kelp_test::Kind> kinds = kelp_test::kinds();
    return std::any_of(kinds.begin(), kinds.end(), [&](const kelp_test::Kind& kind) {
        return headerNumber(header.cupsColorSpace) == kind.space &&
               header.cupsBitsPerColor == kind.bits_per_color &&
               header.cupsBitsPerPixel == kind.bits_per_pixel &&
               headerNumber(header.cupsColorOrder) == CUPS_ORDER_CHUNKED && header.cupsWidth > 0 &&
               header.cupsBytesPerLine * std::uint64_t{8} >=
                   std::uint64_t{header.cupsWidth} * kind.bits_per_pixel;
    });
}

void check_page(const RawPage& out, const RawPage& in, const TargetPage& target) {
    const cups_page_header2_t& header = out.header;
    require(isPrintablePage(header), "a page that the filter refuses");
    require(header.cupsWidth == target.width && header.cupsHeight == target.height &&
                header.cupsBytesPerLine == target.width && header.cupsBitsPerPixel == 8 &&
                header.cupsBitsPerColor == 8 && header.cupsNumColors == 1,
            "a page of another size");
    require(header.cupsColorSpace ==
                (target.polarity == Polarity::kBlackSpace ? CUPS_CSPACE_K : CUPS_CSPACE_W),
            "a page of another polarity");
    require(header.NumCopies == in.header.NumCopies, "other copies");
    require(out.pixels.size() % target.width == 0, "a row that is cut");
    RawPage known = in;
    known.header.cupsHeight = static_cast<unsigned>(std::min<std::size_t>(
        in.pixels.size() / std::max(in.header.cupsBytesPerLine, 1U), in.header.cupsHeight));
    const std::string expected = fitted(known, target);
    require(out.pixels == expected.substr(0, out.pixels.size()), "other samples");
    if (is_whole(in)) {
        require(is_whole(out), "a whole page is cut");
    } else {
        require(out.pixels.size() ==
                    std::size_t{target.width} * std::min(known.header.cupsHeight, target.height),
                "not the rows that there are");
    }
}

}  // namespace

extern "C" std::size_t LLVMFuzzerCustomMutator(std::uint8_t* data, std::size_t size,
                                               std::size_t max_size, unsigned seed) {
    return kelp_fuzz::mutate_raster_job(data, size, max_size, seed);
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const MemoryFile from;
    static const MemoryFile to;
    const RasterJob job(data, size);
    const std::string stream = job.stream();
    const std::optional<TargetPage> target = target_of(job);
    if (!target) {
        return 0;
    }
    require(target->width % 8 == 4, "an unsafe width");
    const std::vector<RawPage> in = read_by_libcups(stream);
    for (const RawPage& page : in) {
        if (std::uint64_t{page.header.cupsBytesPerLine} * page.header.cupsHeight > 1U << 22U &&
            page.pixels.size() > 1U << 21U) {
            return 0;  // a page that would take the time of a thousand others
        }
    }

    from.hold(stream);
    to.hold({});
    bool failed = false;
    {
        kelp_fuzz::CapturedLog log;
        try {
            RasterInput input(from.descriptor());
            RasterOutput output(to.descriptor());
            fitPages(input, *target, output);
        } catch (const FitError& error) {
            failed = true;
            const std::string reason = error.what();
            require(reason.ends_with(".") && reason.find('\n') == std::string::npos,
                    "a reason that is no sentence");
        }
    }
    require(failed || !job.ends_early(), "a stream that ends early is no failure");
    const std::string written = to.content();
    if (written.empty()) {
        require(failed || in.empty(), "nothing written");
        return 0;
    }
    const std::vector<RawPage> out = kelp_test::pages_in(written);
    require(out.size() <= in.size(), "more pages than there were");
    require(failed || out.size() == in.size(), "a page is lost");
    if (stream == kelp_test::raw_raster_stream(in) &&
        std::all_of(in.begin(), in.end(), [&](const auto& page) {
            return is_whole(page) && can_be_fitted(page.header, *target);
        })) {
        require(!failed, "a stream without a fault fails");
    }
    const std::vector<RawPage> reread = read_by_libcups(written);
    require(reread.size() == out.size(), "libcups does not read what was written");
    for (std::size_t i = 0; i < out.size(); ++i) {
        check_page(out[i], in[i], *target);
        require(reread[i].pixels == out[i].pixels, "libcups reads other samples");
        require(is_whole(in[i]) || (failed && i + 1 == out.size()), "a cut page is no failure");
    }
    return 0;
}
