// Each attribute of a job, and the driver's option that it stands for.

#include <gtest/gtest.h>

#include "tests/app/app_test.h"
#include "tests/app/filter_bytes.h"
#include "tests/support/grey_pages.h"

namespace kelp_test {
namespace {

Page sheet() {
    Page page;
    page.width = 404;
    page.height = 60;
    page.color_space = CUPS_CSPACE_SW;
    page.pixels = gradient(page.width, page.height);
    return page;
}

IppPrinter::Ticket tracking(const std::string& value) {
    return [=](ipp_t* job) {
        ipp_t* media = ippNew();
        ippAddString(media, IPP_TAG_ZERO, IPP_TAG_KEYWORD, "media-tracking", nullptr,
                     value.c_str());
        ippAddCollection(job, IPP_TAG_JOB, "media-col", media);
        ippDelete(media);
    };
}

struct Attribute {
    const char* name;
    const char* model;
    IppPrinter::Ticket ticket;
    const char* options;  // of the queue
    bool is_default = false;
};

std::vector<Attribute> attributes() {
    const auto upside_down = [](ipp_t* job) {
        ippAddInteger(job, IPP_TAG_JOB, IPP_TAG_ENUM, "orientation-requested",
                      IPP_ORIENT_REVERSE_PORTRAIT);
    };
    return {
        {"Threshold", "label-4inch", keyword("halftone", "threshold"), "HalftoneType=None"},
        {"Ordered", "label-4inch", keyword("halftone", "ordered-4x4"),
         "HalftoneType=FloydSteinberg"},
        {"Burkes", "label-4inch", keyword("halftone", "burkes"), "HalftoneType=Ordered", true},
        {"Stucki", "label-4inch", keyword("halftone", "stucki"), "HalftoneType=Burkes"},
        {"Jarvis", "label-4inch", keyword("halftone", "jarvis-judice-ninke"),
         "HalftoneType=Stucki"},
        {"Sierra", "label-4inch", keyword("halftone", "sierra"), "HalftoneType=JarvisJudiceNinke"},
        {"StevensonArce", "label-4inch", keyword("halftone", "stevenson-arce"),
         "HalftoneType=Sierra"},
        {"Bayer", "label-4inch", keyword("halftone", "bayer"), "HalftoneType=StevensonArce"},
        {"LightStencil", "stencil-a4", keyword("halftone", "stencil-light"), "HalftoneType=Tattoo",
         true},
        {"DenseStencil", "stencil-a4", keyword("halftone", "stencil-dense"),
         "HalftoneType=Tattoo_X8"},
        {"LighterLabel", "label-4inch", integer("brightness", 4), "Brightness=-4"},
        {"DarkerStencil", "stencil-a4", integer("brightness", -7), "Brightness=-7"},
        {"Mirror", "label-4inch", boolean("mirror", true), "MirrorImage=True"},
        {"Negative", "stencil-a4", boolean("negative", true), "NegativeImage=False"},
        {"Ribbon", "label-4inch", keyword("print-method", "ribbon"), "MediaMethod=Transfer"},
        {"ThermalPaper", "label-4inch", keyword("print-method", "direct-thermal"),
         "MediaMethod=Direct"},
        {"SensingOfThePrinter", "label-4inch", keyword("media-sensing", "printer-default"),
         "PaperType=Normal"},
        {"Continuous", "label-4inch", tracking("continuous"), "PaperType=Continue GapsHeight=0"},
        {"Marks", "label-4inch", tracking("mark"), "PaperType=LabelMark"},
        {"GapsOfStencils", "stencil-a4", tracking("gap"), "PaperType=LabelGaps GapsHeight=3"},
        {"LeastDarkness", "label-4inch", integer("print-darkness", 1), "Darkness=0"},
        {"HalfDarkness", "label-4inch", integer("print-darkness", 50), "Darkness=15"},
        {"FullDarkness", "label-4inch", integer("print-darkness", 100), "Darkness=30"},
        {"SlowestSpeed", "label-4inch", integer("print-speed", 5080), "PrintSpeed=2"},
        {"FastestSpeed", "label-4inch", integer("print-speed", 15240), "PrintSpeed=6"},
        {"UpsideDown", "label-4inch", upside_down, "Origin=Rotation180"},
    };
}

class AppAttributes : public AppTest, public testing::WithParamInterface<Attribute> {};

TEST_P(AppAttributes, SendsTheBytesOfTheFiltersOption) {
    const Attribute& attribute = GetParam();
    add_printer(attribute.model);
    const std::vector<Page> pages = {sheet()};
    const std::string raster = raster_stream(pages, CUPS_RASTER_WRITE_PWG);
    const std::string sent = printed("image/pwg-raster", raster, attribute.ticket);
    EXPECT_EQ(sent, filter_bytes(attribute.model, pages, attribute.options));
    EXPECT_EQ(sent == filter_bytes(attribute.model, pages), attribute.is_default);
}

INSTANTIATE_TEST_SUITE_P(Each, AppAttributes, testing::ValuesIn(attributes()),
                         [](const testing::TestParamInfo<Attribute>& each) {
                             return std::string(each.param.name);
                         });

struct Mode {
    const char* keyword;
    const char* choice;
};

class AppModes : public AppTest, public testing::WithParamInterface<Mode> {};

TEST_P(AppModes, SendsTheBytesOfTheFiltersOption) {
    add_printer("label-4inch");
    const ProcessResult changed =
        application.run({"modify", "-d", "labels", "-o",
                         std::string("label-mode-configured=") + GetParam().keyword});
    ASSERT_EQ(changed.exit_status, 0) << changed.error;
    const std::vector<Page> pages = {sheet()};
    EXPECT_EQ(printed("image/pwg-raster", raster_stream(pages, CUPS_RASTER_WRITE_PWG)),
              filter_bytes("label-4inch", pages, std::string("PostAction=") + GetParam().choice));
}

INSTANTIATE_TEST_SUITE_P(Each, AppModes,
                         testing::Values(Mode{"tear-off", "TearOff"}, Mode{"peel-off", "PeelOff"},
                                         Mode{"cutter", "Cut"}),
                         [](const testing::TestParamInfo<Mode>& each) {
                             return std::string(each.param.choice);
                         });

class AppDefaults : public AppTest {};

TEST_F(AppDefaults, OfThePrinterHoldForItsJobs) {
    add_printer("label-4inch");
    const ProcessResult changed =
        application.run({"modify", "-d", "labels", "-o", "halftone=bayer", "-o", "mirror=true",
                         "-o", "print-speed=4in", "-o", "printer-darkness-configured=40"});
    ASSERT_EQ(changed.exit_status, 0) << changed.error;
    const std::vector<Page> pages = {sheet()};
    const std::string raster = raster_stream(pages, CUPS_RASTER_WRITE_PWG);
    const std::string options = "MirrorImage=True PrintSpeed=4 HalftoneType=";
    EXPECT_EQ(printed("image/pwg-raster", raster),
              filter_bytes("label-4inch", pages, options + "StevensonArce Darkness=12"));
    // The job's own go first, and its darkness is added.
    EXPECT_EQ(printed("image/pwg-raster", raster,
                      all_of({keyword("halftone", "threshold"), integer("print-darkness", -10)})),
              filter_bytes("label-4inch", pages, options + "None Darkness=9"));
}

}  // namespace
}  // namespace kelp_test
