#include "tests/tools/zpl_graphics.h"

#include <algorithm>
#include <charconv>
#include <optional>
#include <stdexcept>

namespace kelp_test {
namespace {

constexpr std::string_view download = "~DGR:";
constexpr std::string_view print_width = "^PW";
constexpr unsigned most_row_bytes = 1 << 16;

class Reader {
  public:
    explicit Reader(std::string_view stream) : stream_(stream) {}

    std::vector<Label> labels() {
        std::vector<Label> result;
        std::optional<unsigned> width;
        while (place_ < stream_.size()) {
            if (skip(print_width)) {
                width = number();
            } else if (skip(download)) {
                result.push_back(graphic(width));
            } else {
                ++place_;
            }
        }
        return result;
    }

  private:
    [[noreturn]] void fail(const std::string& what) const {
        throw std::runtime_error("byte " + std::to_string(place_) + " of the stream: " + what);
    }

    bool skip(std::string_view text) {
        const bool there = stream_.substr(place_).starts_with(text);
        place_ += there ? text.size() : 0;
        return there;
    }

    unsigned number() {
        unsigned value = 0;
        const char* begin = stream_.data() + place_;
        const auto [end, error] = std::from_chars(begin, stream_.data() + stream_.size(), value);
        if (error != std::errc()) {
            fail("no number, or too large a one");
        }
        place_ += static_cast<std::size_t>(end - begin);
        return value;
    }

    void expect_comma() {
        if (!skip(",")) {
            fail("a ',' is missing");
        }
    }

    Label graphic(std::optional<unsigned> width) {
        place_ = std::min(stream_.find_first_of(",\r\n", place_), stream_.size());  // the name
        expect_comma();
        const unsigned total = number();
        expect_comma();
        const unsigned row_bytes = number();
        expect_comma();
        if (row_bytes == 0 || row_bytes > most_row_bytes || total == 0 || total % row_bytes != 0) {
            fail(std::to_string(total) + " bytes are no whole rows of " +
                 std::to_string(row_bytes));
        }

        Label label;
        label.width = width ? (*width + 3) / 4 * 4 : row_bytes * 8;
        if ((label.width + 7) / 8 != row_bytes) {
            fail("rows of " + std::to_string(row_bytes) + " bytes do not fit a label of " +
                 std::to_string(label.width) + " dots");
        }
        std::string before;
        for (unsigned y = 0; y < total / row_bytes; ++y) {
            before = row(row_bytes * std::size_t{2}, before);
            for (unsigned x = 0; x < label.width; ++x) {
                label.dots.push_back((before[x / 4] >> (3 - x % 4) & 1) != 0);
            }
        }
        label.height = total / row_bytes;
        skip_line_ends();
        if (place_ < stream_.size() && stream_[place_] != '^' && stream_[place_] != '~') {
            fail("more data than the graphic has room for");
        }
        return label;
    }

    void skip_line_ends() {
        while (place_ < stream_.size() && (stream_[place_] == '\r' || stream_[place_] == '\n')) {
            ++place_;
        }
    }

    // The values of a row's hex digits.
    std::string row(std::size_t digits, const std::string& before) {
        std::string values;
        std::size_t repeat = 0;
        while (values.size() < digits) {
            skip_line_ends();
            if (place_ == stream_.size()) {
                fail("the graphic ends too early");
            }
            const char c = stream_[place_];
            if (c >= 'G' && c <= 'Y') {
                repeat += static_cast<std::size_t>(c - 'G' + 1);
            } else if (c >= 'g' && c <= 'z') {
                repeat += static_cast<std::size_t>(c - 'g' + 1) * 20;
            } else if ((c == ',' || c == '!') && repeat == 0) {
                values.resize(digits, c == '!' ? '\xF' : '\0');
            } else if (c == ':' && repeat == 0 && values.empty() && !before.empty()) {
                values = before;
            } else {
                values.append(repeat == 0 ? 1 : repeat, digit(c));
                repeat = 0;
            }
            if (values.size() > digits || repeat > digits) {
                fail("a run goes beyond its row");
            }
            ++place_;
        }
        return values;
    }

    char digit(char c) const {
        const std::size_t value = std::string_view("0123456789ABCDEF").find(c);
        if (value == std::string_view::npos) {
            fail("a graphic has no '" + std::string(1, c) + "' here");
        }
        return static_cast<char>(value);
    }

    std::string_view stream_;
    std::size_t place_ = 0;
};

}  // namespace

std::vector<Label> read_labels(std::string_view stream) {
    return Reader(stream).labels();
}

std::string pgm(const Label& label, unsigned scale, unsigned margin) {
    const std::size_t width = std::size_t{label.width} * scale + 2 * std::size_t{margin};
    const std::size_t height = std::size_t{label.height} * scale + 2 * std::size_t{margin};
    std::string text = "P5\n" + std::to_string(width) + " " + std::to_string(height) + "\n255\n";
    const std::size_t begin = text.size();
    text.append(width * height, '\xFF');
    for (unsigned y = 0; y < label.height * scale; ++y) {
        for (unsigned x = 0; x < label.width * scale; ++x) {
            if (label.dot(x / scale, y / scale)) {
                text[begin + (std::size_t{y} + margin) * width + x + margin] = '\0';
            }
        }
    }
    return text;
}

}  // namespace kelp_test
