#ifndef KELP_PICTURES_GREY_PICTURE_H
#define KELP_PICTURES_GREY_PICTURE_H

#include <cstddef>
#include <cstdint>
#include <stdexcept>
#include <string>
#include <vector>

/// A picture in grey, 0 black to 255 white, rows without padding.
struct GreyPicture {
    std::uint32_t width = 0;
    std::uint32_t height = 0;
    std::vector<unsigned char> pixels;  ///< height * width
    std::uint32_t dotsPerInch = 0;      ///< across, to the nearest; 0 where the file does not tell
};

/// In pixels.
struct PictureSize {
    std::uint32_t width = 0;
    std::uint32_t height = 0;
};

/// Says why a picture cannot be used.
struct PictureError : std::runtime_error {
    using std::runtime_error::runtime_error;
};

/// Throws PictureError for a size that is 0 or has more pixels than allowed.
inline void checkPictureSize(std::uint64_t width, std::uint64_t height, std::uint64_t maxPixels) {
    if (width == 0 || height == 0) {
        throw PictureError("a picture without pixels");
    }
    if (width > maxPixels / height) {
        throw PictureError("a picture of " + std::to_string(width) + " x " +
                           std::to_string(height) + " pixels is over the limit of " +
                           std::to_string(maxPixels));
    }
}

/// Grey of a colour: Rec. 601 luma, to the nearest level, as the page fitter has it.
constexpr unsigned char luma(unsigned red, unsigned green, unsigned blue) {
    return static_cast<unsigned char>((299 * red + 587 * green + 114 * blue + 500) / 1000);
}

#endif
