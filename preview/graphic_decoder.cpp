#include "preview/graphic_decoder.h"

#include <algorithm>
#include <limits>
#include <string>
#include <utility>

namespace kelp_preview {
namespace {

/// The value of a hexadecimal digit, or -1.
int digitValue(int byte) {
    if (byte >= '0' && byte <= '9') {
        return byte - '0';
    }
    if (byte >= 'A' && byte <= 'F') {
        return byte - 'A' + 10;
    }
    if (byte >= 'a' && byte <= 'f') {
        return byte - 'a' + 10;
    }
    return -1;
}

/// How often a letter repeats the digit behind it, or 0.
unsigned repeatValue(int byte) {
    if (byte >= 'G' && byte <= 'Y') {
        return static_cast<unsigned>(byte - 'G' + 1);
    }
    if (byte >= 'g' && byte <= 'z') {
        return static_cast<unsigned>(byte - 'g' + 1) * 20;
    }
    return 0;
}

/// A kind of fault that may come very often: told once.
struct Fault {
    std::uint64_t first = 0;
    std::uint64_t count = 0;

    void happensAt(std::uint64_t offset) {
        first = count == 0 ? offset : first;
        ++count;
    }
    void tell(Remarks& warnings, const std::string& what) const {
        if (count > 0) {
            warnings.add(first, what + (count > 1 ? " (" + std::to_string(count) + " times)" : ""));
        }
    }
};

class GraphicDecoder {
  public:
    GraphicDecoder(ByteReader& reader, std::size_t rowBytes, std::uint64_t rows)
        : reader_(reader), rowBytes_(rowBytes), rows_(rows), nibbles_(rowBytes * 2) {
        // Memory that is never touched costs nothing: a graphic cut short stays small.
        result_.bytes.reserve(static_cast<std::size_t>(rowBytes * rows));
        result_.width = std::uint64_t{rowBytes} * 8;
    }

    Bitmap decode(Remarks& warnings) {
        readRows();
        if (row() < rows_) {
            warnings.add(reader_.offset(), "the graphic ends after " + std::to_string(row()) +
                                               " of " + std::to_string(rows_) + " rows" +
                                               (inRow() ? ", its last row cut short" : ""));
        } else {
            skipExcess();
        }
        strangeBytes_.tell(warnings, "no graphic data, skipped");
        lostRepeats_.tell(warnings, "a repeat count without a digit, skipped");
        torn_.tell(warnings, "':' within a row");
        runsOver_.tell(warnings, "a run goes beyond its row");
        excess_.tell(warnings, "more data than the graphic has room for, skipped");
        result_.height = row();
        result_.bytes.resize(static_cast<std::size_t>(row() * rowBytes_));
        result_.bytes.shrink_to_fit();
        return std::move(result_);
    }

  private:
    std::uint64_t row() const { return place_ / nibbles_; }
    bool inRow() const { return place_ % nibbles_ != 0; }
    std::uint64_t leftInRow() const { return nibbles_ - place_ % nibbles_; }

    void readRows() {
        while (row() < rows_ && !reader_.atCommandOrEnd()) {
            const std::uint64_t offset = reader_.offset();
            const int byte = reader_.next();
            if (isLineEnd(byte)) {
                continue;
            }
            if (const unsigned times = repeatValue(byte); times != 0) {
                repeat_ = std::min(repeat_, std::numeric_limits<std::uint64_t>::max() / 2) + times;
                continue;
            }
            if (const int digit = digitValue(byte); digit >= 0) {
                run(digit, offset);
                continue;
            }
            forgetRepeat(offset);
            if (byte == ',') {
                append(0x0, leftInRow());
            } else if (byte == '!') {
                append(0xF, leftInRow());
            } else if (byte == ':') {
                repeatRow(offset);
            } else {
                strangeBytes_.happensAt(offset);
            }
        }
        forgetRepeat(reader_.offset());
    }

    void run(int digit, std::uint64_t offset) {
        std::uint64_t count = repeat_ == 0 ? 1 : repeat_;
        repeat_ = 0;
        if (count > leftInRow()) {
            runsOver_.happensAt(offset);
            count = std::min(count, rows_ * nibbles_ - place_);
        }
        append(digit, count);
    }

    void forgetRepeat(std::uint64_t offset) {
        if (repeat_ != 0) {
            lostRepeats_.happensAt(offset);
            repeat_ = 0;
        }
    }

    /// Never beyond the graphic's end: the callers see to it.
    void append(int digit, std::uint64_t count) {
        if (place_ % 2 != 0 && count > 0) {
            result_.bytes.back() |= static_cast<unsigned char>(digit);
            ++place_;
            --count;
        }
        result_.bytes.insert(result_.bytes.end(), static_cast<std::size_t>(count / 2),
                             static_cast<unsigned char>(digit << 4 | digit));
        if (count % 2 != 0) {
            result_.bytes.push_back(static_cast<unsigned char>(digit << 4));
        }
        place_ += count;
    }

    void repeatRow(std::uint64_t offset) {
        if (inRow()) {
            torn_.happensAt(offset);
        }
        if (row() == 0) {
            append(0x0, leftInRow());
            return;
        }
        if (place_ % 2 != 0) {
            const unsigned above = result_.bytes[result_.bytes.size() - 1 - rowBytes_];
            append(static_cast<int>(above & 0x0F), 1);
            if (!inRow()) {
                return;
            }
        }
        // The rest of the row above lies one row back.
        const std::size_t begin = result_.bytes.size();
        const auto count = static_cast<std::size_t>(leftInRow() / 2);
        result_.bytes.resize(begin + count);
        std::copy_n(result_.bytes.data() + begin - rowBytes_, count, result_.bytes.data() + begin);
        place_ += count * 2;
    }

    void skipExcess() {
        while (!reader_.atCommandOrEnd()) {
            const std::uint64_t offset = reader_.offset();
            if (!isLineEnd(reader_.next())) {
                excess_.happensAt(offset);
            }
        }
    }

    ByteReader& reader_;
    std::size_t rowBytes_;
    std::uint64_t rows_;
    std::uint64_t nibbles_;    ///< of a row
    std::uint64_t place_ = 0;  ///< nibbles there are
    std::uint64_t repeat_ = 0;
    Bitmap result_;
    Fault strangeBytes_;
    Fault lostRepeats_;
    Fault torn_;
    Fault runsOver_;
    Fault excess_;
};

}  // namespace

Bitmap decodeGraphic(ByteReader& reader, std::size_t rowBytes, std::uint64_t rows,
                     Remarks& warnings) {
    return GraphicDecoder(reader, rowBytes, rows).decode(warnings);
}

}  // namespace kelp_preview
