#ifndef KELP_PREVIEW_DESCRIPTION_JSON_H
#define KELP_PREVIEW_DESCRIPTION_JSON_H

#include <nlohmann/json_fwd.hpp>

#include "preview/description.h"

namespace kelp_preview {

/// The same as asText() tells, for programs; null stands for what was not set.
nlohmann::ordered_json asJson(const Description& description);
/// The lists "unknown_commands" and "warnings", with the number of those that did not fit.
nlohmann::ordered_json asJson(const Findings& findings);

}  // namespace kelp_preview

#endif
