// Page headers that make no sense, and streams that are none.

#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>
#include <functional>

#include "tests/process/expected.h"
#include "tests/process/sandbox.h"
#include "tests/support/grey_pages.h"

namespace kelp_test {
namespace {

using Change = std::function<void(cups_page_header2_t&)>;

// A good page, then one with a changed header and no pixels worth speaking of.
JobResult run_with(const Change& change, std::size_t good_pages) {
    RawPage bad = raw_page(tiny_page());
    change(bad.header);
    std::vector<RawPage> pages(good_pages, raw_page(tiny_page()));
    pages.push_back(bad);
    Job job;
    job.raster = raw_raster_stream(pages);
    return run_job(job);
}

// The page is refused before anything of it is sent, with one error line that names one of the
// fields with its value; what went before it stays printed.
void expect_refused(const Change& change, const std::vector<std::string>& fields,
                    const std::vector<std::string>& values) {
    const auto names_any = [](const std::string& line, const std::vector<std::string>& parts) {
        return std::any_of(parts.begin(), parts.end(),
                           [&](const std::string& part) { return contains(line, part); });
    };
    for (const std::size_t good_pages : {0U, 1U}) {
        const JobResult result = run_with(change, good_pages);
        EXPECT_EQ(result.exit_status, 1);
        EXPECT_EQ(result.output, preamble() + (good_pages == 1 ? tiny_page_output() : ""));
        const std::vector<std::string> errors = lines_with(result.error, "ERROR:");
        ASSERT_EQ(errors.size(), 1U) << result.error;
        EXPECT_TRUE(names_any(errors[0], fields)) << errors[0];
        EXPECT_TRUE(names_any(errors[0], values)) << errors[0];
        EXPECT_EQ(result.snapshots.size(), 2 * good_pages);
    }
}

TEST(BadHeader, FewerBytesPerLineThanDotsAreRefused) {
    expect_refused([](cups_page_header2_t& header) { header.cupsBytesPerLine = 15; },
                   {"cupsBytesPerLine"}, {"15"});
    expect_refused(
        [](cups_page_header2_t& header) {
            header.cupsWidth = 4294967295U;
            header.cupsBytesPerLine = 16;
        },
        {"cupsBytesPerLine"}, {"16"});
}

TEST(BadHeader, AResolutionOfZeroIsRefused) {
    expect_refused([](cups_page_header2_t& header) { header.HWResolution[0] = 0; },
                   {"HWResolution[0]"}, {"0"});
    expect_refused([](cups_page_header2_t& header) { header.HWResolution[1] = 0; },
                   {"HWResolution[1]"}, {"0"});
    expect_refused(
        [](cups_page_header2_t& header) {
            header.HWResolution[0] = 0;
            header.HWResolution[1] = 0;
        },
        {"HWResolution"}, {"0"});
}

// libcups itself ends the stream at a header of 2^31 bytes per line and more.
struct Extent {
    unsigned bytes_per_line, height;
    const char* product;
};

TEST(BadHeader, APageThatDoesNotFitThirtyOneBitsIsRefused) {
    for (const Extent& extent :
         {Extent{65536, 32768, "2147483648"},  // 2^31, the smallest that does not fit
          Extent{65536, 65536, "4294967296"},  // 2^32, which wraps to nothing in 32 bits
          Extent{65537, 65537, "4295098369"},  // wraps to a small page
          Extent{1, 2147483648U, "2147483648"},
          Extent{2147483647U, 4294967295U, "9223372030412324865"}}) {
        expect_refused(
            [&](cups_page_header2_t& header) {
                header.cupsBytesPerLine = extent.bytes_per_line;
                header.cupsHeight = extent.height;
                header.cupsWidth = std::min(extent.bytes_per_line, 16U);
            },
            {"cupsBytesPerLine", "cupsHeight"},
            {std::to_string(extent.bytes_per_line), std::to_string(extent.height), extent.product});
    }
}

// 2^31 - 1 bytes do fit; the program is given less memory than that.
TEST(BadHeader, APageWithoutMemoryForItsPixelsFailsWithoutAWord) {
    const Sandbox sandbox;
    RawPage large = raw_page(tiny_page());
    large.header.cupsWidth = 1;
    large.header.cupsBytesPerLine = 1;
    large.header.cupsHeight = 2147483647;
    Job job;
    job.raster = raw_raster_stream({raw_page(tiny_page()), large});
    Command command = sandbox.command(job);
    if (KELP_SANITIZED) {
        // Shadow memory rules out a limit on the address space.
        command.environment["ASAN_OPTIONS"] +=
            ":allocator_may_return_null=1:max_allocation_size_mb=1024";
    } else {
        command.limits = {{RLIMIT_AS, rlim_t{1} << 30U}};
    }
    const JobResult result = sandbox.run(command);
    EXPECT_EQ(result.exit_status, 1);
    EXPECT_EQ(result.output, preamble() + tiny_page_output());
    EXPECT_EQ(lines_with(result.error, "ERROR:"), std::vector<std::string>{});
}

// 400 MB that never come: the page is skipped like any other that is cut, and the memory for it is
// asked for but not touched.
TEST(BadHeader, APageThatTheStreamOnlyPromisesTakesNoMemory) {
    RawPage promised = raw_page(tiny_page());
    promised.header.cupsWidth = 20000;
    promised.header.cupsBytesPerLine = 20000;
    promised.header.cupsHeight = 20000;
    Job job;
    job.raster = raw_raster_stream({promised});
    const JobResult result = run_job(job);
    EXPECT_EQ(result.exit_status, 0);
    EXPECT_LT(result.peak_resident_kib, 200 * 1024);
    EXPECT_TRUE(result.snapshots.empty());
}

TEST(BadHeader, TheSmallestAndLargestGoodValuesPass) {
    // One dot per inch: 16 × 25.4 = 406.4 mm, in single precision 406.399994, so that 203 × that /
    // 25.4 falls just short of 3248 dots. The other way the page is as good as nothing.
    RawPage page = raw_page(tiny_page());
    page.header.HWResolution[0] = 1;
    page.header.HWResolution[1] = 4294967295U;
    Job job;
    job.raster = raw_raster_stream({page});
    const JobResult result = run_job(job);
    EXPECT_EQ(result.exit_status, 0);
    const SetupBlock setup{.size = "406.4 mm, 0.0 mm", .width = 3247, .length = 0};
    EXPECT_EQ(result.output, preamble() + setup.text() + Graphic().text());
}

TEST(BadHeader, NumbersOutsideTheirEnumerationsAreLoggedAsTheyAre) {
    RawPage page = raw_page(tiny_page());
    const auto put = [](auto& field, unsigned value) {
        static_assert(sizeof(field) == sizeof(value));
        std::memcpy(&field, &value, sizeof(value));
    };
    put(page.header.cupsColorOrder, 2293760);
    put(page.header.cupsColorSpace, 4294967295U);
    Job job;
    job.raster = raw_raster_stream({page});
    const JobResult result = run_job(job);
    EXPECT_EQ(result.exit_status, 0);
    EXPECT_EQ(result.output, preamble() + tiny_page_output());
    EXPECT_TRUE(contains(result.error,
                         "DEBUG:header.cupsColorOrder:2293760\n"
                         "DEBUG:header.cupsColorSpace:-1\n"));
}

// A width of zero passes the header's checks, but no image can be made of it.
class PageOfNoWidth : public testing::Test {
  protected:
    static RawPage page() {
        RawPage page = raw_page(tiny_page());
        page.header.cupsWidth = 0;
        return page;
    }

    static JobResult run(const std::vector<RawPage>& pages) {
        Job job;
        job.raster = raw_raster_stream(pages);
        return run_job(job);
    }

    // Its setup block is sent, its picture is not.
    static std::string setup() { return SetupBlock{.size = "0.0 mm, 0.3 mm", .width = 0}.text(); }

    static void expect_reported(const JobResult& result, std::size_t times) {
        const std::vector<std::string> failed(times,
                                              "CRIT:cximage.CreateFromArray with grey failed!");
        const std::vector<std::string> skipped(
            times, "ERROR:printImage: pimage is NULL, unable to print the image");
        EXPECT_EQ(lines_with(result.error, "CRIT:"), failed);
        EXPECT_EQ(lines_with(result.error, "ERROR:"), skipped);
    }
};

TEST_F(PageOfNoWidth, AsTheFirstIsReportedAndNotPrinted) {
    const JobResult result = run({page()});
    EXPECT_EQ(result.exit_status, 0);
    EXPECT_EQ(result.output, preamble() + setup());
    expect_reported(result, 1);
    // Only the page as it came, a bitmap without pixels.
    EXPECT_EQ(
        result.snapshots,
        (std::map<std::string, std::string>{{"origin_2024-3-5_7_8_9_0.bmp", bitmap(0, 2, "")}}));
}

TEST_F(PageOfNoWidth, AsTheSecondDoesNotPrintTheFirstAgain) {
    const JobResult result = run({raw_page(tiny_page()), page()});
    EXPECT_EQ(result.exit_status, 0);
    EXPECT_EQ(result.output, preamble() + tiny_page_output() + setup());
    expect_reported(result, 1);
    EXPECT_EQ(result.snapshots.size(), 3U);
}

TEST_F(PageOfNoWidth, DoesNotKeepLaterPagesFromPrinting) {
    const JobResult result = run({page(), raw_page(tiny_page()), page(), raw_page(tiny_page())});
    EXPECT_EQ(result.exit_status, 0);
    EXPECT_EQ(result.output,
              preamble() + setup() + tiny_page_output() + setup() + tiny_page_output());
    expect_reported(result, 2);
}

class NoRaster : public testing::TestWithParam<std::string> {};

TEST_P(NoRaster, IsAJobWithoutPages) {
    Job job;
    job.raster = GetParam();
    for (const bool by_file : {false, true}) {
        job.by_file = by_file;
        const JobResult result = run_job(job);
        EXPECT_EQ(result.exit_status, 0);
        EXPECT_EQ(result.output, preamble());
        EXPECT_TRUE(result.snapshots.empty());
    }
}

INSTANTIATE_TEST_SUITE_P(All, NoRaster,
                         testing::Values(std::string(), std::string("R"), std::string("3SaR"),
                                         std::string("%!PS-Adobe-3.0\nshowpage\n"),
                                         std::string("%PDF-1.4\n"), std::string(100'000, '\0'),
                                         std::string(100'000, '\xFF'), std::string(100'000, 'x')));

TEST(NoRaster, RandomBytesAfterAGoodBeginningNeitherCrashNorHang) {
    const std::string good = raster_stream({tiny_page()});
    Random random(20240305);
    for (int round = 0; round < 40; ++round) {
        Job job;
        // A flawed header: everything behind the sync word may change, a few bytes at a time.
        job.raster = good;
        for (int change = random.between(1, 12); change > 0; --change) {
            const auto at = static_cast<std::size_t>(random.between(4, 4 + 1795));
            job.raster[at] = static_cast<char>(random.between(0, 255));
        }
        const JobResult result = run_job(job);
        EXPECT_TRUE(result.exit_status == 0 || result.exit_status == 1) << "round " << round;
        EXPECT_TRUE(result.output.starts_with(preamble())) << "round " << round;
    }
}

}  // namespace
}  // namespace kelp_test
