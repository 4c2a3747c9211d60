#pragma once

#include <cstdint>
#include <filesystem>
#include <string>
#include <vector>

namespace kelp_test {

struct Picture {
    unsigned bit_depth = 0;
    unsigned colour_type = 0;
    std::uint32_t dots_per_metre_x = 0;
    std::uint32_t dots_per_metre_y = 0;
    std::vector<std::string> rows;  // '#' black, '.' white, 'g' grey, 'r' reddish, 'b' bluish
};

// Throws std::runtime_error for what is no whole PNG of at most 8 bits of grey or of colours.
Picture read_png(const std::filesystem::path& path);

}  // namespace kelp_test
