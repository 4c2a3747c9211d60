#ifndef KELP_ENHANCE_UNSHARP_ROWS_H
#define KELP_ENHANCE_UNSHARP_ROWS_H

#include <cstddef>
#include <cstdint>
#include <vector>

#include "enhance/row_source.h"
#include "enhance/taps.h"

/// src * (1 + weight) - blurred * weight for `count` levels, rounded and held to 0 ... 255.
void sharpen(const unsigned char* src, const unsigned char* blurred, float weight,
             std::size_t count, unsigned char* out);

/// The rows of a separable blur of an image that is handed over row by row. It keeps as many rows
/// as the blur has taps.
class BlurredRows {
  public:
    /// `width` and `height` are above 0.
    BlurredRows(std::int32_t width, std::int32_t height, Taps taps, RowSource rows);

    /// Writes the next row, from the top.
    void next(unsigned char* out);
    /// The row of the image itself that was blurred last.
    const unsigned char* source() const;

  private:
    void take();
    std::size_t slotOf(std::int32_t y) const;

    std::size_t width_;
    std::int32_t height_;
    Taps taps_;
    std::int32_t half_;
    RowSource rows_;
    std::int32_t slots_;
    std::int32_t taken_ = 0;  ///< rows of the image
    std::int32_t given_ = 0;  ///< rows of the blur
    // Rings. The image's rows have `half_` copies of their end pixels on either side.
    std::vector<unsigned char> sources_;
    std::vector<unsigned char> across_;
    std::vector<const unsigned char*> pixels_;
};

/// The rows of an unsharp mask with these taps.
class UnsharpRows {
  public:
    UnsharpRows(std::int32_t width, std::int32_t height, float weight, Taps taps, RowSource rows);
    void next(unsigned char* out);

  private:
    float weight_;
    BlurredRows blur_;
    std::vector<unsigned char> blurred_;
};

#endif
