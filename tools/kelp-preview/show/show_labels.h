#ifndef KELP_TOOLS_KELP_PREVIEW_SHOW_SHOW_LABELS_H
#define KELP_TOOLS_KELP_PREVIEW_SHOW_SHOW_LABELS_H

#include <cstdint>
#include <streambuf>
#include <string>

#include "preview/stream_decoder.h"
#include "tools/kelp-preview/progress.h"

namespace CLI {
class App;
}

/// What is to become of the labels of a stream.
struct LabelOutput {
    std::string picture;  ///< empty for none
    bool json = false;
    bool asSent = false;
    std::uint64_t maxDots = kelp_preview::DecoderLimits{}.maxDots;
};

/// Adds the options that choose it.
/// @param pictureOption the names of the one for the picture
void addLabelOutputOptions(CLI::App& command, const std::string& pictureOption,
                           LabelOutput& output);

/// Describes the labels of a stream on standard output and writes their pictures. Throws what keeps
/// it from doing so, also that there is no label.
/// @return the exit status: kStatusWarned where something in the stream is not right
int showLabels(std::streambuf& stream, const std::string& streamName, const LabelOutput& output,
               Progress& progress);

#endif
