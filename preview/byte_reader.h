#ifndef KELP_PREVIEW_BYTE_READER_H
#define KELP_PREVIEW_BYTE_READER_H

#include <cstdint>
#include <optional>
#include <streambuf>
#include <string>

namespace kelp_preview {

/// Reads a stream byte by byte and knows where it is.
class ByteReader {
  public:
    static constexpr int kEnd = -1;

    explicit ByteReader(std::streambuf& stream) : stream_(&stream) {}

    std::uint64_t offset() const { return offset_; }
    /// The next byte, 0 to 255, or kEnd.
    int peek() { return stream_->sgetc(); }
    int next() {
        const int byte = stream_->sbumpc();
        offset_ += byte == kEnd ? 0 : 1;
        return byte;
    }
    /// Whether a command or the end comes next.
    bool atCommandOrEnd() {
        const int byte = peek();
        return byte == kEnd || byte == '^' || byte == '~';
    }

  private:
    std::streambuf* stream_;
    std::uint64_t offset_ = 0;
};

constexpr bool isLineEnd(int byte) {
    return byte == '\r' || byte == '\n';
}

/// The number that a text begins with, behind blanks; the largest there is for larger ones.
std::optional<std::uint64_t> leadingNumber(const std::string& text);

/// The text in printable ASCII, any other byte as \xNN.
std::string printable(const std::string& text);

}  // namespace kelp_preview

#endif
