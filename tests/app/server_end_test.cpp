// The server's end while jobs wait for a printer. The framework gives them a minute.

#include <gtest/gtest.h>

#include "tests/app/app_test.h"
#include "tests/support/files.h"

namespace kelp_test {
namespace {

TEST_F(AppTest, ItEndsWellWithJobsThatWaitAndPrintsThemOnceWhenItIsStartedAnew) {
    add_printer("label-4inch");
    device.go_away_after(0);
    printer().print("application/vnd.kelp-zpl", "^XA^FDfirst^FS^XZ");
    ASSERT_TRUE(wait_until([&] { return device.is_away(); }));
    const std::size_t before = device.connections().size();
    printer().print("image/png", read_file(KELP_TEST_PICTURE));
    printer().print("application/vnd.kelp-zpl", "^XA^FDsecond^FS^XZ");
    ASSERT_TRUE(
        wait_until([&] { return printer().attribute("printer-state-reasons") == "offline"; }));
    EXPECT_EQ(application.end_status(std::chrono::seconds(90)), 0);
    device.come_back();
    application.kill_and_restart();
    for (const int job : {2, 3}) {
        EXPECT_EQ(printer().finished(job).state, IPP_JSTATE_COMPLETED);
    }
    // Over one connection or two.
    std::string bytes;
    for (std::size_t i = before; i < device.connections().size(); ++i) {
        bytes += device.connections()[i].bytes;
    }
    for (const std::string& label : {std::string("~DGR:CUPS.GRF"), std::string("^FDsecond^FS")}) {
        EXPECT_NE(bytes.find(label), std::string::npos) << label;
        EXPECT_EQ(bytes.find(label), bytes.rfind(label)) << label;
    }
}

}  // namespace
}  // namespace kelp_test
