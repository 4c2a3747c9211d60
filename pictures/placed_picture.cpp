#include "pictures/placed_picture.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <utility>

#include "pictures/scaled_picture.h"

namespace {

/// Dots a pixel.
double scaleOf(const GreyPicture& picture, const PictureSize& page, std::uint32_t dotsPerInch,
               PictureScaling scaling) {
    const double across = static_cast<double>(page.width) / picture.width;
    const double down = static_cast<double>(page.height) / picture.height;
    switch (scaling) {
        case PictureScaling::Fit:
            return std::min(across, down);
        case PictureScaling::Fill:
            return std::max(across, down);
        case PictureScaling::Own:
            break;
    }
    return picture.dotsPerInch == 0 ? 1 : static_cast<double>(dotsPerInch) / picture.dotsPerInch;
}

std::uint32_t dotsOf(std::uint32_t pixels, double scale) {
    constexpr double kMost = 4e9;
    return static_cast<std::uint32_t>(std::clamp(std::round(pixels * scale), 1.0, kMost));
}

/// How many of a side's pixels come to lie on a page's side.
std::uint32_t pixelsOn(std::uint32_t dots, std::uint32_t pixels, double scale) {
    return dotsOf(pixels, scale) <= dots
               ? pixels
               : std::clamp(static_cast<std::uint32_t>(std::round(dots / scale)), 1U, pixels);
}

GreyPicture middleOf(const GreyPicture& picture, const PictureSize& size) {
    GreyPicture middle{size.width, size.height, {}, picture.dotsPerInch};
    middle.pixels.reserve(std::size_t{size.width} * size.height);
    const std::size_t left = (picture.width - size.width) / 2;
    const std::size_t top = (picture.height - size.height) / 2;
    for (std::size_t y = top; y < top + size.height; ++y) {
        const unsigned char* row = picture.pixels.data() + y * picture.width + left;
        middle.pixels.insert(middle.pixels.end(), row, row + size.width);
    }
    return middle;
}

}  // namespace

GreyPicture turned(const GreyPicture& picture, unsigned quarters) {
    const std::ptrdiff_t width = picture.width;
    const std::ptrdiff_t lastInRow = width - 1;
    const std::ptrdiff_t lastRow = width * (static_cast<std::ptrdiff_t>(picture.height) - 1);
    // Where its first pixel comes from, and how far from there those of the next dot lie.
    const struct {
        std::ptrdiff_t first, across, down;
    } ways[] = {{0, 1, width},
                {lastInRow, width, -1},
                {lastRow + lastInRow, -1, -width},
                {lastRow, -width, 1}};
    const auto& way = ways[quarters];
    GreyPicture result{picture.width, picture.height, {}, picture.dotsPerInch};
    if (quarters % 2 != 0) {
        std::swap(result.width, result.height);
    }
    result.pixels.reserve(picture.pixels.size());
    for (std::ptrdiff_t y = 0; y < static_cast<std::ptrdiff_t>(result.height); ++y) {
        for (std::ptrdiff_t x = 0; x < static_cast<std::ptrdiff_t>(result.width); ++x) {
            result.pixels.push_back(
                picture
                    .pixels[static_cast<std::size_t>(way.first + x * way.across + y * way.down)]);
        }
    }
    return result;
}

bool fitsInOwnSize(const GreyPicture& picture, const PictureSize& page, std::uint32_t dotsPerInch) {
    if (picture.dotsPerInch == 0) {
        return false;
    }
    const double scale = scaleOf(picture, page, dotsPerInch, PictureScaling::Own);
    return std::round(picture.width * scale) <= page.width &&
           std::round(picture.height * scale) <= page.height;
}

GreyPicture placed(const GreyPicture& picture, const PictureSize& page, std::uint32_t dotsPerInch,
                   PictureScaling scaling) {
    const double scale = scaleOf(picture, page, dotsPerInch, scaling);
    const PictureSize seen{pixelsOn(page.width, picture.width, scale),
                           pixelsOn(page.height, picture.height, scale)};
    // A side that is cut reaches both edges of the page, if not by whole pixels.
    const PictureSize dots{
        seen.width < picture.width ? page.width : std::min(dotsOf(seen.width, scale), page.width),
        seen.height < picture.height ? page.height
                                     : std::min(dotsOf(seen.height, scale), page.height)};
    if (seen.width == picture.width && seen.height == picture.height) {
        return scaled(picture, dots);
    }
    return scaled(middleOf(picture, seen), dots);
}
