// Devices that are slow, gone or come back, and an application that is killed.

#include <gtest/gtest.h>

#include <chrono>
#include <set>
#include <thread>

#include "tests/app/app_test.h"
#include "tests/app/filter_bytes.h"
#include "tests/app/silent_port.h"
#include "tests/support/files.h"
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
    std::string reasons(const std::string& name = "labels") const {
        return printer(name).attribute("printer-state-reasons");
    }
    // Whether a job is, with its document.
    bool is_saved(int job) const {
        const std::filesystem::path state = application.state_folder() / "printers.state";
        return std::filesystem::exists(state) &&
               read_file(state).find("p00001j00000000" + std::to_string(job)) != std::string::npos;
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
    EXPECT_TRUE(wait_until([&] { return reasons() == "offline"; }));
    device.come_back();
    sender.join();
    EXPECT_EQ(reasons(), "none");
    ASSERT_TRUE(wait_until([&] { return device.received().size() > before; }));
    EXPECT_EQ(device.received().back(), filter_bytes("label-4inch", pages));
}

TEST_F(AppLostPrinter, AJobThatWaitsForItCanBeCancelled) {
    device.go_away_after(0);
    printer().print("image/pwg-raster", raster(std::vector<Page>(40, sheet(8))));
    ASSERT_TRUE(wait_until([&] { return device.is_away(); }));
    std::thread sender([&] { printer().print("image/pwg-raster", raster({sheet(9)})); });
    EXPECT_TRUE(wait_until([&] { return reasons() == "offline"; }));
    printer().cancel(2);
    EXPECT_EQ(printer().finished(2).state, IPP_JSTATE_CANCELED);
    sender.join();
    device.come_back();
    const std::vector<Page> pages = {sheet(10)};
    EXPECT_EQ(printed("image/pwg-raster", raster(pages)), filter_bytes("label-4inch", pages));
    EXPECT_EQ(reasons(), "none");
}

TEST_F(AppLostPrinter, AJobThatWaitsForItPrintsOnceAfterTheServerWasKilled) {
    device.go_away_after(0);
    printer().print("image/pwg-raster", raster(std::vector<Page>(40, sheet(11))));
    ASSERT_TRUE(wait_until([&] { return device.is_away(); }));
    const std::size_t before = device.received().size();
    printer().print("application/vnd.kelp-zpl", "^XA^FDonce^FS^XZ");
    EXPECT_TRUE(wait_until([&] { return reasons() == "offline"; }));
    // The state is saved within a second or two.
    EXPECT_TRUE(wait_until([&] { return is_saved(2); }));
    application.kill_and_restart();
    device.come_back();
    ASSERT_TRUE(wait_until([&] { return device.received().size() > before; }));
    EXPECT_EQ(printer().finished(2).state, IPP_JSTATE_COMPLETED);
    ASSERT_EQ(device.received().size(), before + 1);
    EXPECT_EQ(device.received().back(), "^XA^FDonce^FS^XZ");
}

TEST_F(AppLostPrinter, AJobOfWhichSomethingWasSentDoesNotPrintAgainAfterTheServerWasKilled) {
    device.stall_after(1000);
    const int begun = printer().print("application/vnd.kelp-zpl",
                                      "^XA^FDtwice^FS^XZ" + std::string(30'000'000, ' '));
    ASSERT_TRUE(wait_until([&] { return device.is_stalled(); }));
    const int waiting = printer().print("application/vnd.kelp-zpl", "^XA^FDonce^FS^XZ");
    EXPECT_TRUE(wait_until([&] { return is_saved(2); }));
    application.kill_and_restart();
    device.go_on();
    EXPECT_EQ(printer().finished(waiting).state, IPP_JSTATE_COMPLETED);
    EXPECT_EQ(printer().finished(begun).state, IPP_JSTATE_ABORTED);
    ASSERT_TRUE(wait_until([&] { return device.connections().size() == 2; }));
    EXPECT_EQ(device.connections()[1].bytes, "^XA^FDonce^FS^XZ");
    // Nor after the next time.
    application.stop();
    application.kill_and_restart();
    EXPECT_EQ(printed("application/vnd.kelp-zpl", "^XA^FDlast^FS^XZ"), "^XA^FDlast^FS^XZ");
    EXPECT_EQ(device.connections().size(), 3U);
    EXPECT_TRUE(wait_until(
        [&] { return std::filesystem::is_empty(application.state_folder() / "begun"); }));
}

TEST_F(AppLostPrinter, NorDoesAJobThatFollowsAnotherOnItsConnection) {
    const std::string large = "^XA^FDtwice^FS^XZ" + std::string(10'000'000, ' ');
    device.stall_after(1000);
    printer().print("application/vnd.kelp-zpl", large);
    ASSERT_TRUE(wait_until([&] { return device.is_stalled(); }));
    const int second = printer().print("application/vnd.kelp-zpl", large);
    EXPECT_TRUE(wait_until([&] { return is_saved(2); }));
    device.stall_after(large.size() + 1000);
    ASSERT_TRUE(wait_until([&] {
        return device.is_stalled() && device.connections()[0].bytes.size() > large.size();
    }));
    application.kill_and_restart();
    device.go_on();
    EXPECT_EQ(printer().finished(second).state, IPP_JSTATE_ABORTED);
    EXPECT_EQ(printed("application/vnd.kelp-zpl", "^XA^FDlast^FS^XZ"), "^XA^FDlast^FS^XZ");
    EXPECT_EQ(device.connections().size(), 2U);
}

TEST_F(AppLostPrinter, AJobWhoseDocumentCameSlowlyPrintsAfterTheServerWasKilled) {
    device.stall_after(1000);
    printer().print("application/vnd.kelp-zpl", std::string(30'000'000, ' '));
    ASSERT_TRUE(wait_until([&] { return device.is_stalled(); }));
    const std::string document = "^XA^FDslow^FS^XZ" + std::string(200'000, ' ');
    // In the pause the state is saved without the document.
    const int slow = printer().print_with_pause(
        "application/vnd.kelp-zpl", document,
        {100'000, [] { std::this_thread::sleep_for(std::chrono::milliseconds(2500)); }});
    EXPECT_TRUE(wait_until([&] { return is_saved(2); }, std::chrono::seconds(10)));
    application.kill_and_restart();
    device.go_on();
    EXPECT_EQ(printer().finished(slow).state, IPP_JSTATE_COMPLETED);
    ASSERT_TRUE(wait_until([&] { return device.connections().size() == 2; }));
    EXPECT_TRUE(wait_until([&] { return device.connections()[1].bytes == document; }));
}

TEST_F(AppLostPrinter, ATitleWithLineEndsAddsNoPrinterWhenTheServerIsStartedAnew) {
    device.go_away_after(0);
    printer().print("application/vnd.kelp-zpl", "^XA^XZ");
    ASSERT_TRUE(wait_until([&] { return device.is_away(); }));
    const std::string title =
        "x\n<Printer id=77 name=stranger did=x uri=socket://127.0.0.1:1 driver=kelp-label-4inch>\n"
        "</Printer>\n";
    const int first = printer().print("application/vnd.kelp-zpl", "^XA^FDa^FS^XZ", [&](ipp_t* job) {
        ippAddString(job, IPP_TAG_OPERATION, IPP_TAG_NAME, "job-name", nullptr, title.c_str());
    });
    const int second = printer().print("application/vnd.kelp-zpl", "^XA^FDb^FS^XZ");
    EXPECT_TRUE(wait_until([&] { return is_saved(3); }));
    application.kill_and_restart();
    EXPECT_EQ(application.run({"printers"}).output.find("stranger"), std::string::npos);
    device.come_back();
    EXPECT_EQ(printer().finished(first).state, IPP_JSTATE_COMPLETED);
    EXPECT_EQ(printer().finished(second).state, IPP_JSTATE_COMPLETED);
}

// An address behind which nothing answers, not even with a refusal.
TEST_F(AppLostPrinter, OneThatSwallowsEverythingHoldsUpNobody) {
    const SilentPort silent;
    application.add_printer("silent", "kelp-label-4inch", silent.device());
    std::thread sender([&] { printer("silent").print("image/pwg-raster", raster({sheet(12)})); });
    EXPECT_TRUE(
        wait_until([&] { return printer("silent").attribute("printer-state") == "processing"; }));
    const auto start = std::chrono::steady_clock::now();
    EXPECT_NE(printer("silent").attribute("printer-state-reasons"), "");
    const std::vector<Page> pages = {sheet(13)};
    EXPECT_EQ(printed("image/pwg-raster", raster(pages)), filter_bytes("label-4inch", pages));
    printer("silent").cancel(1);
    EXPECT_EQ(printer("silent").finished(1).state, IPP_JSTATE_CANCELED);
    sender.join();
    // The framework's own connection waits for half a minute.
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(20));
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
    const std::string document = raster({sheet(6)});
    const auto cancel = [&] {
        EXPECT_TRUE(wait_until([&] {
            return application.log().find("Page 1 raster data is 812x1218x8") != std::string::npos;
        }));
        printer().cancel(1);
    };
    const int number =
        printer().print_with_pause("image/pwg-raster", document, {document.size() / 2, cancel});
    EXPECT_EQ(printer().finished(number).state, IPP_JSTATE_CANCELED);
    const std::vector<Page> pages = {sheet(7)};
    EXPECT_EQ(printed("image/pwg-raster", raster(pages)), filter_bytes("label-4inch", pages));
    for (const std::string& bytes : device.received()) {
        EXPECT_TRUE(bytes.empty() || bytes == device.received().back());
    }
}

}  // namespace
}  // namespace kelp_test
