#include "enhance/unsharp_rows.h"

#include <algorithm>
#include <cstring>
#include <utility>

#include "enhance/numeric.h"

BlurredRows::BlurredRows(std::int32_t width, std::int32_t height, Taps taps, RowSource rows)
    : width_(static_cast<std::size_t>(width)),
      height_(height),
      taps_(std::move(taps)),
      half_(static_cast<std::int32_t>(taps_.weights.size() / 2)),
      rows_(std::move(rows)),
      slots_(std::min(2 * half_ + 1, height)),
      sources_(static_cast<std::size_t>(slots_) * (width_ + 2 * static_cast<std::size_t>(half_))),
      across_(static_cast<std::size_t>(slots_) * width_),
      pixels_(taps_.weights.size()) {}

std::size_t BlurredRows::slotOf(std::int32_t y) const {
    return static_cast<std::size_t>(y % slots_);
}

const unsigned char* BlurredRows::source() const {
    const auto half = static_cast<std::size_t>(half_);
    return sources_.data() + slotOf(given_ - 1) * (width_ + 2 * half) + half;
}

void BlurredRows::take() {
    const auto half = static_cast<std::size_t>(half_);
    const std::size_t slot = slotOf(taken_);
    unsigned char* extended = sources_.data() + slot * (width_ + 2 * half);
    unsigned char* row = extended + half;
    rows_(taken_, row);
    std::memset(extended, row[0], half);
    std::memset(row + width_, row[width_ - 1], half);
    for (std::size_t i = 0; i < pixels_.size(); ++i) {
        pixels_[i] = extended + i;
    }
    weighRows(pixels_.data(), taps_, width_, across_.data() + slot * width_);
    ++taken_;
}

void BlurredRows::next(unsigned char* out) {
    const std::int32_t last = height_ - 1;
    while (taken_ <= std::min(given_ + half_, last)) {
        take();
    }
    std::int32_t y = given_ - half_;
    for (const unsigned char*& pixels : pixels_) {
        pixels = across_.data() + slotOf(myClamp(y++, 0, last)) * width_;
    }
    weighRows(pixels_.data(), taps_, width_, out);
    ++given_;
}

UnsharpRows::UnsharpRows(std::int32_t width, std::int32_t height, float weight, Taps taps,
                         RowSource rows)
    : weight_(weight),
      blur_(width, height, std::move(taps), std::move(rows)),
      blurred_(static_cast<std::size_t>(width)) {}

void UnsharpRows::next(unsigned char* out) {
    blur_.next(blurred_.data());
    sharpen(blur_.source(), blurred_.data(), weight_, blurred_.size(), out);
}
