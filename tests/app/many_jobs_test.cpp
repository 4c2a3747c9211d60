// Many jobs at once, and an application that is killed with jobs waiting.

#include <gtest/gtest.h>

#include <map>
#include <thread>

#include "tests/app/app_test.h"
#include "tests/app/filter_bytes.h"
#include "tests/preview/sheet/picture_files.h"
#include "tests/support/files.h"
#include "tests/support/grey_pages.h"

namespace kelp_test {
namespace {

constexpr const char* kPrinters[] = {"one", "two", "three", "four"};
constexpr std::size_t kJobs = 50;

class AppManyJobs : public AppTest {
  protected:
    static Page sheet(unsigned seed) {
        Page page;
        page.width = 100;
        page.height = 30;
        page.color_space = CUPS_CSPACE_SW;
        Random random(seed);
        page.pixels = noise(page.width, page.height, random);
        return page;
    }
    // A picture with as many dots as the page has pixels.
    static std::string picture(unsigned seed) {
        const Page page = sheet(seed);
        return png_file({.width = page.width, .height = page.height, .rows = page.pixels});
    }
    // The jobs that devices got, one connection or several: each begins with 64 line feeds.
    static void count_jobs(const SocketPrinter& device, std::map<std::string, int>& counts) {
        const std::string start(64, '\n');
        for (const std::string& bytes : device.received()) {
            for (std::size_t at = 0; at < bytes.size();) {
                // A job before ends with a line feed of its own.
                const std::size_t end = bytes.find("^XZ\r\n" + start, at);
                const std::size_t next = end == std::string::npos ? bytes.size() : end + 5;
                ++counts[bytes.substr(at, next - at)];
                at = next;
            }
        }
    }
};

TEST_F(AppManyJobs, AtOnceOnFourPrintersEachPrintOnce) {
    add_printer("label-4inch");
    std::map<std::string, int> expected;
    for (unsigned job = 0; job < kJobs; ++job) {
        ++expected[printed("image/png", picture(job))];
    }
    ASSERT_EQ(expected.size(), kJobs);

    SocketPrinter devices[4];
    for (std::size_t i = 0; i < 4; ++i) {
        application.add_printer(kPrinters[i], "kelp-label-4inch", devices[i].device());
    }
    std::vector<std::thread> clients;
    for (unsigned job = 0; job < kJobs; ++job) {
        clients.emplace_back([this, job] {
            try {
                const IppPrinter used = printer(kPrinters[job % 4]);
                const int number = used.print("image/png", picture(job));
                EXPECT_EQ(used.finished(number).state, IPP_JSTATE_COMPLETED);
            } catch (const std::exception& error) {
                ADD_FAILURE() << "job " << job << ": " << error.what();
            }
        });
    }
    for (std::thread& client : clients) {
        client.join();
    }
    std::map<std::string, int> counts;
    EXPECT_TRUE(wait_until([&] {
        counts.clear();
        for (const SocketPrinter& each : devices) {
            count_jobs(each, counts);
        }
        return counts.size() >= kJobs;
    }));
    EXPECT_TRUE(counts == expected);
}

TEST_F(AppManyJobs, WaitingOnesPrintOnceAfterTheApplicationWasKilled) {
    add_printer("label-4inch");
    std::map<std::string, int> expected;
    for (unsigned job = 0; job < 4; ++job) {
        ++expected[printed("image/png", picture(job))];
    }
    // A printer that is not there.
    SocketPrinter away;
    application.add_printer("away", "kelp-label-4inch", away.device());
    away.go_away_after(0);
    printer("away").finished(printer("away").print("image/png", picture(99)));
    ASSERT_TRUE(wait_until([&] { return away.is_away(); }));
    const std::size_t before = away.connections().size();
    for (unsigned job = 0; job < 4; ++job) {
        printer("away").print("image/png", picture(job));
    }
    // What waits is saved within a second.
    EXPECT_TRUE(wait_until([&] {
        const std::string state = read_file(application.state_folder() / "printers.state");
        std::size_t jobs = 0;
        for (std::size_t at = state.find("\nJob "); at != std::string::npos;
             at = state.find("\nJob ", at + 1)) {
            ++jobs;
        }
        return jobs == 9;
    })) << read_file(application.state_folder() / "printers.state");
    application.kill_and_restart();
    EXPECT_EQ(away.connections().size(), before);
    away.come_back();
    std::map<std::string, int> counts;
    EXPECT_TRUE(wait_until([&] {
        counts.clear();
        count_jobs(away, counts);
        return counts.size() >= 4;
    }));
    EXPECT_TRUE(counts == expected);
}

}  // namespace
}  // namespace kelp_test
