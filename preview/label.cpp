#include "preview/label.h"

#include "preview/byte_reader.h"

namespace kelp_preview {

void Remarks::add(std::uint64_t offset, const std::string& text) {
    ++count_;
    if (kept_.size() < kKept) {
        kept_.push_back({offset, printable(text)});
    }
}

}  // namespace kelp_preview
