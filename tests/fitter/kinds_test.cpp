// Every kind of pixels into both polarities, through the program.

#include <gtest/gtest.h>

#include "tests/fitter/fitter_job.h"

namespace kelp_test {
namespace {

// Four dots and their samples in a black-space and in a white-space raster.
struct Example {
    Kind kind;
    std::string row;
    std::string black;
    std::string white;
};

std::vector<Example> examples() {
    return {
        {k8, {"\x00\x01\x80\xFF", 4}, {"\x00\x01\x80\xFF", 4}, {"\xFF\xFE\x7F\x00", 4}},
        {w8, {"\x00\x01\x80\xFF", 4}, {"\xFF\xFE\x7F\x00", 4}, {"\x00\x01\x80\xFF", 4}},
        {sw8, {"\x00\x01\x80\xFF", 4}, {"\xFF\xFE\x7F\x00", 4}, {"\x00\x01\x80\xFF", 4}},
        // 1010: in black-space a 1 is black.
        {k1, "\xAF", {"\xFF\x00\xFF\x00", 4}, {"\x00\xFF\x00\xFF", 4}},
        {w1, "\xAF", {"\x00\xFF\x00\xFF", 4}, {"\xFF\x00\xFF\x00", 4}},
        {sw1, "\xAF", {"\x00\xFF\x00\xFF", 4}, {"\xFF\x00\xFF\x00", 4}},
        // Red 299 * 255 / 1000 = 76.245, green 149.685, blue 29.07, white 255.
        {rgb,
         {"\xFF\x00\x00\x00\xFF\x00\x00\x00\xFF\xFF\xFF\xFF", 12},
         {"\xB3\x69\xE2\x00", 4},
         {"\x4C\x96\x1D\xFF", 4}},
        {srgb,
         {"\xFF\x00\x00\x00\xFF\x00\x00\x00\xFF\xFF\xFF\xFF", 12},
         {"\xB3\x69\xE2\x00", 4},
         {"\x4C\x96\x1D\xFF", 4}},
    };
}

TEST(Kinds, EachComesOutInThePolarityOfThePpd) {
    for (const Example& example : examples()) {
        for (const bool black : {true, false}) {
            PagePpd ppd{.width = "4", .height = "1"};
            ppd.color_space = black ? CUPS_CSPACE_K : CUPS_CSPACE_W;
            const std::vector<RawPage> pages =
                fitted(fitter_job({page_of(example.kind, 4, 1, example.row)}, ppd));
            ASSERT_EQ(pages.size(), 1U) << example.kind.name;
            const cups_page_header2_t& header = pages[0].header;
            EXPECT_EQ(header.cupsColorSpace, black ? CUPS_CSPACE_K : CUPS_CSPACE_W);
            EXPECT_EQ(header.cupsBitsPerColor, 8U);
            EXPECT_EQ(header.cupsBitsPerPixel, 8U);
            EXPECT_EQ(header.cupsNumColors, 1U);
            EXPECT_EQ(header.cupsColorOrder, CUPS_ORDER_CHUNKED);
            EXPECT_EQ(pages[0].pixels, black ? example.black : example.white) << example.kind.name;
        }
    }
}

TEST(Kinds, WhiteIsAddedInThePolarityOfThePpd) {
    for (const Kind& kind : kinds()) {
        // One black dot; the padding bits and bytes are what they are.
        const bool black_is_zero = kind.space != CUPS_CSPACE_K;
        const std::string dot(kind.row_bytes(1), black_is_zero ? '\0' : '\xFF');
        const std::string page = "\xFF" + std::string(11, '\0') + std::string(12, '\0');
        std::string inverted = page;
        for (char& sample : inverted) {
            sample = static_cast<char>(~sample);
        }
        PagePpd ppd{.width = "12", .height = "2"};
        EXPECT_EQ(fitted(fitter_job({page_of(kind, 1, 1, dot)}, ppd)).at(0).pixels, page)
            << kind.name;
        ppd.color_space = CUPS_CSPACE_W;
        EXPECT_EQ(fitted(fitter_job({page_of(kind, 1, 1, dot)}, ppd)).at(0).pixels, inverted)
            << kind.name;
    }
}

// What else libcups has a name for, and depths that other drivers use.
TEST(Kinds, OthersAreRefusedByTheirNumbers) {
    struct Refused {
        Kind kind;
        std::vector<std::string> named;
    };
    for (const Refused& refused : {
             Refused{{"K16", CUPS_CSPACE_K, 16, 16}, {"space 3", "16 bits per pixel"}},
             Refused{{"K2", CUPS_CSPACE_K, 2, 2}, {"space 3", "2 bits per pixel"}},
             Refused{{"W4", CUPS_CSPACE_W, 4, 4}, {"space 0", "4 bits per pixel"}},
             Refused{{"RGB48", CUPS_CSPACE_RGB, 16, 48}, {"space 1", "48 bits per pixel"}},
             Refused{{"RGB3", CUPS_CSPACE_RGB, 1, 4}, {"space 1", "4 bits per pixel"}},
             Refused{{"RGB8", CUPS_CSPACE_RGB, 8, 8}, {"space 1", "8 bits per pixel"}},
             Refused{{"CMYK", CUPS_CSPACE_CMYK, 8, 32}, {"space 6", "32 bits per pixel"}},
             Refused{{"CMY", CUPS_CSPACE_CMY, 8, 24}, {"space 4", "24 bits per pixel"}},
             Refused{{"RGBA", CUPS_CSPACE_RGBA, 8, 32}, {"space 2", "32 bits per pixel"}},
             Refused{{"ADOBERGB", CUPS_CSPACE_ADOBERGB, 8, 24}, {"space 20", "24 bits per pixel"}},
             Refused{{"K24", CUPS_CSPACE_K, 8, 24}, {"space 3", "24 bits per pixel"}},
             Refused{{"GOLD", CUPS_CSPACE_GOLD, 8, 8}, {"space 13", "8 bits per pixel"}},
         }) {
        const JobResult result =
            run_fitter(fitter_job({page_of(refused.kind, 8, 1, std::string(64, 'x'))}));
        expect_error(result, refused.named);
        EXPECT_EQ(pages_in(result.output).size(), 0U) << refused.kind.name;
    }
}

TEST(Kinds, BandedAndPlanarColorIsRefused) {
    for (const cups_order_t order : {CUPS_ORDER_BANDED, CUPS_ORDER_PLANAR}) {
        RawPage page = page_of(rgb, 8, 1, std::string(72, 'x'));
        page.header.cupsColorOrder = order;
        expect_error(run_fitter(fitter_job({page})),
                     {"space 1", "color order " + std::to_string(static_cast<int>(order))});
    }
}

TEST(Kinds, TheOrderOfASingleColorIsNoMatter) {
    for (const cups_order_t order : {CUPS_ORDER_BANDED, CUPS_ORDER_PLANAR}) {
        RawPage page = page_of(k8, 4, 2, "abcdefgh");
        page.header.cupsColorOrder = order;
        const PagePpd ppd{.width = "4", .height = "2"};
        EXPECT_EQ(fitted(fitter_job({page, page}, ppd)).at(1).pixels, "abcdefgh");
        // As many planes as it says, so it is not what it seems.
        page.header.cupsNumColors = 2;
        if (order == CUPS_ORDER_PLANAR) {
            expect_error(run_fitter(fitter_job({page}, ppd)), {"color order 2", "2 colors"});
        }
    }
}

TEST(Kinds, APageThatCannotBeFittedEndsTheJobBehindTheGoodOnes) {
    const RawPage good = page_of(k8, 4, 1, "abcd");
    const RawPage bad = page_of({"CMYK", CUPS_CSPACE_CMYK, 8, 32}, 4, 1, "");
    const JobResult result =
        run_fitter(fitter_job({good, bad, good}, PagePpd{.width = "4", .height = "1"}));
    expect_error(result, {"space 6"});
    ASSERT_EQ(pages_in(result.output).size(), 1U);
    EXPECT_EQ(pages_in(result.output)[0].pixels, "abcd");
}

}  // namespace
}  // namespace kelp_test
