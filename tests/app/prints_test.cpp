// What comes out of the application is what a queue of the same model sends.

#include <gtest/gtest.h>

#include "tests/app/app_test.h"
#include "tests/app/filter_bytes.h"
#include "tests/support/files.h"
#include "tests/support/grey_pages.h"

namespace kelp_test {
namespace {

// White-space grey, as IPP's raster has it.
Page grey_page(unsigned width, unsigned height, unsigned seed) {
    Page page;
    page.width = width;
    page.height = height;
    page.color_space = CUPS_CSPACE_SW;
    Random random(seed);
    page.pixels = seed % 2 == 0 ? noise(width, height, random) : text_bars(width, height, random);
    return page;
}

class AppPrints : public AppTest {
  protected:
    std::string printed_raster(const std::vector<Page>& pages,
                               const IppPrinter::Ticket& ticket = {}) {
        return printed("image/pwg-raster", raster_stream(pages, CUPS_RASTER_WRITE_PWG), ticket);
    }
};

struct Form {
    const char* model;
    unsigned width;  // of the raster that comes
    unsigned height;
    const char* size;  // of the queue
    int media_width;   // hundredths of a millimetre
    int media_length;
};

class AppModels : public AppPrints, public testing::WithParamInterface<Form> {
  protected:
    AppModels() { add_printer(GetParam().model); }
};

TEST_P(AppModels, SendTheBytesOfTheFilter) {
    const Form& form = GetParam();
    const std::vector<Page> pages = {grey_page(form.width, form.height, 1),
                                     grey_page(form.width, form.height, 2)};
    EXPECT_EQ(printed_raster(pages, media_size(form.media_width, form.media_length)),
              filter_bytes(form.model, pages, std::string("PageSize=") + form.size));
}

INSTANTIATE_TEST_SUITE_P(EachModel, AppModels,
                         testing::Values(Form{"label-2inch", 457, 254, "2.25x1.25in", 5715, 3175},
                                         Form{"label-3inch", 639, 400, "80x50mm", 8000, 5000},
                                         Form{"label-4inch", 812, 1218, "4x6in", 10160, 15240},
                                         Form{"label-4inch", 799, 1199, "100x150mm", 10000, 15000},
                                         Form{"stencil-a5", 839, 1183, "Tattoo_A6", 10500, 14800},
                                         Form{"stencil-a4", 1678, 2374, "A4", 21000, 29700},
                                         // 100 x 60 points
                                         Form{"label-4inch", 282, 169, "Custom.100x60", 3528,
                                              2117}),
                         [](const testing::TestParamInfo<Form>& each) {
                             std::string name =
                                 std::string(each.param.model) + "_" + each.param.size;
                             for (char& c : name) {
                                 c = std::isalnum(static_cast<unsigned char>(c)) != 0 ? c : '_';
                             }
                             return name;
                         });

TEST_F(AppPrints, AppleRasterIsPrintedLikeAnyOther) {
    add_printer("label-4inch");
    const std::vector<Page> pages = {grey_page(812, 1218, 3)};
    EXPECT_EQ(printed("image/urf", raster_stream(pages, CUPS_RASTER_WRITE_APPLE)),
              filter_bytes("label-4inch", pages));
}

TEST_F(AppPrints, CopiesAreThePrinters) {
    add_printer("label-4inch");
    Page page = grey_page(812, 100, 4);
    page.copies = 3;
    EXPECT_EQ(printed_raster({page}), filter_bytes("label-4inch", {page}));
    Page once = page;
    once.copies = 1;
    EXPECT_EQ(printed_raster({once}, integer("copies", 3)), filter_bytes("label-4inch", {page}));
}

TEST_F(AppPrints, APictureComesOncePerJobWhateverItsCopies) {
    add_printer("label-4inch");
    const std::string picture = read_file(KELP_TEST_PICTURE);
    const std::string once = printed("image/png", picture);
    const std::string thrice = printed("image/png", picture, integer("copies", 3));
    ASSERT_NE(once.find("^PQ1\n"), std::string::npos);
    EXPECT_EQ(thrice, std::string(once).replace(once.find("^PQ1\n"), 5, "^PQ3\n"));
}

TEST_F(AppPrints, PrinterCommandsPassAsTheyAre) {
    add_printer("label-4inch");
    std::string commands = "^XA^FO10,10^FDany \x01 byte\xFF^FS^XZ\n";
    commands.append(200'000, '\0');
    EXPECT_EQ(printed("application/vnd.kelp-zpl", commands), commands);
    EXPECT_EQ(printed("application/octet-stream", commands), commands);
    EXPECT_EQ(printed("application/vnd.kelp-zpl", commands, integer("copies", 2)),
              commands + commands);
}

TEST_F(AppPrints, NothingIsWrittenBesideTheState) {
    add_printer("stencil-a5");
    printed_raster({grey_page(1180, 20, 5)}, media_size(14800, 21000));
    EXPECT_EQ(application.log().find("Saving original"), std::string::npos);
    EXPECT_NE(application.log().find("PageProcess: TQ dithering is enabled"), std::string::npos);
}

}  // namespace
}  // namespace kelp_test
