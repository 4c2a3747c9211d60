#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace kelp_test {

// One label as its printer would lay it down.
struct Label {
    unsigned width = 0;
    unsigned height = 0;
    std::vector<bool> dots;  // row by row, true prints

    bool dot(unsigned x, unsigned y) const { return dots[static_cast<std::size_t>(y) * width + x]; }
};

// The graphics of a printer stream. A label's width is that of the "^PW" command before it, rounded
// up to the next multiple of 4 (the driver's pages have such a width, and the command may be a dot
// short of it); without the command it is all dots of a row's bytes. Throws std::runtime_error,
// with the place in the stream, on what no printer could make sense of.
std::vector<Label> read_labels(std::string_view stream);

// A binary PGM, ink black: each dot is scale × scale pixels, around it all a white margin in
// pixels.
std::string pgm(const Label& label, unsigned scale = 1, unsigned margin = 0);

}  // namespace kelp_test
