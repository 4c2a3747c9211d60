#include "tools/kelp-preview/listen/shown_job.h"

namespace kelp_listen {
namespace {

std::string counted(std::uint64_t count, const std::string& what) {
    return std::to_string(count) + " " + what + (count == 1 ? "" : "s");
}

}  // namespace

std::string ShownJob::summary() const {
    std::string text = counted(labels.size(), "label");
    if (warnings > 0) {
        text += ", " + counted(warnings, "warning");
    }
    return text;
}

}  // namespace kelp_listen
