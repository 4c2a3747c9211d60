// Prints a checksum of what every stage of the driver makes of every test image, so that two
// machines can be compared, and holds each to the literal reference on this machine. Ends with
// status 1 when one of them differs.

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string_view>

#include "tests/cross/stages.h"
#include "tests/cross/test_images.h"

namespace {

// FNV-1a, 64 bits.
std::uint64_t checksum(std::string_view bytes) {
    std::uint64_t sum = 0xCBF29CE484222325U;
    for (const char byte : bytes) {
        sum = (sum ^ static_cast<unsigned char>(byte)) * 0x100000001B3U;
    }
    return sum;
}

bool print(const char* image, const std::vector<kelp_test::Stage>& stages) {
    bool same = true;
    for (const kelp_test::Stage& stage : stages) {
        std::printf("%016llx %zu %s %s\n", static_cast<unsigned long long>(checksum(stage.bytes)),
                    stage.bytes.size(), image, stage.name.c_str());
        if (stage.bytes != stage.reference) {
            std::fprintf(stderr, "%s of %s is not what the reference makes of it\n",
                         stage.name.c_str(), image);
            same = false;
        }
    }
    return same;
}

}  // namespace

int main() {
    bool same = print("numbers", kelp_test::stages_of_numbers());
    for (const auto& [name, image] : kelp_test::test_images()) {
        same = print(name.c_str(), kelp_test::stages_of(image)) && same;
    }
    return same && std::fflush(stdout) == 0 ? EXIT_SUCCESS : EXIT_FAILURE;
}
