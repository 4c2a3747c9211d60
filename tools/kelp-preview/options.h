#ifndef KELP_TOOLS_KELP_PREVIEW_OPTIONS_H
#define KELP_TOOLS_KELP_PREVIEW_OPTIONS_H

#include <cstdint>
#include <string>

namespace CLI {
class App;
}

// Options that several subcommands have.

/// The name of a picture, which must be that of a file.
/// @param names of the option, such as "-o,--output"
void addPictureOption(CLI::App& command, const std::string& names, std::string& picture,
                      const std::string& description);

/// --max-dots: the largest label that is taken.
void addMaxDotsOption(CLI::App& command, std::uint64_t& maxDots);

#endif
