// The preview on any bytes, as a printer stream and as the data of one graphic.
//
// Checked: labels stay within the limit, rows have their length, remarks lie in the stream and are
// printable; a label can be described and drawn; the stream says the same when it comes in pieces.
// A graphic's rows are those of the reference's decoder, and there is a warning where the data has
// a fault.

#include <algorithm>
#include <nlohmann/json.hpp>
#include <sstream>

#include "fuzz/check.h"
#include "preview/comparison.h"
#include "preview/description.h"
#include "preview/description_json.h"
#include "preview/graphic_decoder.h"
#include "preview/png_writer.h"
#include "preview/stream_decoder.h"
#include "tests/reference/graphic.h"

namespace {

using kelp_fuzz::require;
using namespace kelp_preview;

// Set by an input's last byte: most labels are near some limit.
std::uint64_t most_dots = 0;

// Hands over its bytes one at a time.
class SlowStream : public std::streambuf {
  public:
    explicit SlowStream(std::string text) : text_(std::move(text)) {}

  private:
    int_type underflow() override {
        if (position_ == text_.size()) {
            return traits_type::eof();
        }
        char* const byte = text_.data() + position_++;
        setg(byte, byte, byte + 1);
        return traits_type::to_int_type(*byte);
    }

    std::string text_;
    std::size_t position_ = 0;
};

void check(const Remarks& remarks, std::size_t size) {
    require(remarks.kept().size() == std::min<std::uint64_t>(remarks.count(), Remarks::kKept),
            "a list of remarks too long or too short");
    for (const Remark& remark : remarks.kept()) {
        require(remark.offset <= size, "a remark behind the stream");
        require(std::all_of(remark.text.begin(), remark.text.end(),
                            [](char c) { return c >= ' ' && c <= '~'; }),
                "a remark that is not printable");
    }
}

void check(const Findings& findings, std::size_t size) {
    check(findings.unknownCommands, size);
    check(findings.warnings, size);
}

void check(const Label& label, std::size_t size) {
    const Bitmap& dots = *label.dots;
    require(label.offset < size, "a label behind the stream");
    require(dots.height > 0 && dots.width > 0 && dots.width * dots.height <= most_dots,
            "a label of no or too many dots");
    require(dots.bytes.size() == dots.rowBytes() * dots.height, "rows without their length");
    require(label.graphicBytes <= size * size, "more bytes than the stream has");
    check(label.findings, size);
}

// All that there is to tell of a stream.
std::string told(std::streambuf& stream, std::size_t size) {
    std::string text;
    try {
        StreamDecoder decoder(stream, DecoderLimits{most_dots});
        std::optional<Label> before;
        for (std::size_t number = 1;; ++number) {
            std::optional<Label> label = decoder.next();
            if (!label) {
                break;
            }
            check(*label, size);
            const Description description = describe(*label);
            require(
                description.blackDots == blackDots(*label->dots) && description.blackShare() <= 1.0,
                "more black than dots");
            text += asText(description, number) + asJson(description).dump() + "\n";
            text.append(label->dots->bytes.begin(), label->dots->bytes.end());
            require(turned(turned(*label->dots)).bytes == label->dots->bytes, "turned twice");
            if (number == 1 && size % 4 == 0) {  // slow
                text += pngOf(*label->dots);
            }
            if (before) {
                const DotDifference difference = compareDots(*before->dots, *label->dots);
                text += std::to_string(difference.count());
                compareSettings(*before, *label);
            }
            before = std::move(label);
        }
        check(decoder.rest(), size);
        text += asText(decoder.rest()) + asJson(decoder.rest()).dump();
    } catch (const StreamRefused& refused) {
        require(refused.offset <= size, "refused behind the stream");
        text += refused.what();
    }
    return text;
}

void check_graphic(const std::string& data, unsigned row_bytes, unsigned rows) {
    const reference::Graphic expected = reference::readGraphic(data, row_bytes, rows);
    std::stringbuf buffer(data);
    ByteReader reader(buffer);
    Remarks warnings;
    const Bitmap bitmap = decodeGraphic(reader, row_bytes, rows, warnings);
    std::string digits;
    for (const unsigned char byte : bitmap.bytes) {
        digits += "0123456789ABCDEF"[byte >> 4];
        digits += "0123456789ABCDEF"[byte & 15];
    }
    std::string expected_digits;
    for (const std::string& row : expected.rows) {
        expected_digits += row;
    }
    kelp_fuzz::require_same(digits, expected_digits, "the graphic");
    require(bitmap.height == expected.rows.size() && bitmap.width == 8U * row_bytes, "its size");
    require(warnings.empty() == expected.clean, "a fault without a warning, or no fault with one");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size == 0) {
        return 0;
    }
    const unsigned char limit = data[--size];
    most_dots = limit == 0 ? 4000 : 8U * limit;
    const std::string stream(reinterpret_cast<const char*>(data), size);
    std::stringbuf whole(stream);
    SlowStream pieces(stream);
    kelp_fuzz::require_same(told(pieces, size), told(whole, size), "a stream in pieces");
    if (size > 2) {
        check_graphic(stream.substr(2), data[0] % 40 + 1U, data[1] % 20 + 1U);
    }
    return 0;
}
