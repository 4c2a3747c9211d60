#include "tests/spooler/zpl_stream.h"

#include <bit>
#include <sstream>
#include <stdexcept>

#include "preview/graphic_decoder.h"

namespace kelp_test {
namespace {

class Reader {
  public:
    explicit Reader(const std::string& bytes) : bytes_(bytes) {}

    bool at_end() const { return position_ == bytes_.size(); }
    bool is_at(char c) const { return bytes_[position_] == c; }

    void expect(const std::string& text) {
        if (bytes_.compare(position_, text.size(), text) != 0) {
            fail("expected \"" + text + "\"");
        }
        position_ += text.size();
    }
    std::string up_to_and_with(const std::string& text) {
        const std::size_t end = bytes_.find(text, position_);
        if (end == std::string::npos) {
            fail("no \"" + text + "\"");
        }
        const std::size_t start = position_;
        position_ = end + text.size();
        return bytes_.substr(start, position_ - start);
    }
    std::string up_to(const std::string& text) {
        const std::string all = up_to_and_with(text);
        position_ -= text.size();
        return all.substr(0, all.size() - text.size());
    }
    unsigned number() {
        std::size_t length = 0;
        const unsigned long value = std::stoul(bytes_.substr(position_, 12), &length);
        position_ += length;
        return static_cast<unsigned>(value);
    }
    [[noreturn]] void fail(const std::string& what) const {
        throw std::runtime_error(what + " at byte " + std::to_string(position_) + ": " +
                                 bytes_.substr(position_, 40));
    }

  private:
    const std::string& bytes_;
    std::size_t position_ = 0;
};

// The rows of a graphic, from the reader's place to the command behind it.
std::vector<std::string> read_rows(Reader& reader, unsigned row_bytes, unsigned count) {
    std::stringbuf data(reader.up_to("^"));
    kelp_preview::ByteReader bytes(data);
    kelp_preview::Remarks warnings;
    const kelp_preview::Bitmap dots = decodeGraphic(bytes, row_bytes, count, warnings);
    if (!warnings.empty()) {
        reader.fail("no graphic before here (" + warnings.kept().front().text + ")");
    }
    std::vector<std::string> rows;
    for (unsigned y = 0; y < count; ++y) {
        rows.emplace_back(reinterpret_cast<const char*>(dots.row(y)), row_bytes);
    }
    return rows;
}

PrintedLabel read_label(Reader& reader) {
    PrintedLabel label;
    reader.expect("SIZE ");
    label.setup = "SIZE " + reader.up_to_and_with("^XZ\r\n\r\n");
    reader.expect("^XX\r\n^PQ");
    label.copies = static_cast<int>(reader.number());
    reader.expect("\n~DGR:CUPS.GRF,");
    const unsigned total = reader.number();
    reader.expect(",");
    label.row_bytes = reader.number();
    reader.expect(",\n");
    if (label.row_bytes == 0 || total % label.row_bytes != 0) {
        reader.fail("no whole rows");
    }
    label.rows = read_rows(reader, label.row_bytes, total / label.row_bytes);
    reader.expect("^FO0,0^XGR:CUPS.GRF,1,1^FS\n^XZ\r\n");
    return label;
}

}  // namespace

bool PrintedLabel::prints(unsigned x, unsigned y) const {
    const auto byte = static_cast<unsigned char>(rows.at(y).at(x / 8));
    return (byte >> (7 - x % 8) & 1U) != 0;
}

unsigned PrintedLabel::dots_in_row(unsigned y) const {
    unsigned dots = 0;
    for (const char byte : rows.at(y)) {
        dots += static_cast<unsigned>(std::popcount(static_cast<unsigned char>(byte)));
    }
    return dots;
}

std::vector<PrintedLabel> read_labels(const std::string& bytes) {
    Reader reader(bytes);
    std::vector<PrintedLabel> labels;
    do {
        reader.expect(std::string(64, '\n'));
        while (!reader.at_end() && !reader.is_at('\n')) {
            labels.push_back(read_label(reader));
        }
    } while (!reader.at_end());
    return labels;
}

}  // namespace kelp_test
