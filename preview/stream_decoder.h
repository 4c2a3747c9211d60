#ifndef KELP_PREVIEW_STREAM_DECODER_H
#define KELP_PREVIEW_STREAM_DECODER_H

#include <cstdint>
#include <memory>
#include <optional>
#include <stdexcept>
#include <streambuf>
#include <string>

#include "preview/label.h"

namespace kelp_preview {

/// No graphic or label may have more dots, whatever the limits say.
constexpr std::uint64_t kMostDots = std::uint64_t{1} << 31;

struct DecoderLimits {
    /// Of one label, and of all graphics that are stored at a time.
    std::uint64_t maxDots = 200'000'000;
};

/// A size that is not taken. The message names the place and the reason.
class StreamRefused : public std::runtime_error {
  public:
    StreamRefused(std::uint64_t byteOffset, const std::string& reason)
        : std::runtime_error("byte " + std::to_string(byteOffset) + ": " + reason),
          offset(byteOffset) {}
    std::uint64_t offset;
};

/// Decodes what a printer was sent, whatever the bytes are, label by label.
///
/// A label is a block from ^XX or ^XA to ^XZ that recalls a stored graphic (~DG to store it, ^FO
/// and ^XG to recall it). Where the stream ends in a graphic or before it is recalled, the graphic
/// that there is makes the last label. Settings outlive a block, as in the printer; the copies do
/// not. What cannot be understood is listed and skipped.
class StreamDecoder {
  public:
    /// @param stream borrowed, it must outlive the decoder
    StreamDecoder(std::streambuf& stream, const DecoderLimits& limits);
    ~StreamDecoder();
    StreamDecoder(const StreamDecoder&) = delete;
    StreamDecoder& operator=(const StreamDecoder&) = delete;

    /// The next label; none at the end. Throws StreamRefused for a graphic or label of no dots or
    /// too many, and what the stream throws; it must not be called again then.
    std::optional<Label> next();
    /// What was found behind the last label, once next() gave none.
    const Findings& rest() const;

  private:
    class State;
    std::unique_ptr<State> state_;
};

}  // namespace kelp_preview

#endif
