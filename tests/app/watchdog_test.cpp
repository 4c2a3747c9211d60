#include "app/watchdog.h"

#include <gtest/gtest.h>

#include <atomic>
#include <thread>

namespace kelp_app {
namespace {

using std::chrono::milliseconds;

TEST(AppWatchdog, BarksWhenItIsNotFed) {
    std::atomic<int> barks = 0;
    const Watchdog watchdog(milliseconds(20), [&] { ++barks; });
    while (barks < 2) {
        std::this_thread::sleep_for(milliseconds(5));
    }
}

TEST(AppWatchdog, IsQuietWhenItIsFed) {
    std::atomic<int> barks = 0;
    Watchdog watchdog(std::chrono::seconds(30), [&] { ++barks; });
    for (int i = 0; i < 100; ++i) {
        watchdog.feed();
    }
    EXPECT_EQ(barks, 0);
}

TEST(AppWatchdog, EndsAtOnce) {
    const auto start = std::chrono::steady_clock::now();
    {
        const Watchdog watchdog(std::chrono::hours(1), [] {});
    }
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::minutes(1));
}

// As the server is: fed for a while, then no more.
TEST(AppWatchdog, BarksWhenItIsFedNoMore) {
    std::atomic<bool> isFedNoMore = false;
    std::atomic<bool> hasBarkedTooSoon = false;
    std::atomic<bool> hasBarked = false;
    Watchdog watchdog(std::chrono::seconds(2), [&] {
        hasBarkedTooSoon = hasBarkedTooSoon || !isFedNoMore;
        hasBarked = true;
    });
    for (int i = 0; i < 30; ++i) {
        watchdog.feed();
        std::this_thread::sleep_for(milliseconds(100));
    }
    isFedNoMore = true;
    while (!hasBarked) {
        std::this_thread::sleep_for(milliseconds(5));
    }
    EXPECT_FALSE(hasBarkedTooSoon);
}

}  // namespace
}  // namespace kelp_app
