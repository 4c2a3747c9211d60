// How long a printer waits for a label: from the last byte that the application gets to the first
// one that the printer gets.

#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <cstdio>

#include "tests/app/app_test.h"
#include "tests/app/filter_bytes.h"
#include "tests/support/grey_pages.h"

namespace kelp_test {
namespace {

using Clock = std::chrono::steady_clock;
using Milliseconds = std::chrono::duration<double, std::milli>;

class AppLatency : public AppTest {
  protected:
    // The middle of several jobs.
    double latency(const std::string& format, const std::string& document,
                   const std::string& expected) {
        std::vector<double> all;
        for (int i = 0; i < 9; ++i) {
            const std::size_t before = device.received().size();
            Clock::time_point sent;
            const auto wait = [&] {
                // The application is done with what it has by then.
                std::this_thread::sleep_for(std::chrono::milliseconds(100));
                sent = Clock::now();
            };
            const int number =
                printer().print_with_pause(format, document, {document.size() - 1, wait});
            EXPECT_EQ(printer().finished(number).state, IPP_JSTATE_COMPLETED);
            EXPECT_TRUE(wait_until([&] { return device.received().size() > before; }));
            EXPECT_EQ(device.received().back(), expected);
            all.push_back(Milliseconds(device.connections().back().began - sent).count());
            EXPECT_GT(all.back(), 0);
        }
        std::nth_element(all.begin(), all.begin() + 4, all.end());
        return all[4];
    }

    void tell(const std::string& model, unsigned width, unsigned height) {
        add_printer(model);
        Random random(1);
        Page page;
        page.width = width;
        page.height = height;
        page.color_space = CUPS_CSPACE_SW;
        page.pixels = text_bars(width, height, random);
        const std::string bytes = filter_bytes(model, {page});
        const double raster =
            latency("image/pwg-raster", raster_stream({page}, CUPS_RASTER_WRITE_PWG), bytes);
        const double commands = latency("application/vnd.kelp-zpl", bytes, bytes);
        std::printf(
            "%s: a raster page %.1f ms, of which %.1f ms are the framework's: as much as "
            "its commands take that are sent as they are\n",
            model.c_str(), raster, commands);
    }
};

TEST_F(AppLatency, OfALabel) {
    tell("label-4inch", 812, 1218);
}

TEST_F(AppLatency, OfAStencilPage) {
    tell("stencil-a4", 1678, 2374);
}

}  // namespace
}  // namespace kelp_test
