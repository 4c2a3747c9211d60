// Pages of unusual shape and unusual jobs, held to the reference.

#include <gtest/gtest.h>

#include "tests/process/reference_comparison.h"
#include "tests/support/grey_pages.h"

namespace kelp_test {
namespace {

// One of each kind: threshold, ordered, diffused, and the two stencils.
const std::vector<std::string>& some_halftones() {
    static const std::vector<std::string> names{"None", "FloydSteinberg", "JarvisJudiceNinke",
                                                "Tattoo", "Tattoo_X8"};
    return names;
}

Page noise_page(unsigned width, unsigned height, unsigned extra_bytes, Random& random) {
    Page page;
    page.width = width;
    page.height = height;
    page.bytes_per_line = width + extra_bytes;
    page.pixels = noise(width + extra_bytes, height, random);
    return page;
}

class Shapes : public testing::TestWithParam<std::string> {
  protected:
    std::string halftone() const { return "HalftoneType=" + GetParam(); }
};

TEST_P(Shapes, EveryWidthUpToThirtyThree) {
    Random random(4);
    std::vector<Page> pages;
    for (unsigned width = 1; width <= 33; ++width) {
        pages.push_back(noise_page(width, 1 + width % 4, 0, random));
    }
    expect_like_reference(recorded_job(pages, halftone()), GetParam());
}

TEST_P(Shapes, EveryHeightUpToTwelveOnNarrowPages) {
    Random random(5);
    std::vector<Page> pages;
    for (unsigned height = 1; height <= 12; ++height) {
        for (unsigned width = 1; width <= 3; ++width) {
            pages.push_back(noise_page(width, height, 0, random));
        }
    }
    expect_like_reference(recorded_job(pages, halftone() + " MirrorImage=true"), GetParam());
}

TEST_P(Shapes, LinesLongerThanThePageIsWide) {
    Random random(6);
    std::vector<Page> pages;
    for (const unsigned extra : {1U, 2U, 3U, 4U, 5U, 17U, 200U}) {
        for (const unsigned width : {1U, 7U, 8U, 30U}) {
            pages.push_back(noise_page(width, 9, extra, random));
        }
    }
    for (const char* options : {"", " MirrorImage=1 NegativeImage=1 Brightness=7"}) {
        expect_like_reference(recorded_job(pages, halftone() + options), GetParam() + options);
    }
}

TEST_P(Shapes, LargeAndSmallPagesInTurn) {
    // What one page leaves in a buffer must not show on the next.
    Random random(7);
    std::vector<Page> pages;
    for (const unsigned size : {70U, 3U, 50U, 1U, 66U, 2U, 70U}) {
        pages.push_back(noise_page(size, 71 - size, size % 3 * 5, random));
    }
    expect_like_reference(recorded_job(pages, halftone()), GetParam());
}

TEST_P(Shapes, NearlyUniformPages) {
    std::vector<Page> pages;
    for (const auto& [paper, spot] : std::vector<std::pair<int, int>>{
             {0, 0}, {0, 1}, {255, 254}, {255, 255}, {128, 128}, {128, 129}, {200, 0}, {1, 255}}) {
        Page page;
        page.width = 20;
        page.height = 20;
        page.pixels = uniform(20, 20, static_cast<unsigned char>(paper));
        page.pixels[210] = static_cast<char>(spot);
        pages.push_back(page);
    }
    expect_like_reference(recorded_job(pages, halftone()), GetParam());
}

TEST_P(Shapes, APageWithoutWidthBeforeBetweenAndAfterGoodOnes) {
    Random random(8);
    RawPage empty = raw_page(noise_page(16, 5, 0, random));
    empty.header.cupsWidth = 0;
    const RawPage good = raw_page(noise_page(17, 5, 0, random));
    for (const std::vector<RawPage>& pages :
         {std::vector<RawPage>{empty}, {empty, good}, {good, empty}, {good, empty, good, empty}}) {
        Job job = recorded_job({}, halftone());
        job.raster = raw_raster_stream(pages);
        expect_like_reference(job, GetParam() + ", " + std::to_string(pages.size()) + " pages");
    }
}

INSTANTIATE_TEST_SUITE_P(Of, Shapes, testing::ValuesIn(some_halftones()),
                         [](const testing::TestParamInfo<std::string>& of) { return of.param; });

TEST(JobLikeReference, WithAnExtremeButAllowedHeader) {
    RawPage page = raw_page(Page{});
    page.pixels = std::string(32, '\x90');
    Job job = recorded_job({});
    for (const unsigned resolution : {1U, 2U, 100'000U, 2'147'483'648U, 4'294'967'295U}) {
        page.header.HWResolution[0] = resolution;
        page.header.HWResolution[1] = 4'294'967'295U - resolution + 1;
        page.header.NumCopies = resolution;
        page.header.cupsMediaType = resolution;
        page.header.cupsRowStep = 4'294'967'295U;
        job.raster = raw_raster_stream({page, page});
        expect_like_reference(job, std::to_string(resolution));
    }
}

TEST(JobLikeReference, WithAHugePageOfWhichNothingArrives) {
    // 50 million rows at one dot per inch are 10^10 dots at 203, which no integer holds.
    RawPage page = raw_page(Page{});
    page.header.cupsWidth = page.header.cupsBytesPerLine = 1;
    page.header.cupsHeight = 50'000'000;
    page.header.HWResolution[1] = 1;
    page.pixels.clear();
    Job job = recorded_job({});
    job.raster = raw_raster_stream({page});
    expect_like_reference(job, "length");
}

TEST(JobLikeReference, WithoutAnyOptionInThePpd) {
    Random random(9);
    Job job = job_of({noise_page(33, 20, 0, random)}, "HalftoneType=Tattoo Darkness=20");
    expect_like_reference(job, "bare PPD");
}

TEST(JobLikeReference, WithoutAPpdOrAPageSize) {
    Random random(10);
    Job job = job_of({noise_page(33, 20, 0, random)});
    job.ppd.reset();
    expect_like_reference(job, "no PPD");
    job.ppd = "nothing of the kind";
    expect_like_reference(job, "no PPD in the file");
    job.ppd = Ppd().option("Darkness", {"3"}).text();
    expect_like_reference(job, "no page size");
    job.ppd = Ppd().page_size("Flat", "100", "0").text();
    expect_like_reference(job, "no length");
}

TEST(JobLikeReference, WithEveryPageSizeOfThePpd) {
    Random random(11);
    for (const char* size :
         {"w288h432", "A4", "Small", "Custom.100x200", "Custom.5x5cm", "Other"}) {
        const std::string options = std::string("PageSize=") + size;
        expect_like_reference(recorded_job({noise_page(9, 9, 0, random)}, options), options);
    }
}

TEST(JobLikeReference, WithAnAttributeOfThreeHundredCharacters) {
    Random random(12);
    Job job = job_of({noise_page(9, 9, 0, random)}, "RecordPrinterCommands=1");
    const std::string base =
        std::string(150, 'a') + "\n" + std::string(30, 'b') + "/" + std::string(118, 'c');
    job.ppd = bare_ppd()
                  .option("RecordPrinterCommands", {"1"})
                  .attribute("kelpFilterOutputFile", base)
                  .text();
    // There is no such folder, so only the log tells the name.
    expect_like_reference(job, "long recording name");
}

}  // namespace
}  // namespace kelp_test
