#ifndef KELP_TOOLS_KELP_PREVIEW_ONE_LINE_H
#define KELP_TOOLS_KELP_PREVIEW_ONE_LINE_H

#include <string>
#include <string_view>

/// The text with every control character as \xNN: names of files and words of documents must
/// neither break a message into lines nor command a terminal.
inline std::string oneLine(std::string_view text) {
    constexpr std::string_view kDigits = "0123456789ABCDEF";
    std::string result;
    for (const char c : text) {
        const auto byte = static_cast<unsigned char>(c);
        if (byte < 0x20 || byte == 0x7F) {
            result += {'\\', 'x', kDigits[byte >> 4], kDigits[byte & 15]};
        } else {
            result += c;
        }
    }
    return result;
}

#endif
