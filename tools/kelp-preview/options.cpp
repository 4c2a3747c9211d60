#include "tools/kelp-preview/options.h"

#include <CLI/CLI.hpp>

#include "preview/stream_decoder.h"

void addPictureOption(CLI::App& command, const std::string& names, std::string& picture,
                      const std::string& description) {
    command.add_option(names, picture, description)
        ->type_name("OUT.png")
        ->check([](const std::string& name) {
            return name.empty() || name == "-" || name.back() == '/'
                       ? "must name a file; standard output is for the description"
                       : "";
        });
}

void addMaxDotsOption(CLI::App& command, std::uint64_t& maxDots) {
    command.add_option("--max-dots", maxDots, "Refuse labels with more dots")
        ->type_name("N")
        ->check(CLI::Range(std::uint64_t{1}, kelp_preview::kMostDots))
        ->capture_default_str();
}
