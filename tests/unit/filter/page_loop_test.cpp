#include <filesystem>
#include <string>

#include "filter/text.h"
#include "tests/unit/filter/page_loop_fixture.h"

namespace kelp_test {
namespace {

TEST_F(PageLoop, WritesThePagesSetupAndItsLabel) {
    EXPECT_EQ(print(raster_stream({example_page()})), 0);
    EXPECT_EQ(text, example_setup + example_label);
}

TEST_F(PageLoop, SetsThePrinterUpBeforeEveryPage) {
    EXPECT_EQ(print(raster_stream({example_page(), example_page(), example_page()})), 0);
    const std::string page = example_setup + example_label;
    EXPECT_EQ(text, page + page + page);
}

TEST_F(PageLoop, ReadsCompressedStreamsAlike) {
    EXPECT_EQ(print(raster_stream({example_page()}, CUPS_RASTER_WRITE_COMPRESSED)), 0);
    EXPECT_EQ(text, example_setup + example_label);
}

TEST_F(PageLoop, WritesToEveryStream) {
    MemoryStream recording;
    printer.getOutputStreams().push_back(recording.file());
    EXPECT_EQ(print(raster_stream({example_page()})), 0);
    EXPECT_EQ(recording.take(), example_setup + example_label);
}

TEST_F(PageLoop, EveryBlackPageStartsWithAFullRow) {
    Page page = example_page();
    page.pixels = std::string(32, '\xFF');
    LastSet = 1;
    print(raster_stream({page, page}));
    EXPECT_EQ(count(text, "\nJF:^FO0,0"), 2U) << text;
}

TEST_F(PageLoop, TheRastersSizeReplacesTheSettings) {
    settings.pageWidth = 1;
    settings.pageHeight = 2;
    Page page;
    page.width = 812;
    page.height = 1;
    page.resolution_y = 600;
    print(raster_stream({page}));
    EXPECT_EQ(settings.pageWidth, 101.6F);
    EXPECT_EQ(settings.pageHeight, static_cast<float>(25.4 / 600));
    EXPECT_TRUE(logged("DEBUG:pageWidth: 101.599998,pageHeight: 0.042333")) << log;
    // Single precision leaves 203 * 101.6 just under 812 inches' dots.
    EXPECT_TRUE(text.starts_with("SIZE 101.6 mm, 0.0 mm\r\n^XX\r\n^PW811\r\n^LL0\r\n")) << text;
}

TEST_F(PageLoop, EveryPageHasItsOwnSize) {
    Page wide = example_page();
    wide.width = 32;
    print(raster_stream({example_page(), wide}));
    EXPECT_NE(text.find("^PW16\r\n"), std::string::npos) << text;
    EXPECT_NE(text.find("^PW32\r\n"), std::string::npos) << text;
    EXPECT_EQ(settings.pageWidth, static_cast<float>(32 * 25.4 / 203));
}

TEST_F(PageLoop, ThePagesSetupUsesTheSettings) {
    kelpStrCpy(settings.Origin, "Rotation180", sizeof settings.Origin);
    settings.Darkness = 12;
    print(raster_stream({example_page()}));
    EXPECT_EQ(text.substr(0, text.find("^XZ")),
              "SIZE 2.0 mm, 0.3 mm\r\n^XX\r\n^PW16\r\n^LL2\r\n^MNN\r\n^POI\r\n~SD12\r\n");
}

TEST_F(PageLoop, SettingsArePushedIntoThePrinter) {
    settings.Brightness = 33;
    settings.halftoneType = DitherTattooX8;
    settings.MirrorImage = -1;
    settings.NegativeImage = 2;
    print(raster_stream({example_page()}));
    EXPECT_EQ(printer.getBrightness(), 33);
    EXPECT_EQ(printer.getHalftoneType(), DitherTattooX8);
    EXPECT_TRUE(printer.isMirrorPrint());
    EXPECT_TRUE(printer.isNegativePrint());
    EXPECT_NE(printer.getPageHeader(), nullptr);
}

TEST_F(PageLoop, FlagsThatAreOffAreTurnedOff) {
    printer.setMirrorPrint(true).setNegativePrint(true).setBrightness(9);
    print(raster_stream({example_page()}));
    EXPECT_FALSE(printer.isMirrorPrint());
    EXPECT_FALSE(printer.isNegativePrint());
    EXPECT_EQ(printer.getBrightness(), 0);
}

TEST_F(PageLoop, NothingElseIsPushed) {
    settings.ForceRotation = 2;
    kelpStrCpy(settings.PrintSpeed, "3", sizeof settings.PrintSpeed);
    settings.Darkness = 12;
    print(raster_stream({example_page()}));
    EXPECT_FALSE(printer.isRotate180Print());
    EXPECT_EQ(printer.getContrast(), 0);
    EXPECT_EQ(printer.getPrintSpeed(), 7);
    EXPECT_EQ(printer.getPrintDensity(), 8);
    EXPECT_EQ(printer.getAntiWrinkle(), 0U);
    EXPECT_EQ(printer.getRemoveBlankEdges(), 0);
    EXPECT_EQ(printer.getSkipRightPixels(), 0UL);
}

TEST_F(PageLoop, MirroredAndNegativePagesPrintSo) {
    settings.MirrorImage = 1;
    print(raster_stream({example_page()}));
    // row 1: dots 12 to 15
    EXPECT_EQ(count(text, "\nJFI0F^FO0,0"), 1U) << text;
    settings.MirrorImage = 0;
    settings.NegativeImage = 1;
    print(raster_stream({example_page()}));
    // 254 and 255: every dot prints
    EXPECT_EQ(count(text, "\nJF:^FO0,0"), 1U) << text;
}

TEST_F(PageLoop, BrightnessAndHalftoneShapeThePage) {
    Page page;
    page.height = 1;
    page.pixels = std::string(16, '\x64');  // 100
    print(raster_stream({page}));
    EXPECT_EQ(count(text, "\n,^FO0,0"), 1U) << text;
    settings.Brightness = 6;  // + 30
    print(raster_stream({page}));
    EXPECT_EQ(count(text, "\nJF^FO0,0"), 1U) << text;
    settings.Brightness = 0;
    settings.halftoneType = DitherStevensonArce;  // 1010 in the matrix's first row
    print(raster_stream({page}));
    EXPECT_EQ(count(text, "\nJA^FO0,0"), 1U) << text;
}

TEST_F(PageLoop, CopiesAreThePages) {
    Page page = example_page();
    page.copies = 3;
    print(raster_stream({page, example_page()}));
    EXPECT_EQ(count(text, "^PQ3\n"), 1U);
    EXPECT_EQ(count(text, "^PQ1\n"), 1U);
    EXPECT_TRUE(logged("DEBUG:PAGE: 1 3"));
    EXPECT_TRUE(logged("DEBUG:PAGE: 2 1"));
}

TEST_F(PageLoop, LogsThePageBeforeItIsPrinted) {
    kelpStrCpy(settings.PaperType, "Normal", sizeof settings.PaperType);
    Page page = example_page();
    page.bytes_per_line = 20;
    page.copies = 2;
    print(raster_stream({page}));
    const std::string expected =
        "DEBUG:pageWidth: 2.001971,pageHeight: 0.250246\n"
        "DEBUG:Skip the GAP cmd by Normal paper type\n"
        "DEBUG:PAGE: 1 2\n"
        "\n"
        "DEBUG:header.HWResolution[0]:203\n"
        "\n"
        "DEBUG:header.HWResolution[1]:203\n"
        "DEBUG:header.cupsWidth:16\n"
        "DEBUG:header.cupsHeight:2\n"
        "DEBUG:header.cupsMediaType:0\n"
        "DEBUG:header.cupsBitsPerColor:8\n"
        "DEBUG:header.cupsBitsPerPixel:8\n"
        "DEBUG:header.cupsBytesPerLine:20\n"
        "DEBUG:header.cupsColorOrder:0\n"
        "DEBUG:header.cupsColorSpace:3\n"
        "DEBUG:header.cupsCompression:0\n"
        "DEBUG:header.cupsRowCount:0\n"
        "DEBUG:header.cupsRowFeed:0\n"
        "DEBUG:header.cupsRowStep:0\n"
        "DEBUG:printImage: Start processing image, input width: 16, height: 2, bytes per line: "
        "20\n";
    EXPECT_EQ(log.substr(0, expected.size()), expected);
}

TEST_F(PageLoop, LeavesThePagesDimensionsInAFile) {
    Page page = example_page();
    page.bytes_per_line = 20;
    print(raster_stream({page}));
    ASSERT_FALSE(files.opened().empty());
    EXPECT_EQ(files.opened()[0].path, "/tmp/xxxxx.log");
    EXPECT_EQ(files.opened()[0].mode, "w+");
    EXPECT_EQ(read_file(files.real_path("/tmp/xxxxx.log")),
              "cupsWidth:16, cupsHeight:2, cupsBytesPerLine:20, cupsBitsPerPixel:8\n");
}

TEST_F(PageLoop, TheDimensionsAreThoseOfTheLastPage) {
    Page large = example_page();
    large.width = 1600;
    large.height = 100;
    print(raster_stream({large, example_page()}));
    EXPECT_EQ(read_file(files.real_path("/tmp/xxxxx.log")),
              "cupsWidth:16, cupsHeight:2, cupsBytesPerLine:16, cupsBitsPerPixel:8\n");
}

TEST_F(PageLoop, GoesOnWithoutTheDimensionsFile) {
    std::filesystem::create_directory(files.real_path("/tmp/xxxxx.log"));
    EXPECT_EQ(print(raster_stream({example_page()})), 0);
    EXPECT_EQ(text, example_setup + example_label);
    EXPECT_EQ(count(log, "xxxxx"), 0U) << "and says nothing about it";
}

TEST_F(PageLoop, PagesOfAllSizesShareTheBuffer) {
    Page large;
    large.width = 64;
    large.height = 50;
    large.pixels = std::string(64 * 50, '\xFF');
    print(raster_stream({example_page(), large, example_page()}));
    EXPECT_TRUE(text.ends_with(example_setup + example_label)) << text;
    EXPECT_EQ(count(text, "~DGR:CUPS.GRF,400,8,\nVF" + std::string(49, ':') + "^FO0,0"), 1U)
        << text;
}

TEST_F(PageLoop, LinesLongerThanTheirPixelsArePrintedByTheirLength) {
    Page page;
    page.bytes_per_line = 20;
    page.pixels = std::string(16, '\xFF') + std::string(4, '\0') + std::string(4, '\xFF');
    print(raster_stream({page}));
    EXPECT_EQ(text, example_setup + example_label);
}

TEST_F(PageLoop, WritesTwoSnapshotsAPage) {
    print(raster_stream({example_page(), example_page()}));
    EXPECT_EQ(files.snapshots().size(), 4U);
}

}  // namespace
}  // namespace kelp_test
