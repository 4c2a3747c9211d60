// Writes one of the pages as PGM, for other programs to halftone: kelp_bench_page_file PAGE >FILE

#include <cstdio>
#include <string>

#include "bench/test_page.h"

int main(int argc, char** argv) {
    for (const KnownPage& known : kPages) {
        if (argc == 2 && known.name == std::string(argv[1])) {
            const TestPage page = known.page();
            std::printf("P5\n%u %u\n255\n", page.width, page.height);
            return std::fwrite(page.pixels.data(), 1, page.pixels.size(), stdout) ==
                           page.pixels.size()
                       ? 0
                       : 1;
        }
    }
    std::fprintf(stderr, "usage: %s PAGE >FILE\n", argv[0]);
    return 1;
}
