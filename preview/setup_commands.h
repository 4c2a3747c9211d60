#ifndef KELP_PREVIEW_SETUP_COMMANDS_H
#define KELP_PREVIEW_SETUP_COMMANDS_H

#include <cstdint>
#include <string>

#include "preview/label.h"

namespace kelp_preview {

/// Takes over one of the commands that set a label up: ^PW ^LL ^MN ^PO ^PR ~SD ^MT ^MM. False for
/// any other.
/// @param command its prefix and letters
/// @param parameters what follows it, to the end of its line
bool applySetupCommand(const std::string& command, const std::string& parameters,
                       std::uint64_t offset, Setup& setup, Remarks& warnings);

}  // namespace kelp_preview

#endif
