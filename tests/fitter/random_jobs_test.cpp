// Random jobs against a second fitter, which works out every sample by itself.

#include <gtest/gtest.h>

#include "tests/fitter/fitter_job.h"
#include "tests/support/grey_pages.h"

namespace kelp_test {
namespace {

unsigned byte_at(const RawPage& page, std::size_t x, std::size_t y) {
    return static_cast<unsigned char>(page.pixels[page.header.cupsBytesPerLine * y + x]);
}

// How light a dot of the page is, 255 is white.
unsigned lightness(const RawPage& page, unsigned x, unsigned y) {
    const bool black_space = page.header.cupsColorSpace == CUPS_CSPACE_K;
    if (page.header.cupsBitsPerPixel == 1) {
        const bool set = (byte_at(page, x / 8, y) & (0x80U >> (x % 8))) != 0;
        return set == black_space ? 0 : 255;
    }
    if (page.header.cupsBitsPerPixel == 8) {
        const unsigned value = byte_at(page, x, y);
        return black_space ? 255 - value : value;
    }
    const unsigned thousandths = 299 * byte_at(page, 3 * x, y) + 587 * byte_at(page, 3 * x + 1, y) +
                                 114 * byte_at(page, 3 * x + 2, y);
    return thousandths / 1000 + (thousandths % 1000 >= 500 ? 1 : 0);
}

std::string fitted_literally(const RawPage& page, unsigned width, unsigned height,
                             bool black_space) {
    while (width % 8 != 4) {
        --width;
    }
    std::string pixels;
    for (unsigned y = 0; y < height; ++y) {
        for (unsigned x = 0; x < width; ++x) {
            const bool inside = x < page.header.cupsWidth && y < page.header.cupsHeight;
            const unsigned light = inside ? lightness(page, x, y) : 255;
            pixels.push_back(static_cast<char>(black_space ? 255 - light : light));
        }
    }
    return pixels;
}

RawPage random_page(Random& random, unsigned width, unsigned height) {
    const Kind kind = random.pick(kinds());
    // Around the page's size more often than elsewhere.
    const auto extent = [&](unsigned of_page) {
        return random.one_in(2)
                   ? static_cast<unsigned>(random.between(1, 2 * static_cast<int>(of_page)))
                   : of_page + 5 -
                         std::min(of_page + 4, static_cast<unsigned>(random.between(0, 9)));
    };
    const unsigned page_width = extent(width);
    const unsigned page_height = extent(height);
    // A row of colors must be a number of whole pixels.
    const auto padding = static_cast<unsigned>(random.between(0, 3)) * (kind.colors() == 3 ? 3 : 1);
    const unsigned stride = kind.row_bytes(page_width) + padding;
    return page_of(kind, page_width, page_height, noise(stride, page_height, random), padding);
}

constexpr int shares = 4;

class RandomJobs : public testing::TestWithParam<int> {};

TEST_P(RandomJobs, AreFittedAsASecondFitterDoes) {
    Random random(static_cast<std::uint64_t>(GetParam()) + 8000);
    const Sandbox sandbox;
    for (int round = 0; round < 100; ++round) {
        const auto width = static_cast<unsigned>(random.between(4, random.one_in(5) ? 400 : 60));
        const auto height = static_cast<unsigned>(random.between(1, random.one_in(5) ? 200 : 30));
        const bool black_space = random.one_in(2);
        std::vector<RawPage> pages;
        for (int count = random.between(1, 3); count > 0; --count) {
            pages.push_back(random_page(random, width, height));
        }
        PagePpd ppd{.width = std::to_string(width), .height = std::to_string(height)};
        ppd.color_space = black_space ? CUPS_CSPACE_K : CUPS_CSPACE_W;
        Job job = fitter_job(pages, ppd);
        if (random.one_in(3)) {
            job.raster = written_by_libcups(pages, CUPS_RASTER_WRITE_COMPRESSED);
        }
        job.by_file = random.one_in(2);
        const JobResult result = sandbox.run(sandbox.command(job, fitter_program()));
        ASSERT_EQ(result.exit_status, 0) << result.error;
        const std::vector<RawPage> out = pages_in(result.output);
        ASSERT_EQ(out.size(), pages.size());
        for (std::size_t page = 0; page < pages.size(); ++page) {
            ASSERT_TRUE(out[page].pixels ==
                        fitted_literally(pages[page], width, height, black_space))
                << "round " << round << ", page " << page;
        }
    }
}

INSTANTIATE_TEST_SUITE_P(Share, RandomJobs, testing::Range(0, shares));

}  // namespace
}  // namespace kelp_test
