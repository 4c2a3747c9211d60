#include "enhance/tq_image.h"

#include <cstring>
#include <new>
#include <utility>

#include "enhance/numeric.h"

namespace {

std::int32_t channelsOf(TQ_IMG_COLOR color) {
    if (color == TQ_IMG_GRAY) {
        return 1;
    }
    return color == TQ_IMG_BGR || color == TQ_IMG_RGB ? 3 : 4;
}

std::size_t byteCountOf(std::int64_t width, std::int64_t height, std::int64_t channels) {
    const bool tooLarge = height > 0 && width > PTRDIFF_MAX / height / channels;
    if (width < 0 || height < 0 || tooLarge) {
        throw std::bad_alloc();
    }
    return static_cast<std::size_t>(width * height * channels);
}

unsigned char* copyOf(const unsigned char* bytes, std::size_t count) {
    auto* copy = new unsigned char[count];
    if (count > 0) {
        std::memcpy(copy, bytes, count);
    }
    return copy;
}

// volatile: the stores outlive the object, so that a dangling reader finds an image without pixels;
// otherwise they would be left out.
template <typename Field>
void clear(volatile Field& field) {
    field = Field{};
}

}  // namespace

TQImage::TQImage(std::int32_t w, std::int32_t h, TQ_IMG_COLOR c, const unsigned char* src)
    : width(w),
      height(h),
      channels(channelsOf(c)),
      color(c),
      data(copyOf(src, byteCountOf(w, h, channels))) {}

TQImage::TQImage(std::int32_t w, std::int32_t h, TQ_IMG_COLOR c)
    : width(w),
      height(h),
      channels(channelsOf(c)),
      color(c),
      data(new unsigned char[byteCountOf(w, h, channels)]()) {}

TQImage TQImage::unset(std::int32_t w, std::int32_t h, TQ_IMG_COLOR c) {
    TQImage image;
    const std::int32_t count = channelsOf(c);
    image.data = new unsigned char[byteCountOf(w, h, count)];
    image.width = w;
    image.height = h;
    image.channels = count;
    image.color = c;
    return image;
}

TQImage::TQImage(const TQImage& other)
    : width(other.width),
      height(other.height),
      channels(other.channels),
      color(other.color),
      data(other.data != nullptr ? copyOf(other.data, other.byteCount()) : nullptr) {}

TQImage::TQImage(TQImage&& other) noexcept {
    *this = std::move(other);
}

TQImage& TQImage::operator=(const TQImage& other) {
    return *this = TQImage(other);
}

TQImage& TQImage::operator=(TQImage&& other) noexcept {
    if (this != &other) {
        delete[] data;
        width = std::exchange(other.width, 0);
        height = std::exchange(other.height, 0);
        channels = std::exchange(other.channels, 4);
        color = std::exchange(other.color, TQ_IMG_BGR);
        data = std::exchange(other.data, nullptr);
    }
    return *this;
}

TQImage::~TQImage() {
    delete[] data;
    clear(width);
    clear(height);
    clear(channels);
    clear(data);
}

std::size_t TQImage::byteCount() const {
    return byteCountOf(width, height, channels);
}

std::int32_t TQImage::pixelCount() const {
    return static_cast<std::int32_t>(static_cast<std::uint32_t>(width) *
                                     static_cast<std::uint32_t>(height));
}

TQImage cvtGray(const TQImage& src) {
    TQImage grey(src.width, src.height, TQ_IMG_GRAY);
    const std::size_t pixels = grey.byteCount();
    if (src.color == TQ_IMG_GRAY) {
        if (pixels > 0) {
            std::memcpy(grey.data, src.data, pixels);
        }
        return grey;
    }
    const bool blueFirst = src.color == TQ_IMG_BGR || src.color == TQ_IMG_BGRA;
    const float weight0 = blueFirst ? 0.114F : 0.299F;
    const float weight1 = 0.587F;
    const float weight2 = blueFirst ? 0.299F : 0.114F;
    const unsigned char* pixel = src.data;
    for (std::size_t i = 0; i < pixels; ++i, pixel += src.channels) {
        float luma = weight0 * static_cast<float>(pixel[0]);
        luma += weight1 * static_cast<float>(pixel[1]);
        grey.data[i] = lowByte(my_round(luma + weight2 * static_cast<float>(pixel[2])));
    }
    return grey;
}
