#include <gtest/gtest.h>

#include "tests/app/app_test.h"
#include "tests/app/filter_bytes.h"
#include "tests/support/files.h"
#include "tests/support/grey_pages.h"

namespace kelp_test {
namespace {

class AppBadJobs : public AppTest {
  protected:
    AppBadJobs() { add_printer("label-4inch"); }

    // Expects that a job is aborted with nothing sent, and that the next one prints.
    IppJob aborted(const std::string& format, const std::string& document,
                   const IppPrinter::Ticket& ticket = {}) {
        const std::size_t before = labels();
        const int number = printer().print(format, document, ticket);
        const IppJob job = printer().finished(number);
        EXPECT_EQ(job.state, IPP_JSTATE_ABORTED) << job.reasons << "\n" << job.message;
        EXPECT_EQ(labels(), before);
        const std::vector<Page> pages = {sheet()};
        EXPECT_EQ(printed("image/pwg-raster", raster_stream(pages, CUPS_RASTER_WRITE_PWG)),
                  filter_bytes("label-4inch", pages));
        return job;
    }

    // Jobs of which something was sent.
    std::size_t labels() const {
        std::size_t count = 0;
        for (const std::string& bytes : device.received()) {
            count += bytes.empty() ? 0 : 1;
        }
        return count;
    }

    static Page sheet(unsigned resolution = 203) {
        Page page;
        page.width = 20;
        page.height = 12;
        page.color_space = CUPS_CSPACE_SW;
        page.resolution_x = page.resolution_y = resolution;
        page.pixels = gradient(20, 12);
        return page;
    }
};

TEST_F(AppBadJobs, ARasterOfAnotherResolutionTellsWhich) {
    const IppJob job =
        aborted("image/pwg-raster", raster_stream({sheet(300)}, CUPS_RASTER_WRITE_PWG));
    EXPECT_NE(job.reasons.find("document-unprintable-error"), std::string::npos) << job.reasons;
    EXPECT_NE(job.message.find("The page comes in 300dpi, the printer prints 203dpi."),
              std::string::npos)
        << job.message;
}

TEST_F(AppBadJobs, ARasterOfAnotherKindTellsWhatCame) {
    Page page = sheet();
    page.color_space = CUPS_CSPACE_W;
    cups_page_header2_t header = page_header(page);
    header.cupsColorSpace = CUPS_CSPACE_DEVICE1;
    const IppJob job = aborted("image/pwg-raster", raw_raster_stream({{header, page.pixels}}));
    EXPECT_NE(job.message.find("color space 48"), std::string::npos) << job.message;
}

TEST_F(AppBadJobs, MediaThatThePrinterDoesNotTakeAreTheDefaultOnes) {
    const std::string raster = raster_stream({sheet()}, CUPS_RASTER_WRITE_PWG);
    // The framework tells the client that it left them out.
    for (const IppPrinter::Ticket& size : {media_size(21000, 29700), media_size(500, 500)}) {
        EXPECT_EQ(printed("image/pwg-raster", raster, size),
                  filter_bytes("label-4inch", {sheet()}));
    }
}

TEST_F(AppBadJobs, APictureThatIsNoneIsAborted) {
    aborted("image/png", "no picture at all, whatever it was called");
    aborted("image/jpeg", std::string("\xFF\xD8\xFF\xE0", 4) + std::string(100, 'x'));
}

TEST_F(AppBadJobs, APictureCutShortIsAborted) {
    const std::string picture = read_file(KELP_TEST_PICTURE);
    const IppJob job = aborted("image/png", picture.substr(0, picture.size() / 2));
    EXPECT_NE(job.reasons.find("document-format-error"), std::string::npos) << job.reasons;
    EXPECT_NE(job.message.find("a broken PNG"), std::string::npos) << job.message;
}

TEST_F(AppBadJobs, ADocumentOfAnUnknownTypeIsAborted) {
    aborted("text/plain", "words");
    aborted("application/octet-stream", "words");
}

TEST_F(AppBadJobs, AttributesThatMeanNothingAreNotTaken) {
    const std::string raster = raster_stream({sheet()}, CUPS_RASTER_WRITE_PWG);
    for (const IppPrinter::Ticket& ticket :
         {keyword("halftone", "none-such"), keyword("halftone", "%s%n"),
          integer("brightness", 99)}) {
        std::string bytes;
        try {
            bytes = printed("image/pwg-raster", raster, ticket);
        } catch (const std::runtime_error&) {
            continue;  // refused
        }
        EXPECT_EQ(bytes, filter_bytes("label-4inch", {sheet()}));
    }
}

TEST_F(AppBadJobs, ARasterCutShortPrintsNoPartOfAPage) {
    const std::vector<Page> pages = {sheet(), sheet()};
    const std::string raster = raster_stream(pages, CUPS_RASTER_WRITE_PWG);
    const int number = printer().print("image/pwg-raster", raster.substr(0, raster.size() - 30));
    const IppJob job = printer().finished(number);
    EXPECT_EQ(job.state, IPP_JSTATE_ABORTED);
    EXPECT_NE(job.message.find("rows of page 2 are missing."), std::string::npos) << job.message;
    ASSERT_TRUE(wait_until([&] { return device.received().size() == 1; }));
    EXPECT_EQ(device.received()[0], filter_bytes("label-4inch", {sheet()}));
}

}  // namespace
}  // namespace kelp_test
