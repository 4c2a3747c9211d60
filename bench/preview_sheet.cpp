// kelp-preview sheet of a photograph of 12 megapixels for an A4 stencil: all ten halftones against
// one, in turn. The aim is 10 times at most.

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

#include "bench/test_page.h"

namespace {

constexpr int kRuns = 5;

double secondsOf(const std::string& command) {
    const auto start = std::chrono::steady_clock::now();
    if (std::system(command.c_str()) != 0) {
        std::fprintf(stderr, "failed: %s\n", command.c_str());
        std::exit(1);
    }
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

double median(std::vector<double> values) {
    std::sort(values.begin(), values.end());
    return values[values.size() / 2];
}

}  // namespace

int main() {
    char folder[] = "/tmp/kelp-bench-XXXXXX";
    if (mkdtemp(folder) == nullptr) {
        std::perror("mkdtemp");
        return 1;
    }
    const std::string photograph = std::string(folder) + "/photograph.pgm";
    const TestPage page = makeTestPage(3000, 4000);
    std::ofstream(photograph, std::ios::binary)
        << "P5\n3000 4000\n255\n"
        << std::string(page.pixels.begin(), page.pixels.end());
    const std::string command = std::string(KELP_PREVIEW) + " sheet " + photograph + " -o " +
                                folder + "/sheet.png --page A4 >/dev/null";

    for (const char* halftone : {"Ordered", "Tattoo"}) {
        std::vector<double> all;
        std::vector<double> ratios;
        for (int run = 0; run < kRuns; ++run) {
            const double one = secondsOf(command + " --halftone " + halftone);
            all.push_back(secondsOf(command));
            ratios.push_back(all.back() / one);
        }
        std::printf("sheet of 10 halftones %5.2f s, %4.1f x a sheet of %s alone (aim: 10)\n",
                    median(all), median(ratios), halftone);
    }
    std::filesystem::remove_all(folder);
    return 0;
}
