#ifndef KELP_TOOLS_KELP_PREVIEW_LISTEN_HTML_H
#define KELP_TOOLS_KELP_PREVIEW_LISTEN_HTML_H

#include <string>
#include <string_view>

namespace kelp_listen {

/// The text as it may stand in HTML, also within a quoted attribute.
std::string escaped(std::string_view text);

}  // namespace kelp_listen

#endif
