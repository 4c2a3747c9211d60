// Raster that cannot be printed: the job ends in error with the reason in its log, and the queue
// goes on.

#include <sstream>

#include "tests/spooler/spooler_test.h"
#include "tests/support/files.h"
#include "tests/support/grey_pages.h"

namespace kelp_test {
namespace {

Page label_page() {
    Page page;
    page.width = 812;
    page.height = 1218;
    page.pixels = gradient(page.width, page.height);
    return page;
}

std::string raster_of_16_bits() {
    RawPage page = raw_page(label_page());
    page.header.cupsBitsPerColor = 16;
    page.header.cupsBitsPerPixel = 16;
    page.header.cupsBytesPerLine = 2 * page.header.cupsWidth;
    page.pixels += page.pixels;
    return raw_raster_stream({page});
}

class BrokenRasterTest : public SpoolerTest {
  protected:
    // Prints the bytes as a document of this type.
    int print_raster(const std::string& type, const std::string& bytes) {
        write_file(file("page.ras"), bytes);
        return spooler.print({"-d", "label", "-o", "document-format=application/" + type,
                              file("page.ras").string()});
    }
    void expect_error(int job, const std::string& message) {
        const JobStatus status = spooler.wait_for(job);
        EXPECT_TRUE(status.state == IPP_JSTATE_STOPPED || status.state == IPP_JSTATE_ABORTED)
            << ippEnumString("job-state", status.state);
        // As one line of its own at the level of an error, though many programs write to the log.
        std::istringstream log(spooler.log_of(job));
        bool told = false;
        for (std::string line; std::getline(log, line);) {
            told = told || (line.starts_with("E ") && line.find(message) != std::string::npos);
        }
        EXPECT_TRUE(told) << log.str();
    }
};

TEST_F(BrokenRasterTest, GoodRasterPrints) {
    const int job = print_raster("vnd.cups-raster", raster_stream({label_page()}));
    expect_completed(job);
    const JobRecord record = read_record(spooler.folders().records(), job);
    ASSERT_EQ(record.pages().size(), 1U);
    EXPECT_TRUE(record.pages()[0].pixels == label_page().pixels);
    expect_made_from(record, label_printer.received().at(0));
}

TEST_F(BrokenRasterTest, RasterOf16BitsEndsInError) {
    expect_error(print_raster("vnd.cups-raster", raster_of_16_bits()),
                 "16 bits per color, 16 bits per pixel");
    expect_ready("label");
}

TEST_F(BrokenRasterTest, RasterCutShortEndsInError) {
    const std::string whole = raster_stream({label_page()});
    expect_error(print_raster("vnd.cups-raster", whole.substr(0, whole.size() / 2)),
                 "The raster to print is cut short in row ");
    expect_ready("label");
}

TEST_F(BrokenRasterTest, RasterOfAnotherResolutionEndsInError) {
    Page page = label_page();
    page.resolution_x = 300;
    page.resolution_y = 300;
    expect_error(print_raster("vnd.cups-raster", raster_stream({page})),
                 "The page comes in 300dpi, the printer prints 203dpi. Choose Resolution=203dpi.");
    expect_ready("label");
}

TEST_F(BrokenRasterTest, GarbageEndsInError) {
    expect_error(print_raster("vnd.cups-raster", "3SaR" + std::string(5000, '\xFF')),
                 "The raster to print is damaged");
    expect_ready("label");
}

// What the last filter itself refuses, should anything ever reach it that was not fitted.
TEST_F(BrokenRasterTest, RasterOf16BitsForTheLastFilterEndsInError) {
    expect_error(print_raster("vnd.kelp-raster", raster_of_16_bits()),
                 "Unsupported bits per pixel : 16 ! Requires 8 bits per pixel!");
    expect_ready("label");
}

}  // namespace
}  // namespace kelp_test
