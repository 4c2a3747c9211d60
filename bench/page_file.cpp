// Writes one of the pages for other programs to halftone, and for the driver:
//
//   kelp_bench_page_file PAGE PGM RASTER PPD

#include <cstdio>
#include <string>

#include "bench/job_files.h"
#include "bench/test_page.h"

namespace {

bool writePgm(const char* path, const TestPage& page) {
    std::FILE* file = std::fopen(path, "wb");
    if (file == nullptr) {
        return false;
    }
    std::fprintf(file, "P5\n%u %u\n255\n", page.width, page.height);
    std::fwrite(page.pixels.data(), 1, page.pixels.size(), file);
    return std::fclose(file) == 0;
}

}  // namespace

int main(int argc, char** argv) {
    for (const KnownPage& known : kPages) {
        if (argc == 5 && known.name == std::string(argv[1])) {
            writeRaster(argv[3], known, 1);
            writePpd(argv[4]);
            return writePgm(argv[2], known.page()) ? 0 : 1;
        }
    }
    std::fprintf(stderr, "usage: %s PAGE PGM RASTER PPD\n", argv[0]);
    return 1;
}
