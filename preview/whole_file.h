#ifndef KELP_PREVIEW_WHOLE_FILE_H
#define KELP_PREVIEW_WHOLE_FILE_H

#include <string>
#include <string_view>

namespace kelp_preview {

/// Makes or replaces a file, whole or not at all: written under another name in the same folder and
/// renamed. A symbolic link of the name is replaced, not followed; a folder or device is not
/// touched. Throws std::system_error.
void writeWholeFile(const std::string& path, std::string_view content);

}  // namespace kelp_preview

#endif
