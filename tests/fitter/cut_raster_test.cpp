// A stream that ends too early. The unit tests cut it at every byte; a process is run for the bytes
// around every beginning and end, and for some between.

#include <gtest/gtest.h>

#include "tests/fitter/fitter_job.h"

namespace kelp_test {
namespace {

constexpr std::size_t sync_size = 4;
constexpr std::size_t header_size = sizeof(cups_page_header2_t);

const PagePpd small_ppd{.width = "4", .height = "4"};

// 6 × 3 dots, each row another letter and two digits that are cut.
std::vector<RawPage> two_pages() {
    return {page_of(k8, 6, 3, "aaaa12bbbb34cccc56"), page_of(k8, 6, 3, "AAAA12BBBB34CCCC56")};
}

// What comes out of the stream's first bytes: of a page whose header came whole the rows that came
// whole, and the white row behind the third.
std::vector<std::string> expected_pixels(std::size_t length) {
    std::vector<std::string> pixels;
    std::size_t position = sync_size;
    for (const char* const letters : {"abc", "ABC"}) {
        position += header_size;
        if (length < position) {
            break;
        }
        pixels.emplace_back();
        for (int row = 0; row < 3; ++row) {
            position += 6;
            if (length >= position) {
                pixels.back() += std::string(4, letters[row]);
            }
        }
        if (length >= position) {
            pixels.back() += std::string(4, '\0');
        }
    }
    return pixels;
}

// Whether a stream is worth cutting here.
bool is_cut(std::size_t length, std::size_t page_size) {
    constexpr std::size_t near = 6;
    const std::size_t in_page = length < sync_size ? 0 : (length - sync_size) % page_size;
    return in_page <= near || in_page + near >= header_size || in_page % 61 == 0;
}

TEST(CutRaster, GivesWhatWasWholeAndAnError) {
    const std::string stream = raw_raster_stream(two_pages());
    const std::size_t page_size = header_size + 18;
    ASSERT_EQ(stream.size(), sync_size + 2 * page_size);
    const Sandbox sandbox;
    Job job = fitter_job({}, small_ppd);
    for (std::size_t length = 0; length <= stream.size(); ++length) {
        if (!is_cut(length, page_size)) {
            continue;
        }
        SCOPED_TRACE(length);
        job.raster = stream.substr(0, length);
        const JobResult result = sandbox.run(sandbox.command(job, fitter_program()));
        if (length == 0 || (length >= sync_size && (length - sync_size) % page_size == 0)) {
            EXPECT_EQ(result.exit_status, 0) << result.error;
        } else {
            expect_error(result, {});
        }
        if (length < sync_size && length > 0) {
            EXPECT_EQ(result.output, "");
            continue;
        }
        std::vector<std::string> pixels;
        for (const RawPage& page : pages_in(result.output)) {
            pixels.push_back(page.pixels);
        }
        EXPECT_EQ(pixels, expected_pixels(length));
    }
}

TEST(CutRaster, NamesTheRowAndThePage) {
    Job job = fitter_job(two_pages(), small_ppd);
    job.raster.resize(job.raster.size() - 7);
    expect_error(run_fitter(job), {"cut short", "row 2 of the 3 of page 2"});
}

// libcups reads packed streams ahead, so it may have the bytes of a cut header already.
TEST(CutRaster, PackedIsAnErrorAsWell) {
    const std::string stream = written_by_libcups(two_pages(), CUPS_RASTER_WRITE_COMPRESSED);
    // Both pages are alike in their runs, so the second begins in the middle.
    const std::size_t page_size = (stream.size() - sync_size) / 2;
    ASSERT_EQ(stream.size(), sync_size + 2 * page_size);
    ASSERT_GT(page_size, header_size);
    const Sandbox sandbox;
    Job job = fitter_job({}, small_ppd);
    for (std::size_t length = sync_size + 1; length <= stream.size(); ++length) {
        if (!is_cut(length, page_size)) {
            continue;
        }
        SCOPED_TRACE(length);
        job.raster = stream.substr(0, length);
        const JobResult result = sandbox.run(sandbox.command(job, fitter_program()));
        if ((length - sync_size) % page_size == 0) {
            EXPECT_EQ(result.exit_status, 0) << result.error;
        } else {
            expect_error(result, {});
        }
        const std::size_t whole_pages = (length - sync_size) / page_size;
        const std::size_t header_ends = sync_size + whole_pages * page_size + header_size;
        const std::vector<RawPage> pages = pages_in(result.output);
        EXPECT_EQ(pages.size(), whole_pages + (length >= header_ends ? 1 : 0));
        for (std::size_t page = 0; page < whole_pages; ++page) {
            EXPECT_EQ(pages[page].pixels.size(), 16U);
        }
    }
    for (const std::size_t whole : {sync_size, sync_size + page_size, stream.size()}) {
        job.raster = stream.substr(0, whole);
        EXPECT_EQ(fitted(job).size(), (whole - sync_size) / page_size);
    }
}

}  // namespace
}  // namespace kelp_test
