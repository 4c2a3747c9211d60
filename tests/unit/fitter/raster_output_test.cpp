#include "fitter/raster_output.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include <algorithm>
#include <csignal>

#include "fitter/fit_error.h"
#include "tests/fitter/rasters.h"
#include "tests/unit/fitter/memory_file.h"

namespace kelp_test {
namespace {

// The message of the error that the action ends with; nothing when it does not.
template <typename Action>
std::string error_of(Action action) {
    try {
        action();
    } catch (const FitError& error) {
        return error.what();
    }
    return {};
}

void write_row(RasterOutput& output, const std::string& row) {
    std::copy(row.begin(), row.end(), output.nextRow());
}

TEST(RasterOutput, WritesRowsOfPagesOfEveryWidth) {
    const Descriptor file = memory_file();
    RasterOutput output(file.get());
    output.startPage(page_of(k8, 4, 2, "").header);
    write_row(output, "abcd");
    write_row(output, "efgh");
    output.flush();
    output.startPage(page_of(k8, 100'000, 1, "").header);
    write_row(output, std::string(100'000, 'x'));
    output.flush();
    output.startPage(page_of(k8, 1, 1, "").header);
    write_row(output, "y");
    output.flush();
    const std::vector<RawPage> pages = pages_in(content_of(file));
    ASSERT_EQ(pages.size(), 3U);
    EXPECT_EQ(pages[0].pixels, "abcdefgh");
    EXPECT_TRUE(pages[1].pixels == std::string(100'000, 'x'));
    EXPECT_EQ(pages[2].pixels, "y");
}

TEST(RasterOutput, WritesFullBuffersWithoutBeingAsked) {
    const Descriptor file = memory_file();
    RasterOutput output(file.get());
    output.startPage(page_of(k8, 4, 100'000, "").header);
    std::string expected;
    for (int y = 0; y < 100'000; ++y) {
        std::string row = std::to_string(1000 + y % 9000);
        write_row(output, row);
        expected += row;
    }
    output.flush();
    EXPECT_TRUE(pages_in(content_of(file)).at(0).pixels == expected);
}

TEST(RasterOutput, ReportsAFullDisk) {
    const Descriptor full(open("/dev/full", O_WRONLY | O_CLOEXEC));
    EXPECT_EQ(error_of([&] { RasterOutput output(full.get()); }),
              "Unable to write the fitted raster: No space left on device.");
}

TEST(RasterOutput, TellsAReaderThatHasGone) {
    int ends[2];
    ASSERT_EQ(pipe(ends), 0);
    close(ends[0]);
    const Descriptor to(ends[1]);
    const auto before = std::signal(SIGPIPE, SIG_IGN);
    EXPECT_THROW(RasterOutput output(to.get()), ReaderGone);
    std::signal(SIGPIPE, before);
}

TEST(RasterOutput, ReportsWhatIsLostInTheMiddle) {
    Descriptor file = memory_file();
    RasterOutput output(file.get());
    output.startPage(page_of(k8, 4, 2, "").header);
    file.reset();
    write_row(output, "abcd");
    EXPECT_EQ(error_of([&] { output.flush(); }),
              "Unable to write the fitted raster: Bad file descriptor.");
    EXPECT_NE(error_of([&] { output.startPage(page_of(k8, 4, 2, "").header); }), "");
}

TEST(RasterOutput, ReportsWhatClosingLoses) {
    Descriptor file = memory_file();
    RasterOutput output(file.get());
    file.reset();
    EXPECT_EQ(error_of([&] { output.close(); }),
              "Unable to write the fitted raster: Bad file descriptor.");
}

TEST(RasterOutput, ClosesItsDescriptorWhenAsked) {
    const Descriptor file = memory_file();
    const int copy = dup(file.get());
    RasterOutput output(copy);
    output.close();
    EXPECT_EQ(fcntl(copy, F_GETFD), -1);
    EXPECT_EQ(pages_in(content_of(file)).size(), 0U);
}

}  // namespace
}  // namespace kelp_test
