// Devices that are slow, gone or come back, and an application that is killed.

#include <gtest/gtest.h>

#include <set>

#include "tests/app/app_test.h"
#include "tests/app/filter_bytes.h"
#include "tests/support/grey_pages.h"

namespace kelp_test {
namespace {

class AppLostPrinter : public AppTest {
  protected:
    AppLostPrinter() { add_printer("label-4inch"); }

    static Page sheet(unsigned seed, unsigned height = 1218) {
        Page page;
        page.width = 812;
        page.height = height;
        page.color_space = CUPS_CSPACE_SW;
        Random random(seed);
        page.pixels = noise(page.width, page.height, random);
        return page;
    }
    static std::string raster(const std::vector<Page>& pages) {
        return raster_stream(pages, CUPS_RASTER_WRITE_PWG);
    }
};

TEST_F(AppLostPrinter, ASlowOneHoldsUpNoOther) {
    SocketPrinter slow;
    application.add_printer("slow", "kelp-label-4inch", slow.device());
    slow.stall_after(1000);
    // More than the connection holds by itself.
    std::vector<Page> many(40, sheet(1));
    std::thread sender([&] {
        const int number = printer("slow").print("image/pwg-raster", raster(many));
        EXPECT_EQ(printer("slow").finished(number).state, IPP_JSTATE_COMPLETED);
    });
    EXPECT_TRUE(wait_until([&] { return slow.is_stalled(); }));
    const std::vector<Page> pages = {sheet(2)};
    EXPECT_EQ(printed("image/pwg-raster", raster(pages)), filter_bytes("label-4inch", pages));
    slow.go_on();
    sender.join();
    ASSERT_TRUE(wait_until([&] { return slow.received().size() == 1; }));
    EXPECT_EQ(slow.received()[0], filter_bytes("label-4inch", many));
}

TEST_F(AppLostPrinter, OneThatIsLostInTheMiddleAbortsTheJobWithAReason) {
    device.go_away_after(1000);
    const std::vector<Page> many(40, sheet(3));
    const int number = printer().print("image/pwg-raster", raster(many));
    const IppJob job = printer().finished(number);
    EXPECT_EQ(job.state, IPP_JSTATE_ABORTED);
    EXPECT_NE(job.message.find("The printer was lost in the middle of the job"), std::string::npos)
        << job.message;
}

TEST_F(AppLostPrinter, AJobWaitsForOneThatIsNotThereYet) {
    device.go_away_after(0);
    const int lost = printer().print("image/pwg-raster", raster(std::vector<Page>(40, sheet(4))));
    EXPECT_EQ(printer().finished(lost).state, IPP_JSTATE_ABORTED);
    ASSERT_TRUE(wait_until([&] { return device.is_away(); }));
    const std::size_t before = device.received().size();

    const std::vector<Page> pages = {sheet(5)};
    std::thread sender([&] {
        const int number = printer().print("image/pwg-raster", raster(pages));
        EXPECT_EQ(printer().finished(number).state, IPP_JSTATE_COMPLETED);
    });
    EXPECT_TRUE(wait_until([&] { return printer().attribute("printer-state") == "stopped"; }));
    device.come_back();
    sender.join();
    ASSERT_TRUE(wait_until([&] { return device.received().size() > before; }));
    EXPECT_EQ(device.received().back(), filter_bytes("label-4inch", pages));
}

TEST_F(AppLostPrinter, ACancelledJobSendsNoPartOfALabel) {
    device.stall_after(1000);
    const std::vector<Page> many(60, sheet(5));
    int number = 0;
    std::thread sender([&] { number = printer().print("image/pwg-raster", raster(many)); });
    EXPECT_TRUE(wait_until([&] { return device.is_stalled(); }));
    printer().cancel(1);
    device.go_on();
    sender.join();
    EXPECT_EQ(printer().finished(1).state, IPP_JSTATE_CANCELED);
    ASSERT_TRUE(wait_until([&] { return device.received().size() == 1; }));
    const std::string bytes = device.received()[0];
    EXPECT_TRUE(bytes.ends_with("^XZ\r\n"));
    const std::string all = filter_bytes("label-4inch", many);
    EXPECT_LT(bytes.size(), all.size());
    EXPECT_TRUE(all.starts_with(bytes));
}

TEST_F(AppLostPrinter, AJobThatIsCancelledInTheMiddleOfAPageDoesNotPrintIt) {
    const int number = printer().print_in_halves("image/pwg-raster", raster({sheet(6)}), [&] {
        EXPECT_TRUE(wait_until([&] {
            return application.log().find("Page 1 raster data is 812x1218x8") != std::string::npos;
        }));
        printer().cancel(1);
    });
    EXPECT_EQ(printer().finished(number).state, IPP_JSTATE_CANCELED);
    const std::vector<Page> pages = {sheet(7)};
    EXPECT_EQ(printed("image/pwg-raster", raster(pages)), filter_bytes("label-4inch", pages));
    for (const std::string& bytes : device.received()) {
        EXPECT_TRUE(bytes.empty() || bytes == device.received().back());
    }
}

}  // namespace
}  // namespace kelp_test
