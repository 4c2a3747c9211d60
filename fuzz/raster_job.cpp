#include "fuzz/raster_job.h"

#include <cups/raster.h>

#include <algorithm>
#include <cstring>
#include <exception>
#include <optional>
#include <random>
#include <vector>

#include "tests/fitter/rasters.h"

// libFuzzer's own: changes bytes by its general rules.
extern "C" std::size_t LLVMFuzzerMutate(std::uint8_t* data, std::size_t size, std::size_t max_size);

namespace kelp_fuzz {
namespace {

using kelp_test::RawPage;

// Within 31 bits of pixels there are enough without a page that takes a second to pack.
constexpr std::size_t largest_packed = std::size_t{1} << 18;

std::optional<std::vector<RawPage>> pages_of(const std::string& stream) {
    try {
        return kelp_test::pages_in(stream);
    } catch (const std::exception&) {
        return std::nullopt;
    }
}

// libcups reads on behind rows of no whole pixels when it packs them.
bool can_be_packed(const cups_page_header2_t& header) {
    std::uint32_t order = 0;
    std::memcpy(&order, &header.cupsColorOrder, sizeof order);
    const std::uint64_t bits =
        order == CUPS_ORDER_CHUNKED ? header.cupsBitsPerPixel : header.cupsBitsPerColor;
    return bits <= 64 && header.cupsBytesPerLine % std::max<std::uint64_t>((bits + 7) / 8, 1) == 0;
}

std::string written(std::vector<RawPage> pages, cups_mode_t mode) {
    std::size_t size = 0;
    for (RawPage& page : pages) {
        const std::size_t wanted =
            std::size_t{page.header.cupsBytesPerLine} * page.header.cupsHeight;
        size += wanted;
        if (wanted == 0 || size > largest_packed || !can_be_packed(page.header)) {
            return {};
        }
        page.pixels.resize(wanted);
    }
    try {
        return kelp_test::written_by_libcups(pages, mode);
    } catch (const std::exception&) {
        return {};
    }
}

// Empty where the pages cannot have the form.
std::string in_form(const std::vector<RawPage>& pages, int form) {
    switch (form) {
        case RasterJob::as_it_is:
            return kelp_test::raw_raster_stream(pages);
        case RasterJob::swapped:
            return kelp_test::swapped_raster_stream(pages);
        default:
            return written(pages, form == RasterJob::packed ? CUPS_RASTER_WRITE_COMPRESSED
                                                            : CUPS_RASTER_WRITE_PWG);
    }
}

class Mutation {
  public:
    explicit Mutation(unsigned seed) : random_(seed) {}

    unsigned below(unsigned end) { return static_cast<unsigned>(random_() % end); }

    std::string bytes(std::string text, std::size_t room) {
        const std::size_t size = text.size();
        text.resize(std::max(size, room));
        text.resize(
            LLVMFuzzerMutate(reinterpret_cast<std::uint8_t*>(text.data()), size, text.size()));
        return text;
    }

    void change(std::vector<RawPage>& pages) {
        if (pages.empty()) {
            pages.push_back(kelp_test::raw_page({}));
        }
        const std::size_t index = below(static_cast<unsigned>(pages.size()));
        RawPage& page = pages[index];
        switch (below(8)) {
            case 0:
                set_field(page.header);
                break;
            case 1:
            case 2:
                resize(page, 1 + below(below(4) == 0 ? 200 : 24), 1 + below(24));
                break;
            case 3:
                page.pixels = bytes(page.pixels, page.pixels.size());
                break;
            case 4:
                for (char& pixel : page.pixels) {
                    pixel = below(4) == 0 ? '\0' : '\xFF';
                }
                break;
            case 5:
                if (pages.size() < 6) {
                    pages.insert(pages.begin() + static_cast<std::ptrdiff_t>(index), page);
                }
                break;
            case 6:
                pages.erase(pages.begin() + static_cast<std::ptrdiff_t>(index));
                break;
            default:
                set_kind(page);
                break;
        }
    }

  private:
    void set_field(cups_page_header2_t& header) {
        static constexpr std::uint32_t values[] = {
            0,          1,          2,          3,          7,          8,
            203,        255,        256,        65535,      65536,      0x7FFFFFFF,
            0x80000000, 0xFFFFFFFF, 0xFFFFFFFE, 0x10000000, 0x00010001, 0x40000000};
        std::uint32_t* const fields[] = {
            &header.cupsWidth,        &header.cupsHeight,       &header.cupsBytesPerLine,
            &header.cupsBitsPerPixel, &header.cupsBitsPerColor, &header.HWResolution[0],
            &header.HWResolution[1],  &header.NumCopies,        &header.cupsNumColors,
            &header.cupsCompression,  &header.cupsRowCount,     &header.cupsMediaType};
        const std::uint32_t value = values[below(std::size(values))];
        if (below(4) != 0) {
            *fields[below(std::size(fields))] = value;
            return;
        }
        // Any word of it, an enumeration too.
        const std::size_t words = sizeof header / sizeof value;
        std::memcpy(
            reinterpret_cast<char*>(&header) + below(static_cast<unsigned>(words)) * sizeof value,
            &value, sizeof value);
    }

    void resize(RawPage& page, unsigned width, unsigned height) {
        const unsigned row_bytes =
            (width * std::clamp(page.header.cupsBitsPerPixel, 1U, 32U) + 7) / 8;
        page.header.cupsWidth = width;
        page.header.cupsHeight = height;
        page.header.cupsBytesPerLine = row_bytes + (below(3) == 0 ? 3 * below(4) : 0);
        page.pixels.resize(std::size_t{page.header.cupsBytesPerLine} * height,
                           static_cast<char>(below(256)));
    }

    void set_kind(RawPage& page) {
        const std::vector<kelp_test::Kind> kinds = kelp_test::kinds();
        const kelp_test::Kind& kind = kinds[below(static_cast<unsigned>(kinds.size()))];
        page.header.cupsColorSpace = kind.space;
        page.header.cupsBitsPerColor = kind.bits_per_color;
        page.header.cupsBitsPerPixel = kind.bits_per_pixel;
        page.header.cupsNumColors = kind.colors();
        page.header.cupsColorOrder = CUPS_ORDER_CHUNKED;
        resize(page, 1 + below(40), 1 + below(12));
    }

    std::minstd_rand random_;
};

}  // namespace

RasterJob::RasterJob(const std::uint8_t* data, std::size_t size) {
    const std::size_t planned = std::min(size, plan_size);
    std::copy_n(data, planned, plan.begin());
    source.assign(data + planned, data + size);
}

std::uint32_t RasterJob::number(std::size_t place, std::size_t bytes) const {
    std::uint32_t value = 0;
    for (std::size_t i = bytes; i > 0; --i) {
        value = value << 8 | plan[place + i - 1];
    }
    return value;
}

std::string RasterJob::stream() const {
    std::string text = source;
    if (byte(form) % forms != as_it_is) {
        if (const auto pages = pages_of(source)) {
            const std::string made = in_form(*pages, byte(form) % forms);
            text = made.empty() ? text : made;
        }
    }
    if (const std::uint32_t end = number(cut, 2); end != 0 && !text.empty()) {
        text.resize(end % text.size());
    }
    return text;
}

bool RasterJob::ends_early() const {
    const int wanted = byte(form) % forms;
    const auto all = pages_of(source);
    const std::size_t size = stream().size();
    if (!all || size == 0 || in_form(*all, wanted).empty()) {
        return false;
    }
    // The ends of pages, the first of them that of none.
    std::vector<RawPage> pages;
    bool whole = true;
    for (std::size_t count = 0; whole; ++count) {
        if (size == in_form(pages, wanted).size()) {
            return false;
        }
        if (count == all->size()) {
            break;
        }
        const RawPage& page = (*all)[count];
        // libcups does not write a part of a page, so written() fills it up.
        whole = wanted == packed || wanted == portable ||
                page.pixels.size() ==
                    std::size_t{page.header.cupsBytesPerLine} * page.header.cupsHeight;
        pages.push_back(page);
    }
    return true;
}

std::size_t mutate_raster_job(std::uint8_t* data, std::size_t size, std::size_t max_size,
                              unsigned seed) {
    Mutation mutation(seed);
    const RasterJob job(data, size);
    std::string plan(job.plan.begin(), job.plan.end());
    std::string stream = job.source;
    const unsigned choice = mutation.below(8);
    const auto pages = pages_of(stream);
    if (choice == 0) {
        return LLVMFuzzerMutate(data, size, max_size);
    }
    if (choice <= 2) {
        plan = mutation.bytes(plan, plan.size());
        plan.resize(RasterJob::plan_size);
    } else if (choice == 3 && max_size > plan.size()) {
        stream = mutation.bytes(stream, max_size - plan.size());
    } else {
        std::vector<RawPage> changed = pages.value_or(std::vector<RawPage>());
        for (unsigned changes = 1 + mutation.below(3); changes > 0; --changes) {
            mutation.change(changed);
        }
        stream = kelp_test::raw_raster_stream(changed);
    }
    const std::string result = (plan + stream).substr(0, max_size);
    std::copy(result.begin(), result.end(), data);
    return result.size();
}

}  // namespace kelp_fuzz
