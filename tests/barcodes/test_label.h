#pragma once

#include <string>
#include <vector>

#include "tests/tools/zpl_graphics.h"

namespace kelp_test {

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
