#include "app/printer_socket.h"

#include <gtest/gtest.h>

#include <atomic>
#include <functional>
#include <string>
#include <thread>

#include "tests/app/silent_port.h"
#include "tests/spooler/socket_printer.h"
#include "tests/spooler/wait_until.h"

namespace kelp_app {
namespace {

using kelp_test::SilentPort;
using kelp_test::SocketPrinter;
using kelp_test::wait_until;
using std::chrono::milliseconds;

class TestSender : public Sender {
  public:
    bool isPatient() override { return is_patient; }
    void isAway(const std::string& why) override {
        reason = why;
        ++away;
    }
    void isThere() override { ++there; }

    std::atomic<bool> is_patient = true;
    std::atomic<int> away = 0;
    std::atomic<int> there = 0;
    std::string reason;
};

class AppPrinterSocket : public testing::Test {
  protected:
    bool gets(const std::string& bytes) {
        return wait_until([&] {
            const auto all = printer.connections();
            return !all.empty() && all.back().bytes == bytes;
        });
    }

    SocketPrinter printer;
    TestSender sender;
    PrinterSocket socket{{"localhost", printer.port()}};
};

TEST_F(AppPrinterSocket, SendsAllInOneConnection) {
    const std::string large(3'000'000, 'x');
    EXPECT_TRUE(socket.send("one ", sender));
    EXPECT_TRUE(socket.send(large, sender));
    EXPECT_TRUE(gets("one " + large));
    EXPECT_EQ(printer.connections().size(), 1U);
    EXPECT_EQ(sender.away, 0);
    EXPECT_EQ(sender.there, 1);
}

TEST_F(AppPrinterSocket, ConnectsOnlyToSend) {
    std::this_thread::sleep_for(milliseconds(50));
    EXPECT_EQ(printer.connections().size(), 0U);
}

TEST_F(AppPrinterSocket, WaitsForAPrinterThatIsNotThere) {
    printer.go_away_after(1);
    socket.send("x", sender);
    ASSERT_TRUE(wait_until([&] { return printer.is_away(); }));
    PrinterSocket other({"localhost", printer.port()});
    std::thread thread([&] { EXPECT_TRUE(other.send("label", sender)); });
    EXPECT_TRUE(wait_until([&] { return sender.away == 1; }));
    std::this_thread::sleep_for(milliseconds(1500));
    const int there = sender.there;
    printer.come_back();
    thread.join();
    EXPECT_TRUE(gets("label"));
    EXPECT_EQ(sender.away, 1);
    EXPECT_EQ(sender.there, there + 1);
    EXPECT_EQ(sender.reason, "Connection refused");
}

TEST_F(AppPrinterSocket, SendsNothingWhenTheSenderHasLostPatience) {
    sender.is_patient = false;
    EXPECT_FALSE(socket.send("label", sender));
    EXPECT_EQ(printer.connections().size(), 0U);
}

TEST_F(AppPrinterSocket, TellsOfABrokenConnectionAndMakesANewOne) {
    printer.go_away_after(1000);
    const std::string large(30'000'000, 'x');
    EXPECT_FALSE(socket.send(large, sender));
    printer.come_back();
    EXPECT_TRUE(socket.send("label", sender));
    EXPECT_TRUE(gets("label"));
}

TEST_F(AppPrinterSocket, GivesUpAPortThatNeverAnswersWithItsSender) {
    const SilentPort silent;
    PrinterSocket waiting({"127.0.0.1", silent.port()});
    std::thread thread([&] { EXPECT_FALSE(waiting.send("label", sender)); });
    std::this_thread::sleep_for(milliseconds(300));
    const auto start = std::chrono::steady_clock::now();
    sender.is_patient = false;
    thread.join();
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(5));
}

TEST_F(AppPrinterSocket, TellsOfANameThatThereIsNot) {
    PrinterSocket nobody({"printer.invalid", 9100});
    std::thread thread([&] { EXPECT_FALSE(nobody.send("label", sender)); });
    EXPECT_TRUE(wait_until([&] { return sender.away == 1; }));
    sender.is_patient = false;
    thread.join();
    EXPECT_NE(sender.reason, "");
}

TEST_F(AppPrinterSocket, AQuestionWithoutAnAnswerEndsAtItsLimit) {
    const auto start = std::chrono::steady_clock::now();
    const PrinterAnswer none =
        askPrinter({"localhost", printer.port()}, "~HS", '\n', 1, milliseconds(200));
    EXPECT_TRUE(none.isThere);
    EXPECT_EQ(none.bytes, "");
    EXPECT_TRUE(wait_until([&] { return printer.received() == std::vector<std::string>{"~HS"}; }));
    const SilentPort silent;
    EXPECT_FALSE(
        askPrinter({"127.0.0.1", silent.port()}, "~HS", '\n', 1, milliseconds(200)).isThere);
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(10));
}

}  // namespace
}  // namespace kelp_app
