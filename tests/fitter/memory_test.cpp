// That pages are streamed: a long job takes no more memory than a short one.

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <string_view>

#include "tests/fitter/fitter_job.h"
#include "tests/support/files.h"

namespace kelp_test {
namespace {

// The peak of a job of `pages` pages of 1000 × `height` dots that are zero, in KiB.
long peak(unsigned height, unsigned pages, const PagePpd& ppd) {
    const Sandbox sandbox;
    RawPage page = page_of(k8, 1000, 1, "");
    page.header.cupsHeight = height;
    page.pixels.clear();
    Job job = fitter_job({}, ppd);
    Command command = sandbox.command(job, fitter_program());
    const std::filesystem::path file = sandbox.extras() / "zeros.ras";
    // Holes for the dots: they take no room on the disk, and none in this process either, with
    // whose memory the peak of a child begins.
    const std::string beginning = raw_raster_stream({page});
    constexpr std::size_t kSyncWord = 4;
    const std::size_t dots = std::size_t{1000} * height;
    std::size_t size = kSyncWord;
    std::ofstream out(file, std::ios::binary);
    out << beginning.substr(0, kSyncWord);
    for (unsigned i = 0; i < pages; ++i) {
        out.seekp(static_cast<std::streamoff>(size));
        out << std::string_view(beginning).substr(kSyncWord);
        size += beginning.size() - kSyncWord + dots;
    }
    out.close();
    std::filesystem::resize_file(file, size);
    command.arguments.push_back(file);
    command.output = ToFile{"/dev/null"};
    const JobResult result = sandbox.run(command);
    EXPECT_EQ(result.exit_status, 0) << result.error;
    return result.peak_resident_kib;
}

constexpr long few_mebibytes = 4 * 1024;

TEST(Memory, OfATallPageIsThatOfAShortOne) {
    const PagePpd label{.width = "812", .height = "1218"};
    EXPECT_LT(peak(200'000, 1, label), peak(2000, 1, label) + few_mebibytes);
}

TEST(Memory, OfATallPrintedPageIsThatOfAShortOne) {
    // 200 MB in, 160 MB out.
    const PagePpd short_label{.width = "812", .height = "1218"};
    const PagePpd roll{.width = "812", .height = "200000"};
    EXPECT_LT(peak(200'000, 1, roll), peak(2000, 1, short_label) + few_mebibytes);
    // And where nearly all of it is the white below the content.
    EXPECT_LT(peak(2, 1, roll), peak(2000, 1, short_label) + few_mebibytes);
}

TEST(Memory, OfManyPagesIsThatOfOne) {
    const PagePpd label{.width = "812", .height = "1218"};
    EXPECT_LT(peak(1000, 40, label), peak(1000, 1, label) + few_mebibytes);
}

}  // namespace
}  // namespace kelp_test
