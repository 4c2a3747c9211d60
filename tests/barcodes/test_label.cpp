#include "tests/barcodes/test_label.h"

#include <algorithm>
#include <optional>
#include <sstream>
#include <stdexcept>

#include "preview/stream_decoder.h"
#include "tests/printing/print_document.h"
#include "tests/support/files.h"
#include "tests/support/run_process.h"
#include "tests/support/temp_dir.h"

namespace kelp_test {
namespace {

std::string label_file(const Model& model) {
    return std::string(KELP_TEST_LABEL_DIR) + "/test-label-" + model.name + ".ps";
}

// A binary PGM, ink black: each dot is scale × scale pixels, around it all a white margin in
// pixels.
std::string pgm(const Label& label, unsigned scale, unsigned margin) {
    const std::size_t width = std::size_t{label.width} * scale + 2 * std::size_t{margin};
    const std::size_t height = std::size_t{label.height} * scale + 2 * std::size_t{margin};
    std::string text = "P5\n" + std::to_string(width) + " " + std::to_string(height) + "\n255\n";
    const std::size_t begin = text.size();
    text.append(width * height, '\xFF');
    for (unsigned y = 0; y < label.height * scale; ++y) {
        for (unsigned x = 0; x < label.width * scale; ++x) {
            if (label.dot(x / scale, y / scale)) {
                text[begin + (std::size_t{y} + margin) * width + x + margin] = '\0';
            }
        }
    }
    return text;
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
    std::stringbuf stream(
        print_document(label_file(model), model.name,
                       "PageSize=" + model.page_size + " HalftoneType=" + halftone));
    kelp_preview::StreamDecoder decoder(stream, {});
    const std::optional<kelp_preview::Label> label = decoder.next();
    if (!label || decoder.next()) {
        throw std::runtime_error("not one label");
    }
    if (!label->findings.warnings.empty() || !label->findings.unknownCommands.empty() ||
        !decoder.rest().warnings.empty() || !decoder.rest().unknownCommands.empty()) {
        throw std::runtime_error("the stream has faults");
    }
    Label result;
    // A page has a multiple of 4 dots; the command may be a dot short of it.
    result.width = (static_cast<unsigned>(label->setup.width.value()) + 3) / 4 * 4;
    result.height = static_cast<unsigned>(label->dots->height);
    result.dots = *label->dots;
    if (result.width > result.dots.width || result.width + 8 <= result.dots.width) {
        throw std::runtime_error("rows of " + std::to_string(result.dots.rowBytes()) +
                                 " bytes do not fit a label of " + std::to_string(result.width) +
                                 " dots");
    }
    return result;
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
