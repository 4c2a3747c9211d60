#include "tests/barcodes/test_label.h"

#include <algorithm>
#include <sstream>
#include <stdexcept>

#include "tests/printing/print_document.h"
#include "tests/support/files.h"
#include "tests/support/run_process.h"
#include "tests/support/temp_dir.h"

namespace kelp_test {
namespace {

std::string label_file(const Model& model) {
    return std::string(KELP_TEST_LABEL_DIR) + "/test-label-" + model.name + ".ps";
}

}  // namespace

// Widths are the largest numbers up to the page's dots that are 4 more than a multiple of 8: of
// 144 pt = 406 dots, 216 pt = 609, 288 pt = 812, 420 pt = 1184.2, 595 pt = 1677.6. Heights are all
// dots of 72, 144, 432, 595 (1677.6) and 842 pt (2373.97), rounded.
const std::vector<Model>& models() {
    static const std::vector<Model> all = {
        {"label-2inch", "2x1in", 404, 203, "KELP-L2", "KELP-LABEL-2INCH"},
        {"label-3inch", "3x2in", 604, 406, "KELP-L3", "KELP-LABEL-3INCH"},
        {"label-4inch", "4x6in", 812, 1218, "KELP-L4", "KELP-LABEL-4INCH"},
        {"stencil-a5", "Tattoo_A5", 1180, 1678, "KELP-A5", "KELP-STENCIL-A5"},
        {"stencil-a4", "A4", 1676, 2374, "KELP-A4", "KELP-STENCIL-A4"},
    };
    return all;
}

std::vector<unsigned> place_on(const Model& model, const std::string& name) {
    const std::string text = read_file(label_file(model));
    const std::string start = "\n/" + name + " [";
    const std::size_t begin = text.find(start);
    if (begin == std::string::npos) {
        throw std::runtime_error(label_file(model) + " has no " + name);
    }
    std::istringstream numbers(text.substr(begin + start.size()));
    std::vector<unsigned> result;
    for (unsigned number = 0; numbers >> number;) {
        result.push_back(number);
    }
    return result;
}

Label print_test_label(const Model& model, const std::string& halftone) {
    const std::vector<Label> labels =
        read_labels(print_document(label_file(model), model.name,
                                   "PageSize=" + model.page_size + " HalftoneType=" + halftone));
    if (labels.size() != 1) {
        throw std::runtime_error(std::to_string(labels.size()) + " labels instead of one");
    }
    return labels[0];
}

std::vector<std::string> barcodes_on(const Label& label) {
    const TempDir directory;
    // The label's own edge carries the ruler, so the reader gets paper around it; two pixels a dot
    // because it samples coarser than a module of 2 dots.
    write_file(directory / "label.pgm", pgm(label, 2, 20));
    Command read;
    read.program = KELP_ZBARIMG;
    read.arguments = {"-q", "--nodbus", (directory / "label.pgm").string()};
    read.environment = {{"HOME", directory.path().string()},
                        {"PATH", "/usr/bin:/bin"},
                        {"TMPDIR", directory.path().string()}};
    read.working_directory = directory.path();
    const ProcessResult result = run_process(read);
    constexpr int nothing_found = 4;
    if (result.exit_status != 0 && result.exit_status != nothing_found) {
        throw std::runtime_error("zbarimg: " + result.ending() + "\n" + result.error);
    }
    std::vector<std::string> codes;
    std::istringstream lines(result.output);
    for (std::string line; std::getline(lines, line);) {
        codes.push_back(line);
    }
    std::sort(codes.begin(), codes.end());
    return codes;
}

}  // namespace kelp_test
