// The PGM reader on any bytes.
//
// Checked: the picture, or that there is none, is what a second, literal reader says; no picture is
// over the limit; the size alone is the picture's.

#include <optional>
#include <string>
#include <string_view>

#include "fuzz/check.h"
#include "pictures/picture_formats.h"

namespace {

using kelp_fuzz::require;

constexpr std::uint64_t most_pixels = 5000;

// White space and comments, then digits; none for a number over 31 bits.
std::optional<std::uint64_t> number(std::string_view file, std::size_t& at) {
    for (bool comment = false; at < file.size(); ++at) {
        const char c = file[at];
        if (comment) {
            comment = c != '\n';
        } else if (c == '#') {
            comment = true;
        } else if (c != ' ' && c != '\t' && c != '\n' && c != '\v' && c != '\f' && c != '\r') {
            break;
        }
    }
    std::string digits;
    while (at < file.size() && file[at] >= '0' && file[at] <= '9') {
        digits += file[at++];
    }
    const std::size_t zeros = std::min(digits.find_first_not_of('0'), digits.size());
    if (digits.empty() || digits.size() - zeros > 10) {
        return std::nullopt;
    }
    const std::uint64_t value = std::stoull(digits);
    return value <= 0x7FFFFFFF ? std::optional(value) : std::nullopt;
}

std::optional<GreyPicture> read_literally(std::string_view file) {
    if (file.substr(0, 2) != "P5" && file.substr(0, 2) != "P2") {
        return std::nullopt;
    }
    std::size_t at = 2;
    const auto width = number(file, at);
    const auto height = width ? number(file, at) : std::nullopt;
    if (!height || *width == 0 || *height == 0 || *width * *height > most_pixels) {
        return std::nullopt;
    }
    const auto largest = number(file, at);
    if (!largest || *largest == 0 || *largest > 65535) {
        return std::nullopt;
    }
    GreyPicture picture{
        static_cast<std::uint32_t>(*width), static_cast<std::uint32_t>(*height), {}};
    ++at;  // one white space, in a binary file
    at -= file[1] == '2' ? 1 : 0;
    while (picture.pixels.size() < *width * *height) {
        std::uint64_t sample = 0;
        if (file[1] == '2') {
            const auto next = number(file, at);
            if (!next) {
                return std::nullopt;
            }
            sample = *next;
        } else {
            for (int byte = *largest > 255 ? 2 : 1; byte > 0; --byte) {
                if (at >= file.size()) {
                    return std::nullopt;
                }
                sample = sample * 256 + static_cast<unsigned char>(file[at++]);
            }
        }
        if (sample > *largest) {
            return std::nullopt;
        }
        // Halves upwards.
        const auto level = (2 * sample * 255 + *largest) / (2 * *largest);
        picture.pixels.push_back(static_cast<unsigned char>(level));
    }
    return picture;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view file(reinterpret_cast<const char*>(data), size);
    const std::optional<GreyPicture> expected = read_literally(file);
    try {
        const GreyPicture picture = pictureOfPgm(file, most_pixels);
        require(expected.has_value(), "a picture where there is none");
        require(picture.width == expected->width && picture.height == expected->height, "a size");
        require(picture.pixels == expected->pixels, "pixels");
        const PictureSize alone = sizeOfPgm(file);
        require(alone.width == picture.width && alone.height == picture.height, "the size alone");
    } catch (const PictureError&) {
        require(!expected.has_value(), "no picture where there is one");
    }
    return 0;
}
