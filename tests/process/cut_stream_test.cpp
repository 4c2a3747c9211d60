// A stream that ends too early: at every byte of a two-page job but for the inner ones of its
// headers.

#include <gtest/gtest.h>

#include "tests/process/expected.h"
#include "tests/process/sandbox.h"

namespace kelp_test {
namespace {

constexpr std::size_t sync_size = 4;
constexpr std::size_t header_size = sizeof(cups_page_header2_t);
constexpr std::size_t pixels_size = 32;

// What a stream of `length` bytes prints: a page whose header came whole has its setup block, and
// one whose pixels came whole its picture.
std::string output_of(std::size_t length) {
    std::string output = preamble();
    std::size_t position = sync_size;
    for (int page = 0; page < 2; ++page) {
        position += header_size;
        if (length >= position) {
            output += SetupBlock().text();
        }
        position += pixels_size;
        if (length >= position) {
            output += Graphic().text();
        }
    }
    return output;
}

// Whether the byte is far from both ends of a header, where only every ninth is tried: a header is
// read as one.
bool is_left_out(std::size_t length) {
    constexpr std::size_t page_size = header_size + pixels_size;
    constexpr std::size_t edge = 64;
    if (length < sync_size) {
        return false;
    }
    const std::size_t in_page = (length - sync_size) % page_size;
    return in_page > edge && in_page < header_size - edge && length % 9 != 0;
}

// The offsets are dealt out to several tests so that they can run side by side.
constexpr std::size_t shares = 2;

class CutAtAnyByte : public testing::TestWithParam<std::size_t> {};

TEST_P(CutAtAnyByte, PrintsTheWholePagesAndNoPartOfAPicture) {
    const std::string stream = raster_stream({tiny_page(), tiny_page()});
    ASSERT_EQ(stream.size(), sync_size + 2 * (header_size + pixels_size));
    const Sandbox sandbox;
    Job job;
    for (std::size_t length = GetParam(); length < stream.size(); length += shares) {
        if (is_left_out(length)) {
            continue;
        }
        job.raster = stream.substr(0, length);
        const JobResult result = sandbox.run(job);
        EXPECT_EQ(result.exit_status, 0) << "cut at " << length;
        EXPECT_EQ(result.output, output_of(length)) << "cut at " << length;
    }
}

INSTANTIATE_TEST_SUITE_P(Share, CutAtAnyByte, testing::Range<std::size_t>(0, shares));

TEST(CutStream, CutInCompressedPixelsPrintsNothingOfThatPicture) {
    const std::string stream =
        raster_stream({tiny_page(), tiny_page()}, CUPS_RASTER_WRITE_COMPRESSED);
    // Both pages are alike, so the second one begins in the middle.
    const std::size_t page_size = (stream.size() - sync_size) / 2;
    ASSERT_GT(page_size, header_size + 2);
    ASSERT_EQ(stream.size(), sync_size + 2 * page_size);
    for (std::size_t length = page_size + sync_size + header_size; length < stream.size();
         ++length) {
        Job job;
        job.raster = stream.substr(0, length);
        const JobResult result = run_job(job);
        EXPECT_EQ(result.exit_status, 0) << "cut at " << length;
        EXPECT_EQ(result.output, preamble() + tiny_page_output() + SetupBlock().text())
            << "cut at " << length;
    }
}

TEST(CutStream, ThatLosesAPagesPixelsSkipsThatPageSilently) {
    Job job;
    job.raster = raster_stream({tiny_page(), tiny_page()});
    job.raster.resize(job.raster.size() - 1);
    const JobResult result = run_job(job);
    EXPECT_EQ(lines_with(result.error, "ERROR:"), std::vector<std::string>{});
    EXPECT_EQ(lines_with(result.error, "DEBUG:PAGE: "),
              (std::vector<std::string>{"DEBUG:PAGE: 1 1", "DEBUG:PAGE: 2 1"}));
    EXPECT_EQ(result.snapshots.size(), 2U);
}

}  // namespace
}  // namespace kelp_test
