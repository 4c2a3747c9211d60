#include "tests/spooler/zpl_stream.h"

#include <bit>
#include <stdexcept>

namespace kelp_test {
namespace {

class Reader {
  public:
    explicit Reader(const std::string& bytes) : bytes_(bytes) {}

    bool at_end() const { return position_ == bytes_.size(); }
    bool is_at(char c) const { return bytes_[position_] == c; }
    char next() { return bytes_.at(position_++); }

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

std::string packed(const std::string& digits) {
    std::string bytes;
    for (std::size_t i = 0; i < digits.size(); i += 2) {
        bytes.push_back(static_cast<char>(std::stoi(digits.substr(i, 2), nullptr, 16)));
    }
    return bytes;
}

// One row of the compressed graphic: G to Y count 1 to 19, g to z count 20 to 400.
std::string read_row(Reader& reader, std::size_t row_bytes, const std::string& before) {
    const std::size_t length = 2 * row_bytes;
    std::string digits;
    std::size_t count = 0;
    while (digits.size() < length) {
        const char c = reader.next();
        if (c >= 'g' && c <= 'z') {
            count += 20 * static_cast<std::size_t>(c - 'f');
        } else if (c >= 'G' && c <= 'Y') {
            count += static_cast<std::size_t>(c - 'F');
        } else if (c == ':' && digits.empty()) {
            return before;
        } else if (c == ',') {
            digits.resize(length, '0');
        } else if ((c >= '0' && c <= '9') || (c >= 'A' && c <= 'F')) {
            digits.append(count == 0 ? 1 : count, c);
            count = 0;
        } else {
            reader.fail("no graphic");
        }
    }
    if (digits.size() > length) {
        reader.fail("a row too long");
    }
    return packed(digits);
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
    std::string row;
    for (unsigned y = 0; y < total / label.row_bytes; ++y) {
        row = read_row(reader, label.row_bytes, row);
        label.rows.push_back(row);
    }
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
