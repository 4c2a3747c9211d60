// Shows what a printer would print: writes each graphic of a printer stream as a picture.
//
//   stream_to_pgm STREAM PREFIX   writes PREFIX-1.pgm, PREFIX-2.pgm, ...

#include <exception>
#include <iostream>

#include "tests/support/files.h"
#include "tests/tools/zpl_graphics.h"

int main(int argc, char* argv[]) {
    if (argc != 3) {
        std::cerr << "Usage: stream_to_pgm STREAM PREFIX\n";
        return 2;
    }
    try {
        const auto labels = kelp_test::read_labels(kelp_test::read_file(argv[1]));
        if (labels.empty()) {
            std::cerr << "stream_to_pgm: there is no graphic in " << argv[1] << "\n";
            return 1;
        }
        for (std::size_t i = 0; i < labels.size(); ++i) {
            const std::string name = argv[2] + ("-" + std::to_string(i + 1)) + ".pgm";
            kelp_test::write_file(name, kelp_test::pgm(labels[i]));
            std::cout << name << ": " << labels[i].width << " x " << labels[i].height << " dots\n";
        }
    } catch (const std::exception& error) {
        std::cerr << "stream_to_pgm: " << argv[1] << ": " << error.what() << "\n";
        return 1;
    }
    return 0;
}
