// Sizes of pages: smaller, larger and other than the printer's, several in a job.

#include <gtest/gtest.h>

#include "tests/fitter/fitter_job.h"
#include "tests/process/expected.h"
#include "tests/support/grey_pages.h"

namespace kelp_test {
namespace {

std::string zeros(std::size_t count) {
    return std::string(count, '\0');
}

// A page of 4 × 2 dots.
PagePpd small_page() {
    return {.width = "4", .height = "2"};
}

std::string pixels_of(const RawPage& page, const PagePpd& ppd) {
    return fitted(fitter_job({page}, ppd)).at(0).pixels;
}

TEST(Pages, OneOfTheSameSizePassesAsItIs) {
    EXPECT_EQ(pixels_of(page_of(k8, 4, 2, "abcdefgh"), small_page()), "abcdefgh");
}

TEST(Pages, ASmallerOneLiesAtTheTopLeft) {
    EXPECT_EQ(pixels_of(page_of(k8, 3, 1, "abc"), small_page()), "abc" + zeros(5));
    EXPECT_EQ(pixels_of(page_of(k8, 1, 1, "a"), small_page()), "a" + zeros(7));
}

TEST(Pages, ALargerOneIsCutAtTheRightAndBelow) {
    EXPECT_EQ(pixels_of(page_of(k8, 5, 3, "abcdeABCDE12345"), small_page()), "abcdABCD");
}

TEST(Pages, ANarrowAndTallOneIsFilledAtTheRightAndCutBelow) {
    EXPECT_EQ(pixels_of(page_of(k8, 2, 4, "aAbBcCdD"), small_page()),
              "aA" + zeros(2) + "bB" + zeros(2));
}

TEST(Pages, AWideAndShortOneIsCutAtTheRightAndFilledBelow) {
    EXPECT_EQ(pixels_of(page_of(k8, 7, 1, "abcdefg"), small_page()), "abcd" + zeros(4));
}

TEST(Pages, ThePaddingBehindARowIsNotPrinted) {
    for (unsigned padding = 1; padding <= 9; ++padding) {
        const std::string gap(padding, '#');
        EXPECT_EQ(pixels_of(page_of(k8, 3, 2, "abc" + gap + "def" + gap, padding), small_page()),
                  "abc" + zeros(1) + "def" + zeros(1))
            << padding;
    }
}

// The page's width, and what of it is a multiple of 8 and 4 dots more.
TEST(Pages, TheWidthIsSafeForTheFilter) {
    for (const auto& [page, raster] : std::vector<std::pair<unsigned, unsigned>>{{4, 4},
                                                                                 {5, 4},
                                                                                 {8, 4},
                                                                                 {11, 4},
                                                                                 {12, 12},
                                                                                 {16, 12},
                                                                                 {19, 12},
                                                                                 {20, 20},
                                                                                 {812, 812},
                                                                                 {811, 804},
                                                                                 {448, 444}}) {
        const PagePpd ppd{.width = std::to_string(page), .height = "3"};
        const std::vector<RawPage> pages = fitted(fitter_job({page_of(k8, 2, 1, "ab")}, ppd));
        EXPECT_EQ(pages.at(0).header.cupsWidth, raster) << page;
        EXPECT_EQ(pages.at(0).header.cupsBytesPerLine, raster) << page;
        EXPECT_EQ(pages.at(0).header.cupsHeight, 3U) << page;
        EXPECT_EQ(pages.at(0).pixels, "ab" + zeros(std::size_t{raster} * 3 - 2)) << page;
    }
}

TEST(Pages, OfDifferentSizesAndKindsAreFittedToOne) {
    const PagePpd ppd{.width = "4", .height = "1", .color_space = CUPS_CSPACE_W};
    const std::vector<RawPage> pages = fitted(fitter_job(
        {page_of(k8, 5, 1, std::string("\0\0\0\xFF\xFF", 5)), page_of(w1, 9, 3, "\xC0", 2),
         page_of(rgb, 1, 1, "\x80\x80\x80"), page_of(w8, 2, 2, "abcd", 3)},
        ppd));
    ASSERT_EQ(pages.size(), 4U);
    EXPECT_EQ(pages[0].pixels, std::string("\xFF\xFF\xFF\0", 4));
    EXPECT_EQ(pages[1].pixels, std::string("\xFF\xFF\0\0", 4));
    EXPECT_EQ(pages[2].pixels, "\x80\xFF\xFF\xFF");
    EXPECT_EQ(pages[3].pixels, "ab\xFF\xFF");
}

TEST(Pages, InEveryFormThatLibcupsWritesComeOutTheSame) {
    const std::vector<RawPage> pages{page_of(k8, 40, 9, gradient(40, 9)),
                                     page_of(rgb, 20, 5, gradient(60, 5)),
                                     page_of(k1, 37, 11, gradient(5, 11))};
    Job job = fitter_job(pages);
    const std::string output = run_fitter(job).output;
    ASSERT_EQ(pages_in(output).size(), 3U);
    job.raster = swapped_raster_stream(pages);
    EXPECT_EQ(pages_in(run_fitter(job).output).size(), 3U);
    EXPECT_TRUE(run_fitter(job).output == output);
    for (const cups_mode_t mode : {CUPS_RASTER_WRITE, CUPS_RASTER_WRITE_COMPRESSED}) {
        job.raster = written_by_libcups(pages, mode);
        const JobResult result = run_fitter(job);
        EXPECT_EQ(result.exit_status, 0) << result.error;
        EXPECT_TRUE(result.output == output);
        job.by_file = !job.by_file;
        EXPECT_TRUE(run_fitter(job).output == output);
    }
}

// The form for printers that need no driver: packed, big-endian, with a header of its own kind.
TEST(Pages, InTheFormOfDriverlessPrintersCanBeFitted) {
    const std::vector<RawPage> pages{page_of(sw8, 5, 2, "abcdeABCDE"),
                                     page_of(srgb, 1, 1, "\xFF\xFF\xFF")};
    PagePpd ppd = small_page();
    ppd.color_space = CUPS_CSPACE_W;
    Job job = fitter_job({}, ppd);
    job.raster = written_by_libcups(pages, CUPS_RASTER_WRITE_PWG);
    const std::vector<RawPage> out = fitted(job);
    ASSERT_EQ(out.size(), 2U);
    EXPECT_EQ(out[0].pixels, "abcdABCD");
    EXPECT_EQ(out[1].pixels, std::string(8, '\xFF'));
}

TEST(Pages, TallerThanAnyBufferArriveWhole) {
    // 812 × 400 bytes are several buffers of 64 KiB in and out.
    Random random(812);
    const std::string pixels = noise(812, 400, random);
    const PagePpd ppd{.width = "812", .height = "400"};
    EXPECT_TRUE(pixels_of(page_of(k8, 812, 400, pixels), ppd) == pixels);
}

TEST(Pages, CanBeWiderThanAnyBuffer) {
    std::string pixels = zeros(2 * 70000);
    pixels[0] = 'a';
    pixels[69995] = 'b';
    pixels[70000] = 'c';
    pixels[139995] = 'd';
    const PagePpd ppd{.width = "69996", .height = "3"};
    const std::string output = pixels_of(page_of(k8, 70000, 2, pixels), ppd);
    std::string expected = zeros(std::size_t{3} * 69996);
    expected[0] = 'a';
    expected[69995] = 'b';
    expected[69996] = 'c';
    expected[2 * 69996 - 1] = 'd';
    EXPECT_TRUE(output == expected);
}

TEST(Pages, FollowThePageSizeOfTheJob) {
    // 60 × 40 mm are 60 × 203 / 25.4 = 479.53 by 319.69 dots, to the nearest 480 × 320; 476 is the
    // widest that is 4 more than a multiple of 8.
    PagePpd ppd{.resolution_x = 203, .resolution_y = 203};
    RawPage page = page_of(k8, 1, 1, "a");
    page.header.HWResolution[0] = page.header.HWResolution[1] = 203;
    const Sandbox sandbox;
    for (const char* options : {"PageSize=Custom.60x40mm", "media=Custom.60x40mm"}) {
        Command command = sandbox.command(fitter_job({page}, ppd, options), fitter_program());
        // libcups loses one option of its own for "media".
        for (const char* name : {"ASAN_OPTIONS", "LSAN_OPTIONS", "UBSAN_OPTIONS"}) {
            command.environment[name] += ":detect_leaks=0";
        }
        const std::vector<RawPage> pages = pages_in(sandbox.run(command).output);
        ASSERT_EQ(pages.size(), 1U) << options;
        EXPECT_EQ(pages[0].header.cupsWidth, 476U) << options;
        EXPECT_EQ(pages[0].header.cupsHeight, 320U) << options;
    }
    // 36 × 8 points are 101.5 × 22.56 dots, half a dot goes up: 102 × 23.
    const std::vector<RawPage> pages = fitted(fitter_job({page}, ppd, "PageSize=Unknown"));
    EXPECT_EQ(pages.at(0).header.cupsWidth, 100U);
    EXPECT_EQ(pages.at(0).header.cupsHeight, 23U);
}

TEST(Pages, AreLoggedWithBothSizes) {
    const JobResult result = run_fitter(fitter_job({page_of(k8, 3, 1, "abc")}, small_page()));
    EXPECT_EQ(result.error, "DEBUG: Page 1: 3 x 1 dots fitted to 4 x 2\n");
}

TEST(Pages, NoneIsAJobWithoutPages) {
    for (const std::string& stream : {std::string(), raw_raster_stream({})}) {
        Job job = fitter_job({});
        job.raster = stream;
        for (const bool by_file : {false, true}) {
            job.by_file = by_file;
            EXPECT_EQ(fitted(job).size(), 0U);
        }
    }
}

}  // namespace
}  // namespace kelp_test
