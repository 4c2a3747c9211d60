#ifndef KELP_APP_HOST_STATUS_H
#define KELP_APP_HOST_STATUS_H

#include <pappl/pappl.h>

#include <optional>
#include <string_view>

namespace kelp_app {

// What a printer tells of itself: "~HS", answered by three lines of numbers with commas between
// them, each line between the control characters STX and ETX.

constexpr std::string_view kStatusQuestion = "~HS\r\n";
constexpr char kStatusLineEnd = '\x03';
constexpr int kStatusLines = 3;

/// All reasons that an answer can give: paper out, head open, paused ("other").
constexpr pappl_preason_t kStatusReasons =
    PAPPL_PREASON_MEDIA_EMPTY | PAPPL_PREASON_COVER_OPEN | PAPPL_PREASON_OTHER;

/// Those that an answer does give; none where it is no such answer.
std::optional<pappl_preason_t> reasonsOf(std::string_view answer);

}  // namespace kelp_app

#endif
