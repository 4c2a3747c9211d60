// The filter as a process against a process that only opens the PPD and reads the same raster, in
// turn; and the filter's peak memory. Prints one line a page size and halftone.

#include <cups/raster.h>
#include <fcntl.h>
#include <spawn.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>
#include <vector>

#include "bench/test_page.h"

namespace {

constexpr int kRuns = 11;

struct Run {
    double seconds;
    long peakBytes;
};

[[noreturn]] void fail(const char* what) {
    std::perror(what);
    std::exit(1);
}

Run runOnce(const char* program, const std::string& rasterPath, const std::string& ppdPath,
            const std::string& options) {
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_addopen(&actions, 0, rasterPath.c_str(), O_RDONLY, 0);
    posix_spawn_file_actions_addopen(&actions, 1, "/dev/null", O_WRONLY, 0);
    posix_spawn_file_actions_addopen(&actions, 2, "/dev/null", O_WRONLY, 0);
    std::string environment = "PPD=" + ppdPath;
    std::vector<std::string> arguments{program, "1", "user", "title", "1", options};
    std::vector<char*> argv;
    for (std::string& argument : arguments) {
        argv.push_back(argument.data());
    }
    argv.push_back(nullptr);
    char* envp[] = {environment.data(), nullptr};

    const auto start = std::chrono::steady_clock::now();
    pid_t child = 0;
    if (posix_spawn(&child, program, &actions, nullptr, argv.data(), envp) != 0) {
        fail(program);
    }
    int status = 0;
    struct rusage usage;
    wait4(child, &status, 0, &usage);
    const std::chrono::duration<double> elapsed = std::chrono::steady_clock::now() - start;
    posix_spawn_file_actions_destroy(&actions);
    if (!WIFEXITED(status) || WEXITSTATUS(status) != 0) {
        std::fprintf(stderr, "%s did not end with status 0\n", program);
        std::exit(1);
    }
    return {elapsed.count(), usage.ru_maxrss * 1024};
}

void writeFile(const std::string& path, const char* text) {
    std::FILE* file = std::fopen(path.c_str(), "w");
    if (file == nullptr || std::fputs(text, file) < 0 || std::fclose(file) != 0) {
        fail(path.c_str());
    }
}

void writeRaster(const std::string& path, const TestPage& page) {
    const int descriptor = open(path.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0600);
    cups_raster_t* raster = cupsRasterOpen(descriptor, CUPS_RASTER_WRITE_COMPRESSED);
    cups_page_header2_t header;
    std::memset(&header, 0, sizeof header);
    header.HWResolution[0] = header.HWResolution[1] = 203;
    header.NumCopies = 1;
    header.cupsWidth = header.cupsBytesPerLine = page.width;
    header.cupsHeight = page.height;
    header.cupsBitsPerColor = header.cupsBitsPerPixel = 8;
    header.cupsNumColors = 1;
    header.cupsColorSpace = CUPS_CSPACE_W;
    std::vector<unsigned char> pixels = page.pixels;
    if (cupsRasterWriteHeader2(raster, &header) == 0 ||
        cupsRasterWritePixels(raster, pixels.data(), static_cast<unsigned>(pixels.size())) == 0) {
        fail("raster");
    }
    cupsRasterClose(raster);
    close(descriptor);
}

constexpr const char* kPpd =
    "*PPD-Adobe: \"4.3\"\n"
    "*OpenUI *PageSize: PickOne\n*DefaultPageSize: Page\n"
    "*PageSize Page: \"\"\n*CloseUI: *PageSize\n"
    "*PaperDimension Page: \"288 432\"\n*ImageableArea Page: \"0 0 288 432\"\n"
    "*OpenUI *HalftoneType: PickOne\n*DefaultHalftoneType: None\n"
    "*HalftoneType None: \"\"\n*HalftoneType Ordered: \"\"\n*HalftoneType Tattoo: \"\"\n"
    "*CloseUI: *HalftoneType\n";

double median(std::vector<double> values) {
    std::sort(values.begin(), values.end());
    return values[values.size() / 2];
}

void measure(const std::string& folder, const char* name, std::uint32_t width, std::uint32_t height,
             const char* halftone) {
    const TestPage page = makeTestPage(width, height);
    const std::string raster = folder + "/page.ras";
    const std::string ppd = folder + "/page.ppd";
    writeRaster(raster, page);
    writeFile(ppd, kPpd);
    const std::string options = std::string("HalftoneType=") + halftone;

    std::vector<double> seconds;
    std::vector<double> ratios;
    long peak = 0;
    for (int run = 0; run <= kRuns; ++run) {
        const Run base = runOnce(KELP_READ_RASTER, raster, ppd, options);
        const Run filter = runOnce(KELP_FILTER, raster, ppd, options);
        if (run > 0) {  // the first warms up
            seconds.push_back(filter.seconds);
            ratios.push_back(filter.seconds / base.seconds);
            peak = std::max(peak, filter.peakBytes);
        }
    }
    const auto pixels = static_cast<double>(width) * height;
    constexpr double kBase = 16.0 * 1024 * 1024;
    const double overBase = std::max(0.0, (static_cast<double>(peak) - kBase) / pixels);
    std::printf(
        "%-8s %4u x %4u  %-8s  %7.1f ms  %5.1f x reading  peak %5.1f MB  %4.2f bytes a "
        "pixel over 16 MB (aim: 8)\n",
        name, width, height, halftone, median(seconds) * 1e3, median(ratios),
        static_cast<double>(peak) / 1048576.0, overBase);
}

}  // namespace

int main() {
    char folder[] = "/tmp/kelp-bench-XXXXXX";
    if (mkdtemp(folder) == nullptr) {
        fail("mkdtemp");
    }
    for (const char* halftone : {"None", "Ordered", "Tattoo"}) {
        measure(folder, "label", 812, 1218, halftone);
        measure(folder, "stencil", 1664, 2496, halftone);
    }
    for (const char* name : {"/page.ras", "/page.ppd", ""}) {
        std::remove((std::string(folder) + name).c_str());
    }
    return 0;
}
