// Printers that tell how they are, and printers that do not.

#include <gtest/gtest.h>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

#include <array>
#include <atomic>
#include <mutex>
#include <thread>

#include "tests/app/app_test.h"
#include "tests/app/silent_port.h"
#include "tests/spooler/local_port.h"
#include "tests/support/descriptor.h"

namespace kelp_test {
namespace {

// A printer that answers "~HS" with what it is told to.
class TalkingPrinter {
  public:
    TalkingPrinter() : listener_(bound_to_any_port()) {
        listen(listener_.get(), 8);
        thread_ = std::thread([this] { serve(); });
    }
    ~TalkingPrinter() {
        is_over_ = true;
        thread_.join();
    }
    TalkingPrinter(const TalkingPrinter&) = delete;
    TalkingPrinter& operator=(const TalkingPrinter&) = delete;

    std::string device() const { return socket_device(port_of(listener_)); }
    void answer_with(const std::string& text) {
        const std::lock_guard lock(mutex_);
        answer_ = text;
    }

  private:
    void serve() {
        while (!is_over_) {
            pollfd event{listener_.get(), POLLIN, 0};
            if (poll(&event, 1, 50) <= 0) {
                continue;
            }
            const Descriptor client(accept(listener_.get(), nullptr, nullptr));
            std::array<char, 4096> piece{};
            std::string question;
            ssize_t count = 0;
            while (!question.ends_with("~HS\r\n") &&
                   (count = read(client.get(), piece.data(), piece.size())) > 0) {
                question.append(piece.data(), static_cast<std::size_t>(count));
            }
            const std::lock_guard lock(mutex_);
            if (count > 0) {
                send(client.get(), answer_.data(), answer_.size(), MSG_NOSIGNAL);
            }
        }
    }

    Descriptor listener_;
    std::atomic<bool> is_over_ = false;
    std::mutex mutex_;
    std::string answer_;
    std::thread thread_;
};

std::string status(const std::string& first, const std::string& second) {
    return "\x02" + first + ",1245,000,0,0,0,000,0,0,0\x03\r\n\x02" + second +
           ",0,0,2,4,0,00000000,1,000\x03\r\n\x02"
           "1234,0\x03\r\n";
}

class AppStatus : public testing::Test {
  protected:
    std::string reasons(const std::string& name) const {
        return IppPrinter(application.port(), name).attribute("printer-state-reasons");
    }
    // Whoever looks again sees it.
    testing::AssertionResult becomes(const std::string& name, const std::string& expected) const {
        std::string last;
        if (wait_until([&] { return (last = reasons(name)) == expected; })) {
            return testing::AssertionSuccess();
        }
        return testing::AssertionFailure() << last;
    }

    Application application{{"status-query=yes"}};
};

TEST_F(AppStatus, TellsWhatThePrinterTells) {
    TalkingPrinter talking;
    talking.answer_with(status("030,1,0", "000,0,0"));
    application.add_printer("talking", "kelp-label-4inch", talking.device());
    EXPECT_TRUE(becomes("talking", "media-empty"));
    talking.answer_with(status("030,0,0", "000,0,1"));
    EXPECT_TRUE(becomes("talking", "cover-open"));
    talking.answer_with(status("030,0,1", "000,0,0"));
    EXPECT_TRUE(becomes("talking", "other"));
    talking.answer_with(status("030,0,0", "000,0,0"));
    EXPECT_TRUE(becomes("talking", "none"));
}

TEST_F(AppStatus, TellsOfAPrinterThatIsNotThere) {
    const SilentPort silent;
    application.add_printer("away", "kelp-label-4inch", silent.device());
    EXPECT_TRUE(becomes("away", "offline"));
}

TEST_F(AppStatus, IsAskedOnceOfAPrinterThatDoesNotAnswer) {
    SocketPrinter mute;
    application.add_printer("mute", "kelp-label-4inch", mute.device());
    EXPECT_TRUE(wait_until([&] { return reasons("mute") == "none" && !mute.received().empty(); }));
    for (int i = 0; i < 6; ++i) {
        std::this_thread::sleep_for(std::chrono::milliseconds(700));
        EXPECT_EQ(reasons("mute"), "none");
    }
    EXPECT_EQ(mute.received(), std::vector<std::string>{"~HS\r\n"});
}

}  // namespace
}  // namespace kelp_test
