#pragma once

#include <string>
#include <vector>

#include "preview/bitmap.h"

namespace kelp_test {

// One label as its printer lays it down: without the dots that only fill a row's last byte.
struct Label {
    unsigned width = 0;
    unsigned height = 0;
    kelp_preview::Bitmap dots;

    bool dot(unsigned x, unsigned y) const { return dots.dot(x, y); }
};

// A printer model and its test label.
struct Model {
    std::string name;  // as in the file names
    std::string page_size;
    unsigned width;  // of the page, in dots that print
    unsigned height;
    std::string code128;
    std::string qr;

    bool is_stencil() const { return name.starts_with("stencil"); }
};

const std::vector<Model>& models();

// The numbers of a "/name [1 2 3] def" in the test label's layout.
std::vector<unsigned> place_on(const Model& model, const std::string& name);

// Prints the model's test label by the spooler's filters and ours. A failure of any of them throws
// std::runtime_error with what it said.
Label print_test_label(const Model& model, const std::string& halftone);

// What zbarimg reads on the label, "TYPE:TEXT" each, sorted.
std::vector<std::string> barcodes_on(const Label& label);

}  // namespace kelp_test
