#ifndef KELP_TOOLS_KELP_PREVIEW_PICTURE_NAME_H
#define KELP_TOOLS_KELP_PREVIEW_PICTURE_NAME_H

#include <cstdint>
#include <string>

/// The name of a label's picture: the given one where there is one label, else with the label's
/// number before the extension: "OUT.png" becomes "OUT-1.png".
/// @param number from 1
std::string pictureName(const std::string& given, std::uint64_t number, bool onlyOne);

#endif
