#ifndef KELP_ENHANCE_TQ_IMAGE_H
#define KELP_ENHANCE_TQ_IMAGE_H

#include <cstddef>
#include <cstdint>

/// Layout of one pixel, in memory order.
enum TQ_IMG_COLOR : std::int32_t {
    TQ_IMG_GRAY = 0,
    TQ_IMG_BGR = 1,
    TQ_IMG_RGB = 2,
    TQ_IMG_BGRA = 3,
    TQ_IMG_RGBA = 4,
};

/// The image of the tattoo chain: a value that owns its pixels. Copies are deep; a moved-from
/// image is as if it had been default-constructed.
class TQImage {
  public:
    /// Copies width * height * channels bytes from `src`, which stays the caller's.
    /// Both constructors throw std::bad_alloc, for a negative size too.
    TQImage(std::int32_t width, std::int32_t height, TQ_IMG_COLOR color, const unsigned char* src);
    /// Pixels all zero.
    TQImage(std::int32_t width, std::int32_t height, TQ_IMG_COLOR color);
    /// Pixels of any value, for who writes them all.
    static TQImage unset(std::int32_t width, std::int32_t height, TQ_IMG_COLOR color);
    TQImage() = default;
    TQImage(const TQImage& other);
    TQImage(TQImage&& other) noexcept;
    TQImage& operator=(const TQImage& other);
    TQImage& operator=(TQImage&& other) noexcept;
    /// Leaves width, height and channels at 0 and data at null.
    ~TQImage();

    /// Bytes of the pixel array: width * height * channels.
    std::size_t byteCount() const;
    /// width * height as a 32-bit product, which wraps.
    std::int32_t pixelCount() const;

    std::int32_t width = 0;   ///< pixels per row
    std::int32_t height = 0;  ///< rows
    /// Bytes per pixel: 1 for TQ_IMG_GRAY, 3 for TQ_IMG_BGR and TQ_IMG_RGB, 4 for any other colour.
    /// What an image without pixels holds here and in `color` means nothing.
    std::int32_t channels = 4;
    TQ_IMG_COLOR color = TQ_IMG_BGR;
    /// Rows without padding, channels interleaved; owned.
    unsigned char* data = nullptr;
};

/// A grey image of the same size: Rec. 601 luma weights, single precision, rounded half away from
/// zero. Grey is copied; a colour other than grey, TQ_IMG_BGR and TQ_IMG_BGRA is read red first.
/// Throws std::bad_alloc.
TQImage cvtGray(const TQImage& src);

#endif
