#ifndef KELP_PREVIEW_LABEL_CANVAS_H
#define KELP_PREVIEW_LABEL_CANVAS_H

#include <cstdint>
#include <memory>

#include "preview/bitmap.h"

namespace kelp_preview {

/// Where and how large a graphic is laid down.
struct Placing {
    std::uint64_t x = 0;  ///< dots from the left
    std::uint64_t y = 0;
    std::uint64_t magnifyX = 1;  ///< 1 to 10
    std::uint64_t magnifyY = 1;
};

/// A label in the making: as large as what lies on it needs.
class LabelCanvas {
  public:
    explicit LabelCanvas(std::uint64_t maxDots) : maxDots_(maxDots) {}

    bool empty() const { return dots_ == nullptr; }
    /// Adds the graphic's dots to those there are. False, with nothing done, where the label would
    /// have more dots than allowed, or this many were laid on it again and again.
    bool place(const std::shared_ptr<const Bitmap>& graphic, const Placing& at);
    /// The label so far, null when empty; the canvas is empty then.
    std::shared_ptr<const Bitmap> take();

  private:
    std::uint64_t maxDots_;
    std::uint64_t dotsLaid_ = 0;
    std::shared_ptr<const Bitmap> dots_;
};

}  // namespace kelp_preview

#endif
