#ifndef KELP_PREVIEW_LABEL_H
#define KELP_PREVIEW_LABEL_H

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "preview/bitmap.h"

namespace kelp_preview {

/// Something that was found at a byte of the stream.
struct Remark {
    std::uint64_t offset = 0;
    std::string text;  ///< printable ASCII
};

/// A list that hostile input cannot make long: it keeps the first remarks and counts all.
class Remarks {
  public:
    static constexpr std::size_t kKept = 100;

    void add(std::uint64_t offset, const std::string& text);
    const std::vector<Remark>& kept() const { return kept_; }
    std::uint64_t count() const { return count_; }
    bool empty() const { return count_ == 0; }

  private:
    std::vector<Remark> kept_;
    std::uint64_t count_ = 0;
};

/// What was not understood, and what was but is not right.
struct Findings {
    Remarks unknownCommands;
    Remarks warnings;
};

/// The settings that a printer keeps from label to label; absent or empty where none was sent.
struct Setup {
    std::string sizeLine;                 ///< "50.0 mm, 30.0 mm"
    std::optional<std::uint64_t> width;   ///< dots
    std::optional<std::uint64_t> length;  ///< dots
    std::string mediaSensing;             ///< as the stream has it, like the following
    std::string orientation;
    std::string speed;
    std::optional<std::uint64_t> darkness;
    std::string printMethod;
    std::string afterPrint;

    bool isTurned() const { return orientation == "I"; }
};

/// One label, as it was sent: not turned.
struct Label {
    std::uint64_t offset = 0;  ///< of its block in the stream
    Setup setup;
    std::uint64_t copies = 1;
    std::shared_ptr<const Bitmap> dots;  ///< never null, at least one row
    std::uint64_t graphicBytes = 0;      ///< that its graphics take in the stream
    std::uint64_t dotBytes = 0;          ///< of the same graphics, unpacked
    Findings findings;
};

}  // namespace kelp_preview

#endif
