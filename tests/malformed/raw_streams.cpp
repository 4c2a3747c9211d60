#include "tests/malformed/raw_streams.h"

#include <algorithm>
#include <bit>
#include <cstddef>

namespace kelp_test {

std::string sync_word(const StreamKind& kind) {
    std::string word = kind.version == 1 ? "RaSt" : "RaS" + std::to_string(kind.version);
    if (!kind.big_endian) {
        std::reverse(word.begin(), word.end());
    }
    return word;
}

std::string header_bytes(const StreamKind& kind, const cups_page_header2_t& header) {
    std::string bytes(reinterpret_cast<const char*>(&header), sizeof(header));
    if (kind.big_endian != (std::endian::native == std::endian::big)) {
        for (std::size_t at = offsetof(cups_page_header2_t, AdvanceDistance);
             at < offsetof(cups_page_header2_t, cupsString); at += 4) {
            const auto word = bytes.begin() + static_cast<std::ptrdiff_t>(at);
            std::reverse(word, word + 4);
        }
    }
    return kind.version == 1 ? bytes.substr(0, sizeof(cups_page_header_t)) : bytes;
}

std::string stream(const StreamKind& kind, const cups_page_header2_t& header,
                   const std::string& pixels) {
    return sync_word(kind) + header_bytes(kind, header) + pixels;
}

std::string hex(const std::string& digits) {
    std::string bytes;
    std::string pair;
    for (const char digit : digits) {
        if (digit == ' ') {
            continue;
        }
        pair += digit;
        if (pair.size() == 2) {
            bytes += static_cast<char>(std::stoi(pair, nullptr, 16));
            pair.clear();
        }
    }
    return bytes;
}

}  // namespace kelp_test
