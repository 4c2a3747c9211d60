#include "tests/preview/decoded.h"

#include <sstream>
#include <utility>

namespace kelp_test {

using kelp_preview::Bitmap;
using kelp_preview::Label;

std::uint64_t Decoded::warnings() const {
    std::uint64_t count = rest.warnings.count();
    for (const Label& label : labels) {
        count += label.findings.warnings.count();
    }
    return count;
}

Decoded decode(const std::string& stream, std::uint64_t max_dots) {
    Decoded decoded;
    std::stringbuf buffer(stream);
    kelp_preview::StreamDecoder decoder(buffer, kelp_preview::DecoderLimits{max_dots});
    while (std::optional<Label> label = decoder.next()) {
        decoded.labels.push_back(std::move(*label));
    }
    decoded.rest = decoder.rest();
    return decoded;
}

std::string block(unsigned total, unsigned row_bytes, const std::string& data) {
    return "^XX\r\n^PQ1\n~DGR:CUPS.GRF," + std::to_string(total) + "," + std::to_string(row_bytes) +
           ",\n" + data + "^FO0,0^XGR:CUPS.GRF,1,1^FS\n^XZ\r\n";
}

std::vector<std::string> rows(const Bitmap& bitmap) {
    std::vector<std::string> result;
    for (std::uint64_t y = 0; y < bitmap.height; ++y) {
        std::string digits;
        for (std::size_t i = 0; i < bitmap.rowBytes(); ++i) {
            digits += "0123456789ABCDEF"[bitmap.row(y)[i] >> 4];
            digits += "0123456789ABCDEF"[bitmap.row(y)[i] & 15];
        }
        result.push_back(digits);
    }
    return result;
}

std::vector<std::string> decoded_rows(unsigned total, unsigned row_bytes, const std::string& data) {
    const Decoded decoded = decode(block(total, row_bytes, data));
    if (decoded.labels.size() != 1) {
        return {std::to_string(decoded.labels.size()) + " labels"};
    }
    const Label& label = decoded.labels[0];
    if (!label.findings.warnings.empty()) {
        return {label.findings.warnings.kept()[0].text};
    }
    return rows(*label.dots);
}

}  // namespace kelp_test
