// Every halftone with mirrored and negative printing, and every brightness, held to the reference.

#include <gtest/gtest.h>

#include "tests/process/reference_comparison.h"
#include "tests/support/grey_pages.h"

namespace kelp_test {
namespace {

const std::vector<std::string>& halftones() {
    static const std::vector<std::string> names{
        "None",   "FloydSteinberg", "Ordered", "Burkes",   "Stucki", "JarvisJudiceNinke",
        "Sierra", "StevensonArce",  "Tattoo",  "Tattoo_X8"};
    return names;
}

Page page_of(unsigned width, unsigned height, std::string pixels) {
    Page page;
    page.width = width;
    page.height = height;
    page.pixels = std::move(pixels);
    return page;
}

// Odd sizes, so that rows end within a byte and within the image's padding.
std::vector<Page> pictures() {
    Random random(2);
    std::vector<Page> pages{
        page_of(61, 47, gradient(61, 47)),          page_of(64, 33, noise(64, 33, random)),
        page_of(90, 50, text_bars(90, 50, random)), page_of(47, 61, asymmetric(47, 61)),
        page_of(24, 12, uniform(24, 12, 77)),       page_of(16, 16, uniform(16, 16, 255))};
    for (std::size_t i = 0; i < pages.size(); i += 2) {
        pages[i].color_space = CUPS_CSPACE_W;
    }
    return pages;
}

class Halftone : public testing::TestWithParam<std::tuple<std::string, bool, bool>> {};

TEST_P(Halftone, PrintsLikeTheReference) {
    const auto& [halftone, mirror, negative] = GetParam();
    const std::string options = "HalftoneType=" + halftone +
                                " MirrorImage=" + (mirror ? "true" : "false") +
                                " NegativeImage=" + (negative ? "true" : "false");
    expect_like_reference(recorded_job(pictures(), options), options);
}

INSTANTIATE_TEST_SUITE_P(All, Halftone,
                         testing::Combine(testing::ValuesIn(halftones()), testing::Bool(),
                                          testing::Bool()),
                         [](const testing::TestParamInfo<Halftone::ParamType>& of) {
                             return std::get<0>(of.param) +
                                    (std::get<1>(of.param) ? "Mirrored" : "") +
                                    (std::get<2>(of.param) ? "Negative" : "");
                         });

class Brightness : public testing::TestWithParam<std::string> {};

TEST_P(Brightness, PrintsLikeTheReference) {
    for (const auto& option : generous_options()) {
        if (option.name != "Brightness") {
            continue;
        }
        for (const std::string& value : option.choices) {
            const std::string options = "HalftoneType=" + GetParam() + " Brightness=" + value;
            expect_like_reference(recorded_job({page_of(61, 47, gradient(61, 47)),
                                                page_of(30, 31, asymmetric(30, 31))},
                                               options),
                                  options);
        }
    }
}

INSTANTIATE_TEST_SUITE_P(Some, Brightness,
                         testing::Values("None", "FloydSteinberg", "Sierra", "Tattoo", "Tattoo_X8"),
                         [](const testing::TestParamInfo<std::string>& of) { return of.param; });

// A document's page, large enough for long runs and for error that travels far.
class WholeLabel : public testing::TestWithParam<std::string> {};

TEST_P(WholeLabel, PrintsLikeTheReference) {
    Random random(3);
    Page text = page_of(812, 300, text_bars(812, 300, random));
    Page picture = page_of(412, 309, asymmetric(412, 309));
    const std::string options = "HalftoneType=" + GetParam();
    expect_like_reference(recorded_job({text, picture}, options), options);
}

INSTANTIATE_TEST_SUITE_P(All, WholeLabel, testing::ValuesIn(halftones()),
                         [](const testing::TestParamInfo<std::string>& of) { return of.param; });

}  // namespace
}  // namespace kelp_test
