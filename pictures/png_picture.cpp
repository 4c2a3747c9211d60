#include <png.h>

#include <cstdint>
#include <limits>
#include <memory>
#include <string>

#include "pictures/picture_formats.h"

namespace {

/// The library counts the bytes of all pixels, four each, with 32 bits.
constexpr std::uint64_t kMostPixels = std::numeric_limits<std::uint32_t>::max() / 4;

constexpr double kMostDotsPerInch = 100'000;  // more is no resolution

unsigned char onWhite(unsigned level, unsigned alpha) {
    return static_cast<unsigned char>((level * alpha + 255 * (255 - alpha) + 127) / 255);
}

std::uint32_t numberAt(std::string_view file, std::size_t at) {
    std::uint32_t number = 0;
    for (const char byte : file.substr(at, 4)) {
        number = number << 8U | static_cast<unsigned char>(byte);
    }
    return number;
}

/// What the simple interface does not tell: the pixels per metre of the "pHYs" chunk, which stands
/// before the pixels.
std::uint32_t dotsPerInchOf(std::string_view file) {
    constexpr std::size_t kSignature = 8;
    constexpr std::size_t kAround = 12;  // length, type and check of a chunk
    constexpr std::size_t kPhysical = 9;
    constexpr double kInch = 0.0254;
    for (std::size_t at = kSignature; at + kAround + kPhysical <= file.size();) {
        const std::size_t length = numberAt(file, at);
        const std::string_view type = file.substr(at + 4, 4);
        if (type == "IDAT") {
            break;
        }
        if (type == "pHYs" && length == kPhysical && file[at + 16] == 1) {
            const double dots = numberAt(file, at + 8) * kInch;
            return dots < kMostDotsPerInch ? static_cast<std::uint32_t>(dots + 0.5) : 0;
        }
        at += kAround + length;
    }
    return 0;
}

}  // namespace

GreyPicture pictureOfPng(std::string_view file, std::uint64_t maxPixels) {
    png_image image{};
    image.version = PNG_IMAGE_VERSION;
    const std::unique_ptr<png_image, decltype(&png_image_free)> release(&image, png_image_free);
    if (png_image_begin_read_from_memory(&image, file.data(), file.size()) == 0) {
        throw PictureError(std::string("a broken PNG: ") + image.message);
    }
    checkPictureSize(image.width, image.height, maxPixels);
    // What is not there is not made room for: a byte unpacks to 1032 at most, of 8 pixels each.
    const std::uint64_t count = std::uint64_t{image.width} * image.height;
    if (count / 8 / 1032 > file.size()) {
        throw PictureError("a broken PNG: it ends early");
    }
    if (count > kMostPixels) {
        throw PictureError("a PNG of over " + std::to_string(kMostPixels) +
                           " pixels cannot be read");
    }
    image.format = PNG_FORMAT_RGBA;
    image.flags |= PNG_IMAGE_FLAG_16BIT_sRGB;  // 16 bits mean the same levels as 8
    std::vector<unsigned char> pixels(count * 4);
    if (png_image_finish_read(&image, nullptr, pixels.data(), 0, nullptr) == 0) {
        throw PictureError(std::string("a broken PNG: ") + image.message);
    }
    GreyPicture picture{image.width, image.height, {}, dotsPerInchOf(file)};
    picture.pixels.reserve(pixels.size() / 4);
    for (std::size_t i = 0; i < pixels.size(); i += 4) {
        picture.pixels.push_back(
            onWhite(luma(pixels[i], pixels[i + 1], pixels[i + 2]), pixels[i + 3]));
    }
    return picture;
}
