#pragma once

#include <string>
#include <vector>

namespace kelp_test {

// A label as a printer understands it.
struct PrintedLabel {
    std::string setup;  // from the size line to the end of the set-up block
    int copies = 0;
    unsigned row_bytes = 0;
    std::vector<std::string> rows;  // packed, one bit a dot

    bool prints(unsigned x, unsigned y) const;
    unsigned dots_in_row(unsigned y) const;
};

// Reads what a printer got, which is whole jobs of rastertokelp; throws std::runtime_error where it
// finds anything else. A ':' repeats the row before, as printers do.
std::vector<PrintedLabel> read_labels(const std::string& bytes);

}  // namespace kelp_test
