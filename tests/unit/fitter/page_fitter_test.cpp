#include "fitter/page_fitter.h"

#include <gtest/gtest.h>

#include "fitter/fit_error.h"
#include "tests/fitter/rasters.h"
#include "tests/unit/fitter/memory_file.h"

namespace kelp_test {
namespace {

TargetPage target(unsigned width, unsigned height, Polarity polarity = Polarity::kBlackSpace) {
    TargetPage page{width, height, polarity, {}};
    page.header.HWResolution[0] = page.header.HWResolution[1] = 72;
    return page;
}

// What the output holds when the input has been fitted, or has turned out to be bad.
struct Outcome {
    std::vector<RawPage> pages;
    std::string error;
};

Outcome fit(const std::string& stream, const TargetPage& page) {
    const Descriptor from = memory_file(stream);
    const Descriptor to = memory_file();
    Outcome outcome;
    try {
        RasterInput input(from.get());
        RasterOutput output(to.get());
        fitPages(input, page, output);
    } catch (const FitError& error) {
        outcome.error = error.what();
    }
    outcome.pages = pages_in(content_of(to));
    return outcome;
}

// A page of letters, each row another: "ABC…", "BCD…".
RawPage letters(unsigned width, unsigned height) {
    std::string pixels;
    for (unsigned y = 0; y < height; ++y) {
        for (unsigned x = 0; x < width; ++x) {
            pixels.push_back(static_cast<char>('A' + (x + y) % 26));
        }
    }
    return page_of(k8, width, height, pixels);
}

TEST(PageFitter, PlacesEverySizeAtTheTopLeft) {
    for (const Polarity polarity : {Polarity::kBlackSpace, Polarity::kWhiteSpace}) {
        const bool black_space = polarity == Polarity::kBlackSpace;
        for (unsigned width = 1; width <= 14; ++width) {
            for (unsigned height = 1; height <= 6; ++height) {
                const Outcome outcome =
                    fit(raw_raster_stream({letters(width, height)}), target(12, 4, polarity));
                ASSERT_EQ(outcome.error, "");
                std::string expected;
                for (unsigned y = 0; y < 4; ++y) {
                    for (unsigned x = 0; x < 12; ++x) {
                        const unsigned black = x < width && y < height ? 'A' + (x + y) % 26 : 0;
                        expected.push_back(static_cast<char>(black_space ? black : 255 - black));
                    }
                }
                EXPECT_EQ(outcome.pages.at(0).pixels, expected) << width << " x " << height;
            }
        }
    }
}

TEST(PageFitter, AWidePageLeavesNothingInANarrowOneBehindIt) {
    const Outcome outcome = fit(raw_raster_stream({letters(20, 4), letters(1, 1)}), target(4, 2));
    ASSERT_EQ(outcome.pages.size(), 2U);
    EXPECT_EQ(outcome.pages[0].pixels, "ABCDBCDE");
    EXPECT_EQ(outcome.pages[1].pixels, "A" + std::string(7, '\0'));
}

TEST(PageFitter, ReadsTheRowsThatItCutsAway) {
    const Outcome outcome = fit(raw_raster_stream({letters(4, 9), letters(4, 1)}), target(4, 1));
    ASSERT_EQ(outcome.pages.size(), 2U);
    EXPECT_EQ(outcome.pages[1].pixels, "ABCD");
}

TEST(PageFitter, WritesTheWholeRowsOfACutPage) {
    std::string stream = raw_raster_stream({letters(4, 3)});
    stream.resize(stream.size() - 1);
    const Outcome outcome = fit(stream, target(4, 5));
    EXPECT_EQ(outcome.pages.at(0).pixels, "ABCDBCDE");
    EXPECT_EQ(outcome.error, "The raster to print is cut short in row 3 of the 3 of page 1.");
}

TEST(PageFitter, MissesRowsThatWouldBeCutAway) {
    // The page's own rows are all there, but the stream is damaged all the same.
    std::string stream = raw_raster_stream({letters(4, 3)});
    stream.resize(stream.size() - 1);
    const Outcome outcome = fit(stream, target(4, 2));
    EXPECT_EQ(outcome.pages.at(0).pixels, "ABCDBCDE");
    EXPECT_NE(outcome.error, "");
}

TEST(PageFitter, SaysWhichResolutionToChoose) {
    TargetPage page = target(4, 1);
    page.header.HWResolution[0] = page.header.HWResolution[1] = 203;
    RawPage fine = letters(4, 1);
    fine.header.HWResolution[0] = fine.header.HWResolution[1] = 600;
    const Outcome outcome = fit(raw_raster_stream({fine}), page);
    EXPECT_EQ(outcome.error,
              "The page comes in 600dpi, the printer prints 203dpi. Choose Resolution=203dpi.");
    EXPECT_EQ(outcome.pages.size(), 0U);

    fine.header.HWResolution[0] = 203;
    EXPECT_EQ(fit(raw_raster_stream({fine}), page).error,
              "The page comes in 203x600dpi, the printer prints 203dpi. Choose Resolution=203dpi.");
}

TEST(PageFitter, RefusesRowsWithoutRoomForTheirLastBits) {
    RawPage page = page_of(k8, 1, 1, "A");
    page.header.cupsWidth = 9;
    page.header.cupsBitsPerColor = page.header.cupsBitsPerPixel = 1;
    EXPECT_EQ(fit(raw_raster_stream({page}), target(12, 1)).error,
              "The raster to print is damaged: a cupsBytesPerLine of 1 is less than the 2 that a "
              "cupsWidth of 9 needs.");
    page.header.cupsWidth = 8;
    EXPECT_EQ(fit(raw_raster_stream({page}), target(12, 1)).error, "");
}

TEST(PageFitter, TheHeaderHasThePagesPolarity) {
    cups_page_header2_t header = page_of(srgb, 4, 1, "").header;
    header.cupsCompression = 7;
    EXPECT_EQ(fittedHeader(header, target(12, 4)).cupsColorSpace, CUPS_CSPACE_K);
    const cups_page_header2_t white = fittedHeader(header, target(12, 4, Polarity::kWhiteSpace));
    EXPECT_EQ(white.cupsColorSpace, CUPS_CSPACE_W);
    EXPECT_EQ(white.cupsBitsPerPixel, 8U);
    EXPECT_EQ(white.cupsNumColors, 1U);
    EXPECT_EQ(white.cupsWidth, 12U);
    EXPECT_EQ(white.cupsBytesPerLine, 12U);
    EXPECT_EQ(white.cupsHeight, 4U);
    EXPECT_EQ(white.cupsCompression, 0U);
}

}  // namespace
}  // namespace kelp_test
