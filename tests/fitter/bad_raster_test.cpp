// Page headers that make no sense, and streams that are none.

#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>
#include <functional>

#include "tests/fitter/fitter_job.h"
#include "tests/support/grey_pages.h"

namespace kelp_test {
namespace {

using Change = std::function<void(cups_page_header2_t&)>;

PagePpd small_page() {
    return {.width = "4", .height = "2"};
}

RawPage good_page() {
    return page_of(k8, 4, 2, "abcdefgh");
}

// The page ends the job with an error line that holds the parts; those before it are written, and
// of it what came whole.
void expect_refused(const Change& change, const std::vector<std::string>& parts,
                    std::size_t begun_pages = 0) {
    for (const std::size_t good_pages : {0U, 1U}) {
        RawPage bad = good_page();
        change(bad.header);
        std::vector<RawPage> pages(good_pages, good_page());
        pages.push_back(bad);
        const JobResult result = run_fitter(fitter_job(pages, small_page()));
        expect_error(result, parts);
        const std::vector<RawPage> written = pages_in(result.output);
        ASSERT_EQ(written.size(), good_pages + begun_pages);
        if (good_pages == 1) {
            EXPECT_EQ(written[0].pixels, "abcdefgh");
        }
    }
}

TEST(BadHeader, FewerBytesPerLineThanDotsAreRefused) {
    expect_refused([](auto& header) { header.cupsBytesPerLine = 3; },
                   {"cupsBytesPerLine of 3", "cupsWidth of 4"});
    expect_refused([](auto& header) { header.cupsWidth = 4294967295U; },
                   {"cupsBytesPerLine of 4", "cupsWidth of 4294967295"});
    // 4294967295 × 24 bits do not fit 32 bits.
    expect_refused(
        [](auto& header) {
            header.cupsWidth = 4294967295U;
            header.cupsBytesPerLine = 6;
            header.cupsColorSpace = CUPS_CSPACE_RGB;
            header.cupsBitsPerPixel = 24;
            header.cupsNumColors = 3;
        },
        {"cupsBytesPerLine of 6", "12884901885"});
}

TEST(BadHeader, AWidthOfZeroIsRefused) {
    expect_refused([](auto& header) { header.cupsWidth = 0; }, {"cupsWidth of 0"});
}

TEST(BadHeader, AnotherResolutionIsRefusedWithWhatToChoose) {
    expect_refused([](auto& header) { header.HWResolution[0] = 0; }, {"0x72dpi", "72dpi"});
    expect_refused([](auto& header) { header.HWResolution[1] = 0; }, {"72x0dpi"});
    expect_refused([](auto& header) { header.HWResolution[0] = header.HWResolution[1] = 0; },
                   {"0dpi"});
    expect_refused([](auto& header) { header.HWResolution[0] = header.HWResolution[1] = 300; },
                   {"in 300dpi", "prints 72dpi", "Resolution=72dpi"});
    expect_refused([](auto& header) { header.HWResolution[1] = 144; },
                   {"in 72x144dpi", "prints 72dpi", "Resolution=72dpi"});
}

TEST(BadHeader, TheResolutionOfAPpdCanDifferAcrossAndDown) {
    PagePpd ppd = small_page();
    ppd.resolution_y = 144;
    RawPage page = good_page();
    expect_error(run_fitter(fitter_job({page}, ppd)), {"in 72dpi", "Resolution=72x144dpi"});
    page.header.HWResolution[1] = 144;
    EXPECT_EQ(fitted(fitter_job({page}, ppd)).at(0).header.cupsHeight, 4U);
}

// libcups takes these for the end of the stream.
TEST(BadHeader, OneThatLibcupsRefusesIsDamage) {
    expect_refused([](auto& header) { header.cupsHeight = 0; }, {"damaged"});
    expect_refused([](auto& header) { header.cupsBytesPerLine = 0; }, {"damaged"});
    expect_refused([](auto& header) { header.cupsBytesPerLine = 2147483648U; }, {"damaged"});
    // Three bytes a pixel do not divide a row of four.
    expect_refused([](auto& header) { header.cupsBitsPerPixel = 24; }, {"damaged"});
}

TEST(BadHeader, ARowTooLongIsRefused) {
    expect_refused([](auto& header) { header.cupsBytesPerLine = 16777217; },
                   {"too wide", "16777217"});
    expect_refused([](auto& header) { header.cupsBytesPerLine = 2147483647; },
                   {"too wide", "2147483647"});
}

TEST(BadHeader, TheLongestRowPasses) {
    const RawPage page = page_of(k8, 4, 1, "abcd", 16777216 - 4);
    EXPECT_EQ(fitted(fitter_job({page}, small_page())).at(0).pixels, "abcd" + std::string(4, '\0'));
}

// The stream ends long before such a page does.
TEST(BadHeader, APageOfMoreBytesThanThereAreIsCut) {
    struct Extent {
        unsigned bytes_per_line, height;
    };
    for (const Extent& extent :
         {Extent{65536, 32768}, Extent{65536, 65536}, Extent{65537, 65537}, Extent{4, 2147483648U},
          Extent{4, 4294967295U}, Extent{4, 2147483647}, Extent{20000, 20000}}) {
        expect_refused(
            [&](auto& header) {
                header.cupsBytesPerLine = extent.bytes_per_line;
                header.cupsHeight = extent.height;
            },
            {"cut short", "of the " + std::to_string(extent.height)}, 1);
    }
}

TEST(BadHeader, NumbersOutsideTheirEnumerationsAreNamedAsTheyAre) {
    const auto put = [](auto& field, unsigned value) {
        static_assert(sizeof(field) == sizeof(value));
        std::memcpy(&field, &value, sizeof(value));
    };
    expect_refused([&](auto& header) { put(header.cupsColorSpace, 4294967295U); },
                   {"space 4294967295"});
    expect_refused([&](auto& header) { put(header.cupsColorOrder, 3); }, {"color order 3"});
}

TEST(BadHeader, NumbersOutsideEnumerationsThatDoNotMatterAreKept) {
    RawPage page = good_page();
    const unsigned odd = 4294967295U;
    std::memcpy(&page.header.AdvanceMedia, &odd, sizeof(odd));
    std::memcpy(&page.header.LeadingEdge, &odd, sizeof(odd));
    const std::vector<RawPage> pages = fitted(fitter_job({page}, small_page()));
    EXPECT_EQ(std::memcmp(&pages.at(0).header.AdvanceMedia, &odd, sizeof(odd)), 0);
    EXPECT_EQ(std::memcmp(&pages.at(0).header.LeadingEdge, &odd, sizeof(odd)), 0);
}

class NoRaster : public testing::TestWithParam<std::string> {};

TEST_P(NoRaster, IsAnError) {
    Job job = fitter_job({});
    job.raster = GetParam();
    for (const bool by_file : {false, true}) {
        job.by_file = by_file;
        const JobResult result = run_fitter(job);
        expect_error(result, {"not CUPS raster"});
        EXPECT_EQ(result.output, "");
    }
}

INSTANTIATE_TEST_SUITE_P(All, NoRaster,
                         testing::Values(std::string("R"), std::string("3Sa"),
                                         std::string("%!PS-Adobe-3.0\nshowpage\n"),
                                         std::string("%PDF-1.4\n"), std::string(100'000, '\0'),
                                         std::string(100'000, '\xFF'), std::string(100'000, 'x')));

TEST(BadHeader, RandomBytesAfterAGoodBeginningNeitherCrashNorHang) {
    const std::string good = raw_raster_stream({good_page()});
    Random random(20240305);
    int failed = 0;
    for (int round = 0; round < 60; ++round) {
        Job job = fitter_job({}, small_page());
        job.raster = good;
        for (int change = random.between(1, 12); change > 0; --change) {
            // Mostly among the numbers, which begin behind four strings and end before more.
            const int last = random.one_in(3) ? 4 + 1795 : 4 + 560;
            const auto at = static_cast<std::size_t>(random.between(4, last));
            job.raster[at] = static_cast<char>(random.between(0, 255));
        }
        const JobResult result = run_fitter(job);
        if (result.exit_status == 0) {
            EXPECT_EQ(pages_in(result.output).size(), 1U) << "round " << round;
        } else {
            expect_error(result, {});
            ++failed;
        }
    }
    EXPECT_GT(failed, 5);
    EXPECT_LT(failed, 55);
}

}  // namespace
}  // namespace kelp_test
