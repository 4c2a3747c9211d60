// The filter as a process against one that only opens the PPD and reads the same raster, in turn:
// single pages by each method, then many pages in one job. The raster is not packed, as from
// rastertokelpraster, and there is no folder for snapshots: both processes run in a world of their
// own (tests/support/world.c).
//
//   kelp_bench_process [RUNS]     of each, 11 by default; the first besides warms up

#include <cups/raster.h>
#include <fcntl.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <string>
#include <vector>

#include "bench/child.h"
#include "bench/test_page.h"

namespace {

int runs = 11;

/// By the method that runs; the options are named after others.
constexpr const char* kOptions[] = {"None",   "FloydSteinberg",    "Ordered", "Burkes",
                                    "Stucki", "JarvisJudiceNinke", "Sierra",  "StevensonArce",
                                    "Tattoo", "Tattoo_X8"};
constexpr const char* kMethods[] = {
    "threshold", "ordered",        "Burkes",          "Stucki", "Jarvis-Judice-Ninke",
    "Sierra",    "Stevenson-Arce", "ordered (Bayer)", "tattoo", "tattoo X8"};
constexpr int kTattoo = 8;

[[noreturn]] void fail(const char* what) {
    std::perror(what);
    std::exit(1);
}

/// A folder with a PPD and one job.
class Job {
  public:
    Job() {
        if (mkdtemp(folder_) == nullptr) {
            fail("mkdtemp");
        }
        std::filesystem::create_directory(std::string(folder_) + "/tmp");
        writePpd();
    }
    ~Job() { std::filesystem::remove_all(folder_); }
    Job(const Job&) = delete;
    Job& operator=(const Job&) = delete;

    std::string raster() const { return std::string(folder_) + "/pages.ras"; }
    std::string ppd() const { return std::string(folder_) + "/page.ppd"; }

    void write(const KnownPage& known, int pages) const {
        TestPage page = known.page();
        const int descriptor = open(raster().c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0600);
        cups_raster_t* stream = cupsRasterOpen(descriptor, CUPS_RASTER_WRITE);
        cups_page_header2_t header;
        std::memset(&header, 0, sizeof header);
        header.HWResolution[0] = header.HWResolution[1] = 203;
        header.NumCopies = 1;
        header.cupsWidth = header.cupsBytesPerLine = page.width;
        header.cupsHeight = page.height;
        header.cupsBitsPerColor = header.cupsBitsPerPixel = 8;
        header.cupsNumColors = 1;
        header.cupsColorSpace = CUPS_CSPACE_W;
        for (int i = 0; i < pages; ++i) {
            if (cupsRasterWriteHeader2(stream, &header) == 0 ||
                cupsRasterWritePixels(stream, page.pixels.data(),
                                      static_cast<unsigned>(page.pixels.size())) == 0) {
                fail("raster");
            }
        }
        cupsRasterClose(stream);
        close(descriptor);
    }

    /// One of the two programs on the job.
    Usage runOn(const char* program, int method) const {
        const std::string options = std::string("HalftoneType=") + kOptions[method];
        return run({{program, "1", "user", "title", "1", options},
                    raster(),
                    {"PPD=" + ppd(), "LD_PRELOAD=" KELP_WORLD,
                     std::string("KELP_TEST_WORLD=") + folder_}});
    }

  private:
    void writePpd() const {
        std::FILE* file = std::fopen(ppd().c_str(), "w");
        if (file == nullptr) {
            fail(ppd().c_str());
        }
        std::fputs(
            "*PPD-Adobe: \"4.3\"\n"
            "*OpenUI *PageSize: PickOne\n*DefaultPageSize: Page\n"
            "*PageSize Page: \"\"\n*CloseUI: *PageSize\n"
            "*PaperDimension Page: \"288 432\"\n*ImageableArea Page: \"0 0 288 432\"\n"
            "*OpenUI *HalftoneType: PickOne\n*DefaultHalftoneType: None\n",
            file);
        for (const char* option : kOptions) {
            std::fprintf(file, "*HalftoneType %s: \"\"\n", option);
        }
        std::fputs("*CloseUI: *HalftoneType\n", file);
        if (std::fclose(file) != 0) {
            fail(ppd().c_str());
        }
    }

    char folder_[24] = "/tmp/kelp-bench-XXXXXX";
};

void measure(const Job& job, const KnownPage& page, int pages, int method, const char* aim) {
    std::vector<double> seconds;
    std::vector<double> ratios;
    std::vector<double> cpuRatios;
    std::vector<double> memory;
    const double pixels = double{1.0} * page.width * page.height;
    for (int i = 0; i <= runs; ++i) {
        const Usage base = job.runOn(KELP_READ_RASTER, method);
        const Usage filter = job.runOn(KELP_FILTER, method);
        if (i > 0) {
            seconds.push_back(filter.seconds);
            ratios.push_back(filter.seconds / base.seconds);
            cpuRatios.push_back(filter.cpuSeconds / base.cpuSeconds);
            memory.push_back(static_cast<double>(filter.peakBytes - base.peakBytes) / pixels);
        }
    }
    std::printf("%3d x %-10s %-20s %8.1f ms %8.1f %6.2f %6.2f  %-12s %5.2f\n", pages, page.name,
                kMethods[method], median(seconds) * 1e3, pages / median(seconds), median(ratios),
                median(cpuRatios), aim, median(memory));
    std::fflush(stdout);
}

}  // namespace

int main(int argc, char** argv) {
    if (argc > 1) {
        runs = std::atoi(argv[1]);
        if (argc > 2 || runs < 1) {
            std::fprintf(stderr, "usage: %s [RUNS]\n", argv[0]);
            return 1;
        }
    }
    const Job job;
    std::printf(
        "Of a process that only reads: time, processor time; peak memory over its own in "
        "page buffers\n%-16s %-20s %11s %8s %6s %6s  %-12s %5s\n",
        "pages", "halftone", "a job", "pages/s", "time", "cpu", "aim", "memory");
    const KnownPage& label = kPages[0];
    const KnownPage& stencil = kPages[1];
    job.write(label, 1);
    for (int method = 0; method < kTattoo; ++method) {
        measure(job, label, 1, method, "1.25; 2.5");
    }
    job.write(stencil, 1);
    for (int method = 0; method < kTattoo; ++method) {
        const bool diffuses = method >= 2 && method <= 6;
        measure(job, stencil, 1, method, diffuses ? "1.8; 2.5" : "-; 2.5");
    }
    measure(job, stencil, 1, kTattoo, "2.8; 4");
    measure(job, stencil, 1, kTattoo + 1, "2.8; 4");
    job.write(label, 40);
    measure(job, label, 40, 0, "800/s; 2.5");
    job.write(stencil, 20);
    measure(job, stencil, 20, 2, "190/s; 2.5");
    job.write(stencil, 10);
    measure(job, stencil, 10, kTattoo, "60/s; 4");
    return 0;
}
