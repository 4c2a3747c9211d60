#include "app/host_status.h"

#include <cstddef>

namespace kelp_app {

namespace {

/// The text between the line's control characters; none where there is no such line.
std::optional<std::string_view> lineOf(std::string_view answer, int line) {
    std::size_t begin = 0;
    for (int i = 0; i <= line; ++i) {
        begin = answer.find('\x02', begin);
        if (begin == std::string_view::npos) {
            return std::nullopt;
        }
        ++begin;
    }
    const std::size_t end = answer.find(kStatusLineEnd, begin);
    if (end == std::string_view::npos) {
        return std::nullopt;
    }
    return answer.substr(begin, end - begin);
}

/// A field that is "0" or "1"; none for any other.
std::optional<bool> flagOf(std::string_view answer, int line, int field) {
    std::optional<std::string_view> text = lineOf(answer, line);
    for (int i = 0; text && i < field; ++i) {
        const std::size_t comma = text->find(',');
        if (comma == std::string_view::npos) {
            return std::nullopt;
        }
        text->remove_prefix(comma + 1);
    }
    if (text) {
        text = text->substr(0, text->find(','));
    }
    if (!text || (*text != "0" && *text != "1")) {
        return std::nullopt;
    }
    return *text == "1";
}

}  // namespace

std::optional<pappl_preason_t> reasonsOf(std::string_view answer) {
    const std::optional<bool> isPaperOut = flagOf(answer, 0, 1);
    const std::optional<bool> isPaused = flagOf(answer, 0, 2);
    const std::optional<bool> isHeadOpen = flagOf(answer, 1, 2);
    if (!isPaperOut || !isPaused || !isHeadOpen) {
        return std::nullopt;
    }
    return (*isPaperOut ? PAPPL_PREASON_MEDIA_EMPTY : PAPPL_PREASON_NONE) |
           (*isPaused ? PAPPL_PREASON_OTHER : PAPPL_PREASON_NONE) |
           (*isHeadOpen ? PAPPL_PREASON_COVER_OPEN : PAPPL_PREASON_NONE);
}

}  // namespace kelp_app
