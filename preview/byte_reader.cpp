#include "preview/byte_reader.h"

#include <charconv>
#include <cstdio>
#include <limits>

namespace kelp_preview {

static_assert(ByteReader::kEnd == std::streambuf::traits_type::eof());

std::optional<std::uint64_t> leadingNumber(const std::string& text) {
    const std::size_t begin = text.find_first_not_of(' ');
    if (begin == std::string::npos) {
        return std::nullopt;
    }
    std::uint64_t value = 0;
    const auto [end, error] =
        std::from_chars(text.data() + begin, text.data() + text.size(), value);
    if (error == std::errc::result_out_of_range) {
        return std::numeric_limits<std::uint64_t>::max();
    }
    return error == std::errc() ? std::optional(value) : std::nullopt;
}

std::string printable(const std::string& text) {
    std::string result;
    for (const char c : text) {
        if (c >= ' ' && c <= '~' && c != '\\') {
            result += c;
        } else {
            char escape[8];
            std::snprintf(escape, sizeof escape, "\\x%02X", static_cast<unsigned char>(c));
            result += escape;
        }
    }
    return result;
}

}  // namespace kelp_preview
