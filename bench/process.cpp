// The filter as a process against one that only opens the PPD and reads the same raster, in turn:
// single pages by each method, then many pages in one job. The raster is not packed, as from
// rastertokelpraster, and there is no folder for snapshots: both processes run in a world of their
// own (tests/support/world.c).
//
//   kelp_bench_process [RUNS]     of each, 11 by default; the first besides warms up

#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <string>
#include <vector>

#include "bench/child.h"
#include "bench/job_files.h"
#include "bench/test_page.h"

namespace {

int runs = 11;

/// By number.
constexpr const char* kMethods[] = {
    "threshold", "ordered",        "Burkes",          "Stucki", "Jarvis-Judice-Ninke",
    "Sierra",    "Stevenson-Arce", "ordered (Bayer)", "tattoo", "tattoo X8"};
constexpr int kTattoo = 8;

/// A folder with a PPD and one job.
class Job {
  public:
    Job() {
        if (mkdtemp(folder_) == nullptr) {
            std::perror("mkdtemp");
            std::exit(1);
        }
        std::filesystem::create_directory(std::string(folder_) + "/tmp");
        writePpd(ppd());
    }
    ~Job() { std::filesystem::remove_all(folder_); }
    Job(const Job&) = delete;
    Job& operator=(const Job&) = delete;

    std::string raster() const { return std::string(folder_) + "/pages.ras"; }
    std::string ppd() const { return std::string(folder_) + "/page.ppd"; }

    void write(const KnownPage& page, int pages) const { writeRaster(raster(), page, pages); }

    /// One of the two programs on the job.
    Usage runOn(const char* program, int method) const {
        const std::string options =
            std::string("HalftoneType=") + kHalftoneOptions[static_cast<std::size_t>(method)];
        return run({{program, "1", "user", "title", "1", options},
                    raster(),
                    {"PPD=" + ppd(), "LD_PRELOAD=" KELP_WORLD,
                     std::string("KELP_TEST_WORLD=") + folder_}});
    }

  private:
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
