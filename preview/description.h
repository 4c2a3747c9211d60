#ifndef KELP_PREVIEW_DESCRIPTION_H
#define KELP_PREVIEW_DESCRIPTION_H

#include <cstddef>
#include <cstdint>
#include <string>

#include "preview/label.h"

namespace kelp_preview {

constexpr double kDotsPerInch = 203.0;
constexpr double kMillimetresPerInch = 25.4;

/// What there is to tell about a label besides its dots.
struct Description {
    Label label;  ///< without its dots
    std::uint64_t width = 0;
    std::uint64_t height = 0;
    std::uint64_t blackDots = 0;
    std::string picture;  ///< the file it was written to, or empty

    double widthMillimetres() const;
    double heightMillimetres() const;
    /// 0 to 1.
    double blackShare() const;
    /// How many bytes of dots a byte of the stream brings.
    double compressionRatio() const;
};

Description describe(const Label& label);

/// The meaning of what a command says, such as "tear off"; what it says where that is not known.
/// Empty for empty.
std::string mediaSensingName(const Setup& setup);
std::string orientationName(const Setup& setup);
std::string printMethodName(const Setup& setup);
std::string afterPrintName(const Setup& setup);

/// Lines for people.
/// @param number of the label in the stream, from 1
std::string asText(const Description& description, std::size_t number);
std::string asText(const Findings& findings);

}  // namespace kelp_preview

#endif
