#include "preview/label_canvas.h"

#include <algorithm>
#include <utility>

namespace kelp_preview {
namespace {

/// What a label may cost, in labels of the largest size: a short stream can recall a large graphic
/// a million times.
constexpr std::uint64_t kLargestLabelsLaid = 16;

void layMagnified(const Bitmap& graphic, const Placing& at, Bitmap& target) {
    for (std::uint64_t y = 0; y < graphic.height * at.magnifyY; ++y) {
        for (std::uint64_t x = 0; x < graphic.width * at.magnifyX; ++x) {
            if (graphic.dot(x / at.magnifyX, y / at.magnifyY)) {
                target.setDot(at.x + x, at.y + y);
            }
        }
    }
}

}  // namespace

bool LabelCanvas::place(const std::shared_ptr<const Bitmap>& graphic, const Placing& at) {
    // Compared one by one: no sum or product overflows.
    if (at.x > maxDots_ || at.y > maxDots_) {
        return false;
    }
    std::uint64_t width = at.x + graphic->width * at.magnifyX;
    std::uint64_t height = at.y + graphic->height * at.magnifyY;
    std::uint64_t cost = graphic->width * at.magnifyX * graphic->height * at.magnifyY;
    if (dots_) {
        width = std::max(width, dots_->width);
        height = std::max(height, dots_->height);
    }
    if (width > maxDots_ / height) {
        return false;
    }
    cost += width * height;
    if (dotsLaid_ + cost > maxDots_ * kLargestLabelsLaid) {
        return false;
    }
    dotsLaid_ += cost;

    const bool asItIs = at.x == 0 && at.y == 0 && at.magnifyX == 1 && at.magnifyY == 1;
    if (!dots_ && asItIs) {
        dots_ = graphic;
        return true;
    }
    auto larger = std::make_shared<Bitmap>(width, height);
    if (dots_) {
        lay(*dots_, 0, 0, *larger);
    }
    if (at.magnifyX == 1 && at.magnifyY == 1) {
        lay(*graphic, at.x, at.y, *larger);
    } else {
        layMagnified(*graphic, at, *larger);
    }
    dots_ = std::move(larger);
    return true;
}

std::shared_ptr<const Bitmap> LabelCanvas::take() {
    dotsLaid_ = 0;
    return std::exchange(dots_, nullptr);
}

}  // namespace kelp_preview
